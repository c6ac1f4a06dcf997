// Files and lines of a script.
#include "rc/preprocessor.h"

#include <algorithm>
#include <cstdio>

namespace vm::rc {
namespace {

bool IsHeader(const std::string& path) {
    const std::string lower = Lower(path);
    return lower.ends_with(".h") || lower.ends_with(".hpp") || lower.ends_with(".hxx") ||
           lower.ends_with(".c") || lower.ends_with(".rh");
}

int LineOfFirstBeyondAscii(const std::string& bytes) {
    const auto first =
        std::find_if(bytes.begin(), bytes.end(), [](char byte) { return (byte & 0x80) != 0; });
    return 1 + static_cast<int>(std::count(bytes.begin(), first, '\n'));
}

std::string Listed(const std::vector<unsigned char>& bytes) {
    std::string text;
    for (std::size_t i = 0; i < std::min<std::size_t>(bytes.size(), 4); ++i) {
        char hex[8];
        std::snprintf(hex, sizeof hex, "0x%02X", bytes[i]);
        text += (i == 0 ? "" : ", ") + std::string(hex);
    }
    return bytes.size() > 4 ? text + ", ..." : text;
}

} // namespace

Preprocessor::Preprocessor(const SourceFiles& files, const PreprocessorSettings& settings,
                           Report& report)
    : m_files(files), m_settings(settings), m_report(report), m_macros(settings.limits) {}

void Preprocessor::Fail(const Token& at, const std::string& text) const {
    throw SyntaxError{m_list.PlaceOf(at), text};
}

// As a file of one line.
void Preprocessor::DefineOption(const std::string& name, const std::string& value) {
    const std::string path = "--define " + name;
    File file = Open(path, name + " " + value, kUtf8);
    Words words;
    SourceLine line;
    if (file.lines.Next(line)) Lex(file, line, false, words);
    if (words.size() > 1) words[1].glued = false;
    m_macros.Define(words);
}

TokenList Preprocessor::Run(const std::string& path, const std::string& bytes) {
    for (const auto& [name, value] : m_settings.defines) DefineOption(name, value);
    Read(path, bytes, 0);
    const Token* const last = m_list.tokens.empty() ? nullptr : &m_list.tokens.back();
    Token end;
    end.file = last ? last->file : IndexOf(path, path);
    end.line = last ? last->line : 1;
    end.column = last ? last->column : 1;
    m_list.tokens.push_back(end);
    return std::move(m_list);
}

int Preprocessor::IndexOf(const std::string& name, const std::string& path) {
    auto& [files, paths, tokens] = m_list;
    for (std::size_t i = 0; i < files.size(); ++i)
        if (files[i] == name && paths[i] == path) return static_cast<int>(i);
    files.push_back(name);
    paths.push_back(path);
    return static_cast<int>(files.size() - 1);
}

// What holds before the first pragma.
int Preprocessor::GuessedCodePage(const std::string& path, const std::string& bytes, int codePage) {
    if (codePage != 0) return codePage;
    if (m_settings.codePage != 0) return m_settings.codePage;
    if (MarkOf(bytes) || !LooksLikeUtf8(bytes)) return kDefaultCodePage;
    if (bytes.find("code_page") != std::string::npos) return kDefaultCodePage;
    m_report.Add({{path, LineOfFirstBeyondAscii(bytes), 1},
                  Outcome::Approximated,
                  "code page",
                  "none is said, and the file is read as the UTF-8 that it looks like"});
    return kUtf8;
}

Preprocessor::File Preprocessor::Open(const std::string& path, const std::string& bytes,
                                      int codePage) {
    const auto lacking = [this, path](int line, const std::vector<unsigned char>& what) {
        if (++m_lacking > m_settings.limits.findings) return;
        m_report.Add({{path, line, 1},
                      Outcome::Approximated,
                      "text",
                      "U+FFFD for what the code page lacks: " + Listed(what)});
    };
    const int guessed = GuessedCodePage(path, bytes, codePage);
    return {path, IndexOf(path, path), SourceLines(bytes, guessed, lacking), IsHeader(path), 0, 0,
            {},   m_conditions.size()};
}

// `codePage`: of the file that includes it; 0 for the first.
void Preprocessor::Read(const std::string& path, const std::string& bytes, int codePage) {
    if (std::find(m_read.begin(), m_read.end(), path) == m_read.end()) m_read.push_back(path);
    m_bytes += bytes.size();
    File file = Open(path, bytes, codePage);
    if (m_bytes > m_settings.limits.sourceBytes)
        throw SyntaxError{{path, 1, 1}, "the files of the script are too large together"};
    ++m_depth;
    TakeLines(file);
    --m_depth;
}

void Preprocessor::TakeLines(File& file) {
    SourceLine line;
    while (file.lines.Next(line)) TakeLine(file, line);
    Flush(file);
    CloseFile(file);
}

void Preprocessor::CloseFile(const File& file) {
    if (const auto& comment = file.lexer.OpenComment())
        throw SyntaxError{
            {m_list.files[static_cast<std::size_t>(file.index)], comment->line, comment->column},
            "expected the end of this comment"};
    if (m_conditions.size() > file.conditions)
        throw SyntaxError{m_conditions.back().place, "expected #endif for this condition"};
}

void Preprocessor::Lex(File& file, const SourceLine& line, bool isDirective, Words& words) {
    file.line = line.parts.back().line + file.lineOffset;
    const bool counts = Active() && !file.isHeader;
    const LexerSettings settings{file.index,
                                 file.lines.CodePage(),
                                 file.lineOffset,
                                 isDirective || !counts,
                                 isDirective || counts,
                                 m_settings.limits.lineTokens};
    try {
        file.lexer.Take(line, settings, words);
    } catch (const Lexer::Trouble& at) {
        throw SyntaxError{{m_list.files[static_cast<std::size_t>(file.index)], at.line, at.column},
                          at.text};
    }
}

void Preprocessor::TakeLine(File& file, const SourceLine& line) {
    if (line.text.find('\0') != std::string::npos)
        throw SyntaxError{{file.path, line.parts[0].line, 1},
                          "a zero byte: is this Unicode without a byte-order mark, or no text?"};
    const std::size_t first = line.text.find_first_not_of(" \t\f\v\r");
    const bool isDirective =
        !file.lexer.OpenComment() && first != std::string::npos && line.text[first] == '#';
    Words words;
    Lex(file, line, isDirective, words);
    if (isDirective) {
        Flush(file);
        words.erase(words.begin());
        return Directive(file, line, words);
    }
    if (!words.empty()) TakeWords(file, std::move(words));
}

void Preprocessor::TakeWords(File& file, Words words) {
    m_pending.insert(m_pending.end(), std::make_move_iterator(words.begin()),
                     std::make_move_iterator(words.end()));
    if (m_pending.size() > m_settings.limits.tokens) Fail(m_pending[0], "the script is too long");
    const bool goesOn = m_macros.IsUnfinished(m_pending);
    if (!goesOn || ++m_pendingLines > m_settings.limits.callLines) Flush(file);
}

void Preprocessor::Flush(const File&) {
    if (m_pending.empty()) return;
    const Words words = std::exchange(m_pending, {});
    m_pendingLines = 0;
    if (m_list.tokens.size() + words.size() > m_settings.limits.tokens)
        Fail(words[0], "the script is too long");
    Words expanded = Expanded(words);
    m_list.tokens.insert(m_list.tokens.end(), std::make_move_iterator(expanded.begin()),
                         std::make_move_iterator(expanded.end()));
}

Preprocessor::Words Preprocessor::Expanded(const Words& words) {
    try {
        return m_macros.Expand(words);
    } catch (const MacroError& error) {
        Fail(error.at, error.text);
    }
}

} // namespace vm::rc
