#include "rc/writeStrings.h"

#include <map>
#include <string>

#include <QtCore/QString>

#include "core/macroman.h"
#include "files/stringLines.h"

namespace vm::rc {
namespace {

constexpr char kFile[] = "Strings.ini";

Notes NotesOf(const StringEntry& entry) {
    if (ToMacRoman(QString::fromStdString(entry.text))) return {};
    return {"characters that Mac Roman has not are shown as '?'"};
}

class Strings {
public:
    explicit Strings(Output& output) : m_output(output) {}

    void Take(const StringEntry& entry) {
        const std::string what = Described("STRING", entry.id);
        if (!entry.id.number || *entry.id.number < 0)
            return m_output.LeaveOut(entry.place, what, "it has no number");
        if (!m_texts.try_emplace(static_cast<unsigned>(*entry.id.number), entry.text).second)
            return m_output.LeaveOut(entry.place, what, "there is an earlier text of this number");
        m_output.Say(entry.place, what, kFile, NotesOf(entry));
    }

    std::string Text() const {
        std::string text =
            "; Texts by their numbers: AfxLoadString. UTF-8; \\n, \\t, \\\\ and \\x3B "
            "stand for what a line cannot hold.\r\n[Strings]\r\n";
        for (const auto& [id, string] : m_texts)
            for (const std::string& line : StringLines(id, string)) text += line + "\r\n";
        return text;
    }

private:
    Output& m_output;
    std::map<unsigned, std::string> m_texts;
};

} // namespace

void WriteStrings(const std::vector<const StringTable*>& tables, Output& output) {
    if (tables.empty()) return;
    Strings strings(output);
    for (const StringTable* table : tables) {
        output.Say(table->head.place, Described(table->head), kFile);
        for (const StringEntry& entry : table->strings) strings.Take(entry);
    }
    output.Add(kFile, strings.Text());
}

} // namespace vm::rc
