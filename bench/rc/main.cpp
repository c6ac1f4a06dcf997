// How long a script of 5,000 lines takes from its bytes to its resources: dialogs, menus and texts, with
// a header of a thousand numbers. A goal rather than a peer stands beside it: one second.
#include <cstdio>
#include <string>

#include "../harness.h"
#include "rc/compile.h"

namespace {

constexpr int kDialogs = 150;

class OneHeader : public vm::rc::SourceFiles {
public:
    explicit OneHeader(std::string bytes) : m_bytes(std::move(bytes)) {}
    std::optional<std::string> Find(const std::string& name, const std::string*) const override {
        return name;
    }
    std::optional<std::string> Read(const std::string&) const override { return m_bytes; }

private:
    const std::string m_bytes;
};

std::string Header() {
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += "#define IDC_NUMBER_" + std::to_string(i) + " " + std::to_string(1000 + i) + "\n";
    return text;
}

// 30 lines each.
std::string Dialog(int number) {
    std::string text = std::to_string(number) +
                       " DIALOGEX 0, 0, 200, 300\nSTYLE DS_SETFONT | WS_POPUP | "
                       "WS_CAPTION\nCAPTION \"Dialog\"\nFONT 8, \"MS Shell Dlg\"\nBEGIN\n";
    for (int i = 0; i < 24; ++i)
        text += "    CONTROL \"A control\",IDC_NUMBER_" + std::to_string((number * 24 + i) % 1000) +
                ",\"Button\",BS_AUTOCHECKBOX | WS_TABSTOP,10," + std::to_string(i * 12) +
                ",100,10\n";
    return text + "END\n";
}

std::string Script() {
    std::string text = "#include \"resource.h\"\n";
    for (int i = 1; i <= kDialogs; ++i) text += Dialog(i);
    text += "STRINGTABLE\nBEGIN\n";
    for (int i = 0; i < 500; ++i)
        text += "    IDC_NUMBER_" + std::to_string(i) + " \"Text with an \\xE9 in it\"\n";
    return text + "END\n";
}

} // namespace

int main() {
    const OneHeader header(Header());
    const std::string script = Script();
    std::size_t resources = 0;
    const double nanoseconds = bench::NanosecondsPer(10, [&] {
        for (int i = 0; i < 10; ++i)
            resources = vm::rc::CompileScript("a.rc", script, header, {}).resources.size();
    });
    if (resources != kDialogs + 1) {
        std::fprintf(stderr, "rc: %zu resources instead of %d\n", resources, kDialogs + 1);
        return 1;
    }
    bench::Report("rc.5000Lines", nanoseconds / 1e6, "ms", "goal", 1000);
}
