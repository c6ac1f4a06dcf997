// Pictures, and what is read to its end only.
#include "rc/parser.h"

namespace vm::rc {

// A name in quotes, or all that stands together without them.
std::string Parser::TakePath() {
    const Token& first = m_reader.Peek();
    if (m_reader.AtText()) return PortablePath(Inside(m_reader.Take()));
    if (m_reader.AtEnd() || first.line == 0) m_reader.Expected("the name of a file");
    std::string name = m_reader.Take().text;
    while (m_reader.Peek().glued && m_reader.Peek().line == first.line &&
           m_reader.Peek().kind != TokenKind::End)
        name += m_reader.Take().text;
    return PortablePath(name);
}

std::optional<std::string> Parser::FileNamed(const std::string& name, const Token& at) {
    const std::string folder = FolderOf(m_reader.PathOf(at));
    return m_files.Find(name, &folder);
}

void Parser::ParsePicture(Head head, PictureKind kind) {
    CommonStatements(head);
    if (m_reader.AtBlock()) {
        LeftOut(head.place, head.keyword + " " + head.id.symbol,
                "its bytes stand in the script: put the picture into a file");
        return m_reader.SkipBlock([](const Token&) {});
    }
    const Token& token = m_reader.Peek();
    const std::string name = TakePath();
    const auto path = FileNamed(name, token);
    m_script.resources.emplace_back(
        Picture{std::move(head), kind, path.value_or(name), path.has_value()});
}

void Parser::ParseOther(Head head) {
    CommonStatements(head);
    Other other;
    other.head = std::move(head);
    const Token& token = m_reader.Peek();
    if (m_reader.AtBlock()) {
        m_reader.SkipBlock([](const Token&) {});
    } else {
        const std::string name = TakePath();
        const auto path = FileNamed(name, token);
        other.path = path.value_or(name);
        other.isThere = path.has_value();
    }
    m_script.resources.emplace_back(std::move(other));
}

// The commands of its buttons are told, so that a menu or a dialog can take them over.
void Parser::ParseToolbar(Head head) {
    m_reader.Int();
    m_reader.TakeComma();
    m_reader.Int();
    CommonStatements(head);
    bool isButton = false;
    m_reader.SkipBlock([&](const Token& word) {
        if (isButton)
            LeftOut(m_reader.PlaceOf(word), "BUTTON " + word.Spelling(),
                    "there are no toolbars; its command may be in a menu");
        isButton = word.kind == TokenKind::Name && SameWord(word.text, "BUTTON");
    });
    m_script.resources.emplace_back(Other{std::move(head), {}});
}

} // namespace vm::rc
