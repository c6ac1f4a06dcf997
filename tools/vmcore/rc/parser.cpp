// Statements of a script and what resources have in common.
#include "rc/parser.h"

#include <array>

namespace vm::rc {
namespace {

constexpr std::array<std::string_view, 8> kMemoryOptions = {
    "PRELOAD", "LOADONCALL", "FIXED", "MOVEABLE", "DISCARDABLE", "PURE", "IMPURE", "SHARED",
};

bool IsMemoryOption(const Token& token) {
    if (token.kind != TokenKind::Name) return false;
    if (SameWord(token.text, "NONSHARED")) return true;
    for (const std::string_view option : kMemoryOptions)
        if (SameWord(token.text, option)) return true;
    return false;
}

} // namespace

Script ParseScript(const TokenList& tokens, const SourceFiles& files, Report& report) {
    return Parser(tokens, files, report).Run();
}

Script Parser::Run() {
    while (!m_reader.AtEnd()) Statement();
    return std::move(m_script);
}

void Parser::LeftOut(const Place& place, const std::string& what, const std::string& why) {
    m_report.Add({place, Outcome::LeftOut, what, why});
}

void Parser::Statement() {
    if (m_reader.TakeMark(";")) return; // behind a macro's call
    Head head{m_reader.Here(), {}, {}, m_language};
    if (m_reader.TakeWord("LANGUAGE")) {
        m_language = m_reader.TakeLanguage();
    } else if (m_reader.TakeWord("STRINGTABLE")) {
        head.keyword = "STRINGTABLE";
        ParseStrings(head);
    } else {
        head.id = m_reader.NameOrNumber();
        Resource(std::move(head));
    }
}

void Parser::Resource(Head head) {
    if (m_reader.AtEnd()) m_reader.Expected("the type of the resource");
    const Id type = m_reader.NameOrNumber();
    head.keyword = type.number ? std::to_string(*type.number) : type.name;
    SkipOptions();
    if (!ByKeyword(head)) ParseOther(std::move(head));
}

bool Parser::ByKeyword(const Head& head) {
    const std::string& keyword = head.keyword;
    if (keyword == "DIALOG" || keyword == "DIALOGEX")
        ParseDialog(head, keyword == "DIALOGEX");
    else if (keyword == "MENU" || keyword == "MENUEX")
        ParseMenu(head, keyword == "MENUEX");
    else if (keyword == "ACCELERATORS")
        ParseAccelerators(head);
    else if (keyword == "VERSIONINFO")
        ParseVersion(head);
    else if (keyword == "BITMAP")
        ParsePicture(head, PictureKind::Bitmap);
    else if (keyword == "ICON")
        ParsePicture(head, PictureKind::Icon);
    else if (keyword == "CURSOR")
        ParsePicture(head, PictureKind::Cursor);
    else if (keyword == "TOOLBAR")
        ParseToolbar(head);
    else if (keyword == "DLGINIT" || keyword == "240")
        ParseDialogInit(head);
    else
        return false;
    return true;
}

// They stand behind nearly every type in old scripts: said once.
void Parser::SkipOptions() {
    while (IsMemoryOption(m_reader.Peek())) {
        const Token& option = m_reader.Take();
        m_reader.TakeComma();
        if (!m_saidOptions)
            LeftOut(m_reader.PlaceOf(option), Upper(option.text),
                    "memory options mean nothing here; said once");
        m_saidOptions = true;
    }
}

bool Parser::TakeCommonStatement(Head& head) {
    const Token& word = m_reader.Peek();
    const Place place = m_reader.Here();
    if (m_reader.TakeWord("LANGUAGE")) {
        head.language = m_reader.TakeLanguage();
        return true;
    }
    if (!m_reader.TakeWord("CHARACTERISTICS") && !m_reader.TakeWord("VERSION")) return false;
    m_reader.Number();
    LeftOut(place, Upper(word.text), "a note for tools that edit resources");
    return true;
}

void Parser::CommonStatements(Head& head) {
    while (TakeCommonStatement(head)) {
    }
}

} // namespace vm::rc
