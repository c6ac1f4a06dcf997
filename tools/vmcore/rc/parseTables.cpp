// ACCELERATORS and STRINGTABLE.
#include "rc/parser.h"

namespace vm::rc {

void Parser::ParseAccelerators(Head head) {
    AcceleratorTable table;
    table.head = std::move(head);
    CommonStatements(table.head);
    m_reader.Begin();
    while (!m_reader.TakeEnd()) table.keys.push_back(AcceleratorAt());
    m_script.resources.emplace_back(std::move(table));
}

Accelerator Parser::AcceleratorAt() {
    Accelerator key;
    const Token& token = m_reader.Peek();
    key.place = m_reader.Here();
    const bool isText = m_reader.AtText();
    if (isText) {
        key.symbol = token.Spelling();
        KeyOfText(key, m_reader.OneText());
    } else {
        if (!m_reader.AtNumber()) m_reader.Expected("a key or END");
        const Id id = m_reader.NumberId();
        key.key = *id.number;
        key.symbol = id.symbol;
    }
    m_reader.TakeComma();
    key.command = m_reader.NumberId();
    m_reader.TakeComma();
    KeyOptions(key, isText);
    return key;
}

// "^C" is the key C with Ctrl, whatever else the line says; "^^" is the character.
void Parser::KeyOfText(Accelerator& key, const std::string& text) {
    const bool withControl = text.size() == 2 && text[0] == '^' && text[1] != '^';
    const std::string character = text == "^^" ? "^" : withControl ? text.substr(1) : text;
    if (character.size() != 1 || (character[0] & 0x80) != 0)
        throw SyntaxError{key.place,
                          "expected one character of ASCII, or '^' and a letter, in " + key.symbol};
    key.key = static_cast<unsigned char>(character[0]);
    if (!withControl) return;
    key.control = true;
    key.virtualKey = true;
}

void Parser::KeyOptions(Accelerator& key, bool isText) {
    bool typed = key.virtualKey;
    for (;; m_reader.TakeComma()) {
        if (m_reader.TakeWord("VIRTKEY"))
            typed = key.virtualKey = true;
        else if (m_reader.TakeWord("ASCII"))
            typed = true;
        else if (m_reader.TakeWord("SHIFT"))
            key.shift = true;
        else if (m_reader.TakeWord("CONTROL"))
            key.control = true;
        else if (m_reader.TakeWord("ALT"))
            key.alt = true;
        else if (!m_reader.TakeWord("NOINVERT")) // no menu is ever shown inverted
            break;
    }
    if (!typed && !isText && SameWord(key.symbol.substr(0, 3), "VK_")) {
        key.virtualKey = true;
        m_report.Add({key.place, Outcome::Approximated, "accelerator " + key.symbol,
                      "without VIRTKEY it would be a character: taken for the key"});
    }
    // A text names the key by its letter, which has the number of the capital.
    if (key.virtualKey && isText && key.key >= 'a' && key.key <= 'z') key.key -= 'a' - 'A';
}

void Parser::ParseStrings(Head head) {
    StringTable table;
    SkipOptions();
    table.head = std::move(head);
    CommonStatements(table.head);
    m_reader.Begin();
    while (!m_reader.TakeEnd()) {
        StringEntry entry;
        entry.place = m_reader.Here();
        if (!m_reader.AtNumber()) m_reader.Expected("the number of a text or END");
        entry.id = m_reader.NumberId();
        m_reader.TakeComma();
        entry.text = m_reader.Text();
        table.strings.push_back(std::move(entry));
    }
    m_script.resources.emplace_back(std::move(table));
}

} // namespace vm::rc
