// DIALOG and DIALOGEX with their controls.
#include "rc/constants.h"
#include "rc/controlKinds.h"
#include "rc/parser.h"

namespace vm::rc {
namespace {

constexpr std::uint32_t kChild = 0x40000000;
constexpr std::uint32_t kVisible = 0x10000000;
constexpr std::uint32_t kCaption = 0x00C00000;
constexpr std::uint32_t kUnstyledDialog = 0x80880000; // pop-up, border, system menu
constexpr std::uint32_t kSetFont = 0x40;
constexpr std::uint32_t kStaticType = 0x1F;

bool ShowsPicture(const Control& control) {
    const std::uint32_t type = control.style & kStaticType;
    return control.windowClass == "static" && (type == 0x3 || type == 0xE || type == 0xF);
}

} // namespace

void Parser::ParseDialog(Head head, bool extended) {
    Dialog dialog;
    dialog.head = std::move(head);
    dialog.extended = extended;
    dialog.style = kUnstyledDialog;
    CommonStatements(dialog.head);
    dialog.rect = TakeRect();
    if (m_reader.TakeComma() || m_reader.AtNumber()) dialog.helpId = m_reader.Bits();
    bool hasStyle = false;
    while (!m_reader.AtBlock()) {
        if (m_reader.TakeWord("STYLE")) {
            dialog.style = m_reader.Style(hasStyle ? dialog.style : 0);
            hasStyle = true;
        } else if (!DialogStatement(dialog)) {
            m_reader.Expected("BEGIN or a statement of the dialog");
        }
    }
    if (!dialog.caption.empty()) dialog.style |= kCaption;
    if (dialog.font.points != 0) dialog.style |= kSetFont;
    m_reader.Begin();
    while (!m_reader.TakeEnd()) dialog.controls.push_back(ParseControl());
    m_script.resources.emplace_back(std::move(dialog));
}

bool Parser::DialogStatement(Dialog& dialog) {
    if (TakeCommonStatement(dialog.head)) return true;
    if (m_reader.TakeWord("EXSTYLE"))
        dialog.exStyle = m_reader.Style(0);
    else if (m_reader.TakeWord("CAPTION"))
        dialog.caption = m_reader.Text();
    else if (m_reader.TakeWord("FONT"))
        DialogFont(dialog.font);
    else if (m_reader.TakeWord("MENU"))
        dialog.menu = m_reader.NameOrNumber();
    else if (m_reader.TakeWord("CLASS"))
        dialog.windowClass = m_reader.NameOrNumber();
    else
        return false;
    return true;
}

void Parser::DialogFont(Font& font) {
    font.points = m_reader.Int();
    m_reader.TakeComma();
    font.face = m_reader.Text();
    if (m_reader.TakeComma()) font.weight = m_reader.Int();
    if (m_reader.TakeComma()) font.italic = m_reader.Number() != 0;
    if (m_reader.TakeComma()) font.charset = m_reader.Int();
}

Rect Parser::TakeRect() {
    Rect rect;
    rect.x = m_reader.Int();
    m_reader.TakeComma();
    rect.y = m_reader.Int();
    m_reader.TakeComma();
    rect.cx = m_reader.Int();
    m_reader.TakeComma();
    rect.cy = m_reader.Int();
    return rect;
}

Control Parser::ParseControl() {
    Control control;
    control.place = m_reader.Here();
    control.keyword = Upper(m_reader.Peek().text);
    control.style = kChild | kVisible;
    if (m_reader.TakeWord("CONTROL"))
        ParseGenericControl(control);
    else
        ParseKindOfControl(control);
    if (m_reader.AtBlock()) {
        control.hasData = true;
        m_reader.SkipBlock([](const Token&) {});
    }
    return control;
}

void Parser::ParseKindOfControl(Control& control) {
    const bool isName = m_reader.Peek().kind == TokenKind::Name;
    const ControlKind* const kind = isName ? ControlKindOf(m_reader.Peek().text) : nullptr;
    if (!kind) m_reader.Expected("a control or END");
    m_reader.Take();
    control.windowClass = kind->windowClass;
    if (kind->windowClass == "edit" && control.keyword != "EDITTEXT")
        m_report.Add({control.place, Outcome::Approximated, control.keyword,
                      "an ordinary edit: nothing writes with a pen"});
    if (kind->hasText) TakeTextOrImage(control);
    control.id = m_reader.NumberId();
    m_reader.TakeComma();
    control.style |= kind->style;
    if (control.keyword == "ICON") {
        // The picture has the size; what is here may be left out.
        control.rect.x = m_reader.Int();
        m_reader.TakeComma();
        control.rect.y = m_reader.Int();
        if (m_reader.TakeComma()) control.rect.cx = m_reader.Int();
        if (m_reader.TakeComma()) control.rect.cy = m_reader.Int();
    } else {
        control.rect = TakeRect();
    }
    const bool styled = m_reader.TakeComma();
    control.style = styled && !m_reader.Peek().Is(",") ? m_reader.Style(control.style)
                                                       : control.style | kind->unstyled;
    ControlTail(control);
    PictureOfText(control);
}

// CONTROL text, id, class, style, x, y, cx, cy
void Parser::ParseGenericControl(Control& control) {
    TakeTextOrImage(control);
    control.id = m_reader.NumberId();
    m_reader.TakeComma();
    ControlClass(control);
    m_reader.TakeComma();
    control.style = m_reader.Style(control.style);
    m_reader.TakeComma();
    control.rect = TakeRect();
    ControlTail(control);
    PictureOfText(control);
}

void Parser::ControlClass(Control& control) {
    const Token& token = m_reader.Peek();
    if (m_reader.AtText()) {
        control.windowClass = Lower(m_reader.OneText());
    } else if (m_reader.AtNumber()) {
        control.windowClass = ClassOfAtom(m_reader.Int());
        if (control.windowClass.empty()) m_reader.Fail(token, "no window class has this number");
    } else if (token.kind == TokenKind::Name) {
        const auto known = ConstantText(m_reader.Take().text);
        control.windowClass = Lower(known ? *known : token.text);
    } else {
        m_reader.Expected("a window class");
    }
}

void Parser::ControlTail(Control& control) {
    const bool more = m_reader.TakeComma();
    if (more && (m_reader.AtNumber() || m_reader.IsWord("NOT")))
        control.exStyle = m_reader.Style(0);
    if (m_reader.TakeComma()) control.helpId = m_reader.Bits();
}

// A number is that of a picture; a name without quotes is a picture's, too.
void Parser::TakeTextOrImage(Control& control) {
    if (m_reader.AtText())
        control.text = m_reader.Text();
    else
        control.image = m_reader.NameOrNumber();
    m_reader.TakeComma();
}

// The text of a static control that shows a picture is the picture's name.
void Parser::PictureOfText(Control& control) {
    if (control.image || control.text.empty() || !ShowsPicture(control)) return;
    Id id{std::nullopt, Upper(control.text), control.text};
    unsigned long long number = 0;
    const std::string_view digits = std::string_view(control.text).substr(1);
    if (control.text[0] == '#' && NumberOf(digits, false, number) && number <= 65535)
        id = {static_cast<int>(number), {}, std::string(digits)};
    control.image = std::move(id);
    control.text.clear();
}

} // namespace vm::rc
