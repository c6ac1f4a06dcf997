// What the tests of the writers share: resources put together as the parser would, and what is written.
#pragma once

#include <string>
#include <vector>

#include "rc/writers.h"

namespace vm::rc {

inline Id NumberId(int number, const std::string& symbol = {}) {
    return {number, {}, symbol.empty() ? std::to_string(number) : symbol};
}
inline Id NameId(const std::string& name) {
    return {std::nullopt, name, name};
}

constexpr std::uint32_t kShown = 0x50000000;   // WS_CHILD, WS_VISIBLE
constexpr std::uint32_t kTabbed = 0x10000;     // WS_TABSTOP
constexpr std::uint32_t kGroupStart = 0x20000; // WS_GROUP

inline Control MakeControl(const std::string& windowClass, int id, const std::string& text,
                           const Rect& rect, std::uint32_t style = 0) {
    Control control;
    control.place = {"test.rc", id, 1};
    control.keyword = "CONTROL";
    control.windowClass = windowClass;
    control.id = NumberId(id, id > 0 && id < 65535 ? "IDC_" + std::to_string(id) : "IDC_STATIC");
    control.text = text;
    control.rect = rect;
    control.style = kShown | style;
    return control;
}

inline Dialog MakeDialog(int id, std::vector<Control> controls,
                         const Rect& rect = {0, 0, 220, 160}) {
    Dialog dialog;
    dialog.head = {{"test.rc", 1, 1}, "DIALOGEX", NumberId(id, "IDD_TEST"), {}};
    dialog.rect = rect;
    dialog.style = 0x80C80000; // WS_POPUP, WS_CAPTION, WS_SYSMENU
    dialog.caption = "Test";
    dialog.font = {8, "MS Shell Dlg", 0, false, 1};
    dialog.controls = std::move(controls);
    return dialog;
}

inline MenuItem MakeItem(MenuEntry kind, const std::string& text, const Id& id = {}) {
    MenuItem item;
    item.place = {"test.rc", 2, 1};
    item.kind = kind;
    item.text = text;
    item.id = id;
    return item;
}

/// What a script becomes: its files, and the report's lines without their places.
struct Written {
    explicit Written(const std::vector<Resource>& resources, int mainMenu = -1,
                     const std::string& name = "sketch") {
        files = WriteFiles(resources, name, {mainMenu}, report);
        static const char* const kOutcomes[] = {"converted", "approximated", "left out"};
        for (const Finding& finding : report.Findings())
            lines.push_back(std::string(kOutcomes[static_cast<int>(finding.outcome)]) + ": " +
                            finding.what + ": " + finding.how);
    }
    /// Empty for no such file.
    std::string File(const std::string& name) const {
        for (const OutputFile& file : files)
            if (file.name == name) return file.bytes;
        return {};
    }
    std::vector<OutputFile> files;
    std::vector<std::string> lines;
    Report report;
};

} // namespace vm::rc
