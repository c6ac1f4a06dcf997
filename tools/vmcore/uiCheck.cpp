#include "uiCheck.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include <QtCore/QByteArray>

#include "controls/interfaceLimits.h"
#include "uiReader.h"

namespace vm::tool {
namespace {

constexpr std::size_t kLargest = 4 * 1024 * 1024; // as the library's loader has it
constexpr int kOk = 1;
constexpr int kCancel = 2;
constexpr int kUnused = -1; // what dialogs number views that nobody asks for

using Names = std::span<const std::string_view>;

// Widgets that a person does nothing with.
constexpr std::string_view kWithoutTag[] = {
    "QWidget",  "QLabel",         "QFrame",    "Line",        "QGroupBox",  "QScrollArea",
    "QToolBox", "QStackedWidget", "QSplitter", "QDockWidget", "QMdiArea",   "QMainWindow",
    "QDialog",  "QMenuBar",       "QMenu",     "QToolBar",    "QStatusBar", "QDialogButtonBox"};
constexpr std::string_view kOkButtons[] = {"Ok", "Save", "Open"}; // of a button box
constexpr std::string_view kCancelButtons[] = {"Cancel", "Close"};
constexpr std::string_view kDelegates[] = {"LCTableViewDelegate", "LBTableViewDelegate",
                                           "TCOutlineViewDataSource"};
constexpr std::string_view kItemActions[] = {"winCmd", "about", "preferences", "terminate"};
constexpr std::string_view kControlActions[] = {"onButton", "onRadio",  "onPopupMenu",
                                                "onCombi",  "onEdit",   "onSelChange",
                                                "onTab",    "onScroll", "onSpin"};

bool Has(Names names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::string Described(const UiElement& element) {
    const std::string what = element.kind == UiElement::Kind::Action ? "item" : element.className;
    return what + " '" + element.name + "'";
}

const UiProperty* Find(const UiElement& element, const char* name) {
    const auto found = element.properties.find(name);
    return found == element.properties.end() ? nullptr : &found->second;
}

std::string TextOf(const UiElement& element, const char* name) {
    const UiProperty* property = Find(element, name);
    return property ? property->value : std::string();
}

std::optional<int> Number(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

class Checker {
public:
    explicit Checker(const UiFile& file) : m_file(file) {}
    std::vector<Finding> Check();

private:
    void CheckTag(const UiElement& element);
    void CheckAction(const UiElement& element);
    void CheckDelegate(const UiElement& element);
    void CheckStandardButtons(const UiElement& element);
    void CheckNumber(const UiElement& element, int tag, std::size_t line);
    void CheckDialogButtons();
    bool NeedsTag(const UiElement& element) const;

    void Add(std::size_t line, Severity severity, const char* kind, std::string text) {
        m_findings.push_back({line, severity, kind, std::move(text)});
    }

    const UiFile& m_file;
    bool m_isMenu = false;
    std::map<int, const UiElement*> m_tags; // and what had them first
    std::vector<Finding> m_findings;
};

std::vector<Finding> Checker::Check() {
    const std::string& root = m_file.elements[0].className;
    m_isMenu = root == "QMenuBar" || root == "QMenu";
    for (const UiElement& element : m_file.elements) {
        const bool isAction = element.kind == UiElement::Kind::Action;
        if (isAction && !m_isMenu) continue; // nobody uses those of a dialog
        CheckTag(element);
        CheckAction(element);
        CheckDelegate(element);
        if (element.className == "QDialogButtonBox") CheckStandardButtons(element);
    }
    if (!m_isMenu) CheckDialogButtons();
    std::stable_sort(m_findings.begin(), m_findings.end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    return std::move(m_findings);
}

bool Checker::NeedsTag(const UiElement& element) const {
    if (element.kind == UiElement::Kind::Widget)
        return element.depth > 0 && !Has(kWithoutTag, element.className);
    const std::string action = TextOf(element, "action");
    return (action.empty() || action == "winCmd") && TextOf(element, "separator") != "true";
}

void Checker::CheckTag(const UiElement& element) {
    const UiProperty* property = Find(element, "tag");
    const std::optional<int> tag = property ? Number(property->value) : 0;
    if (!tag)
        return Add(property->line, Severity::Error, "tag",
                   "'" + property->value + "' of " + Described(element) + " is no number");
    if (*tag != 0) return CheckNumber(element, *tag, property->line);
    if (!NeedsTag(element)) return;
    const bool isItem = element.kind == UiElement::Kind::Action;
    Add(element.line, Severity::Warning, "no tag",
        Described(element) + (isItem ? " does nothing" : " sends the number 0 and is never found"));
}

// The number of a button that a button box makes by itself; 0 for those that do not matter here.
// Designer writes "QDialogButtonBox::Ok", newer ones "QDialogButtonBox::StandardButton::Ok".
int TagOfStandardButton(std::string_view name) {
    name.remove_prefix(name.rfind(':') + 1);
    if (Has(kOkButtons, name)) return kOk;
    return Has(kCancelButtons, name) ? kCancel : 0;
}

void Checker::CheckStandardButtons(const UiElement& element) {
    const UiProperty* buttons = Find(element, "standardButtons");
    std::string_view rest = buttons ? std::string_view(buttons->value) : std::string_view();
    while (!rest.empty()) {
        const std::string_view name = rest.substr(0, rest.find('|'));
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
        if (const int tag = TagOfStandardButton(name)) CheckNumber(element, tag, buttons->line);
    }
}

void Checker::CheckNumber(const UiElement& element, int tag, std::size_t line) {
    if (m_isMenu && tag == kOk)
        Add(line, Severity::Note, "tag 1", Described(element) + " is always enabled");
    if (tag == kUnused) return;
    const auto [first, isNew] = m_tags.try_emplace(tag, &element);
    if (isNew || first->second == &element) return;
    // The same command may well be in two menus.
    if (m_isMenu && TextOf(*first->second, "text") == TextOf(element, "text")) return;
    Add(line, Severity::Warning, "duplicate tag",
        std::to_string(tag) + " of " + Described(element) + " is that of " +
            Described(*first->second) + " on line " + std::to_string(first->second->line));
}

void Checker::CheckAction(const UiElement& element) {
    const UiProperty* action = Find(element, "action");
    if (!action || action->value.empty()) return;
    if (Has(m_isMenu ? Names(kItemActions) : Names(kControlActions), action->value)) return;
    const char* const effect =
        m_isMenu ? " does nothing" : " is unknown: the action of the class stays";
    Add(action->line, Severity::Warning, "unknown action",
        "'" + action->value + "' of " + Described(element) + effect);
}

void Checker::CheckDelegate(const UiElement& element) {
    const UiProperty* delegate = Find(element, "delegate");
    if (delegate && !Has(kDelegates, delegate->value))
        Add(delegate->line, Severity::Warning, "unknown delegate",
            "'" + delegate->value + "' of " + Described(element) + " is left out");
}

void Checker::CheckDialogButtons() {
    const std::size_t line = m_file.elements[0].line;
    if (!m_tags.contains(kOk)) Add(line, Severity::Note, "no tag 1", "the dialog has no OK button");
    if (!m_tags.contains(kCancel))
        Add(line, Severity::Note, "no tag 2", "the dialog has no Cancel button");
}

} // namespace

UiReport CheckUi(std::string_view bytes) {
    if (bytes.size() > kLargest)
        return {true,
                {{1, Severity::Error, "refused",
                  "more than 4 MB: the library does not load the file"}}};
    const UiFile file = ReadUi(bytes);
    if (file.trouble.empty()) {
        const InterfaceProblem problem = ProblemOfInterface(
            QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())));
        if (problem.why.empty()) return {true, Checker(file).Check()};
        return {true,
                {{static_cast<std::size_t>(problem.line), Severity::Error, "refused",
                  problem.why + ": the library does not load the file"}}};
    }
    return {false, {{file.troubleLine, Severity::Error, "no interface file", file.trouble}}};
}

} // namespace vm::tool
