#include "rc/writers.h"

#include "rc/writeAccelerators.h"
#include "rc/writeDialog.h"
#include "rc/writeMenu.h"
#include "rc/writeOutput.h"
#include "rc/writePicture.h"
#include "rc/writeStrings.h"
#include "rc/writeVersion.h"

namespace vm::rc {
namespace {

template <class Kind>
std::vector<const Kind*> AllOf(const std::vector<Resource>& resources) {
    std::vector<const Kind*> all;
    for (const Resource& resource : resources)
        if (const Kind* one = std::get_if<Kind>(&resource)) all.push_back(one);
    return all;
}

std::string WhyLeftOut(const std::string& keyword) {
    if (keyword == "TOOLBAR" || keyword == "241")
        return "there are no tool bars of resources: place buttons with these commands in a dialog "
               "or a window";
    if (keyword == "DLGINIT" || keyword == "240")
        return "what lists of dialogs hold at first, as a file: add the texts in OnInitDialog";
    if (keyword == "AFX_DIALOG_LAYOUT")
        return "how a dialog grows: give it a layout in Qt Designer";
    if (keyword == "MANIFEST" || keyword == "24") return "only for Windows";
    if (keyword == "DESIGNINFO" || keyword == "TEXTINCLUDE") return "only for the resource editor";
    if (keyword == "FONT") return "install the font with the program's files";
    return "no counterpart: put the data into the bundle's Resources folder, as a file";
}

// Writes what has a file of its own.
class OneByOne {
public:
    OneByOne(int mainMenu, const Shortcuts& shortcuts, const Picture* icon, Output& output)
        : m_mainMenu(mainMenu), m_shortcuts(shortcuts), m_icon(icon), m_output(output) {}

    void operator()(const Dialog& dialog) const { WriteDialog(dialog, m_output); }
    void operator()(const Menu& menu) const {
        const bool isMain = m_mainMenu >= 0 && menu.head.id.number == m_mainMenu;
        WriteMenu(menu, isMain, m_shortcuts, m_output);
    }
    void operator()(const AcceleratorTable&) const {} // all in one file
    void operator()(const StringTable&) const {}
    void operator()(const VersionInfo&) const {}
    void operator()(const Picture& picture) const {
        WritePicture(picture, &picture == m_icon, m_output);
    }
    void operator()(const Other& other) const {
        const std::string why = WhyLeftOut(other.head.keyword);
        m_output.LeaveOut(other.head.place, Described(other.head),
                          why + UnlessThere(other.isThere, other.path));
    }

private:
    int m_mainMenu;
    const Shortcuts& m_shortcuts;
    const Picture* m_icon;
    Output& m_output;
};

} // namespace

std::vector<OutputFile> WriteFiles(const std::vector<Resource>& resources,
                                   const std::string& scriptName, const WriteOptions& options,
                                   Report& report) {
    Output output(report);
    const auto tables = AllOf<AcceleratorTable>(resources);
    const Shortcuts shortcuts = ShortcutsOf(tables, options.mainMenu);
    const Picture* const icon = ProgramIcon(AllOf<Picture>(resources));
    const OneByOne write(options.mainMenu, shortcuts, icon, output);
    // Dialogs say which pictures they lack.
    const auto isPicture = [](const Resource& resource) {
        return std::holds_alternative<Picture>(resource);
    };
    for (const bool pictures : {true, false})
        for (const Resource& resource : resources)
            if (isPicture(resource) == pictures) std::visit(write, resource);
    WriteAccelerators(tables, scriptName, output);
    WriteStrings(AllOf<StringTable>(resources), output);
    WriteInfo(AllOf<VersionInfo>(resources), icon, output);
    return std::move(output.files);
}

} // namespace vm::rc
