// The loader of interface files. The input is a file: what comes out is a tree of widgets and the rows
// of its lists, or none and a log line that says why. The toolkit's loader, which makes the widgets, is
// not instrumented.
#include "controls/interfaceFile.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <unistd.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QXmlStreamReader>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include "app/appState.h"
#include "core/log.h"
#include "dialogs/listTexts.h"
#include "platform/bundle.h"
#include "target.h"
#include "wnd/tagTable.h"

namespace fs = std::filesystem;
using fuzz::Require;

// The look-up by tag is of the windows, which nothing here has.
void vm::KeepTagTable(QWidget*) {}

namespace {

constexpr int kDeepest = 64;
int s_lines = 0; // of the log, for this input

// A bundle in a folder of its own, and a toolkit without a display.
struct Surroundings {
    Surroundings()
        : folder(fs::temp_directory_path() / ("vmcore-fuzz-" + std::to_string(getpid()))) {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        new QApplication(argc, argv); // leaked: it may not end after the last widget's statics
        fs::create_directories(folder / "F.app/Contents/Resources");
        vm::App().DVBundle = vm::Bundle::AtPath((folder / "F.app").string());
        vm::SetLineSink([](vm::Outlet, const std::string&) { ++s_lines; });
    }
    ~Surroundings() {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }

    const fs::path folder;
    int argc = 1;
    char name[5] = "fuzz";
    char* argv[2] = {name, nullptr};
};

// Each input is a newer file: the loader keeps the bytes of one that has not changed.
void WriteInput(const std::string& path, std::string_view bytes) {
    static fs::file_time_type s_time = fs::file_time_type::clock::now();
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<long>(bytes.size()));
    fs::last_write_time(path, s_time += std::chrono::milliseconds(10));
}

bool IsWellFormed(std::string_view bytes) {
    QXmlStreamReader xml(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
    int depth = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && ++depth > kDeepest) return false;
        if (xml.isEndElement()) --depth;
    }
    return !xml.hasError();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Surroundings s_surroundings;
    const std::string_view bytes = fuzz::Text(data, size);
    WriteInput(vm::InterfaceFilePath("F"), bytes);
    s_lines = 0;
    QStringList rows;
    vm::InterfaceClasses classes;
    classes.reads = [&](const QByteArray& file) {
        for (const auto& [name, texts] : vm::ListTextsOf(file)) rows += texts;
    };
    QWidget* root = vm::LoadInterfaceFile("F", nullptr, classes);
    Require(rows.size() <= static_cast<qsizetype>(size), "the rows of lists stand in the file");
    Require(root || s_lines == 1, "a file that is not loaded is logged");
    Require(!root || IsWellFormed(bytes), "only well-formed files of some depth are loaded");
    delete root;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
