// From the files of a script to its words: includes, macros, conditions, code pages. Of headers (.h)
// only the directives count.
#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "rc/SourceFiles.h"
#include "rc/SourceLines.h"
#include "rc/condition.h"
#include "rc/lexer.h"
#include "rc/limits.h"
#include "rc/macros.h"
#include "rc/report.h"
#include "rc/token.h"

namespace vm::rc {

struct PreprocessorSettings {
    std::vector<std::pair<std::string, std::string>> defines; ///< name and value
    int codePage = 0; ///< of files that do not say theirs; 0: 1252, or UTF-8 where it looks like it
    Limits limits = {};
};

class Preprocessor {
public:
    Preprocessor(const SourceFiles& files, const PreprocessorSettings& settings, Report& report);
    /// Throws SyntaxError.
    TokenList Run(const std::string& path, const std::string& bytes);
    /// Every file that was read, for what depends on them.
    const std::vector<std::string>& FilesRead() const { return m_read; }

private:
    /// A file that is being read.
    struct File {
        std::string path;
        int index = 0; ///< in TokenList::files
        SourceLines lines;
        bool isHeader = false;
        int lineOffset = 0;
        int line = 0;
        Lexer lexer = {};
        std::size_t conditions = 0; ///< that were open before it
    };
    struct Condition {
        bool outer;  ///< whether lines around it count
        bool active; ///< whether its own do
        bool done;   ///< one branch has been taken
        bool hadElse;
        Place place;
    };
    using Words = std::vector<Token>;

    void DefineOption(const std::string& name, const std::string& value);
    void Read(const std::string& path, const std::string& bytes, int codePage);
    File Open(const std::string& path, const std::string& bytes, int codePage);
    void TakeLines(File& file);
    void TakeLine(File& file, const SourceLine& line);
    void TakeWords(File& file, Words words);
    void Flush(const File& file);
    void Lex(File& file, const SourceLine& line, bool isDirective, Words& words);
    void CloseFile(const File& file);

    // Directives, in directives.cpp. `words` are those behind '#'.
    void Directive(File& file, const SourceLine& line, const Words& words);
    bool TakeConditional(const File& file, const Token& name, const Words& rest);
    void If(const Token& at, bool holds);
    void ElseIf(const Token& at, const Words& rest);
    void Else(const File& file, const Token& at);
    void EndIf(const File& file, const Token& at);
    Condition& Innermost(const File& file, const Token& at);
    bool Evaluate(const Token& at, const Words& rest);
    Words WithoutDefined(const Words& rest) const;
    bool IsDefined(const std::string& name) const;
    void Define(const Token& at, const Words& rest);
    void Undefine(const Token& at, const Words& rest);
    void Include(File& file, const SourceLine& line, const Token& at, const Words& rest);
    void IncludeFile(File& file, const Token& at, const std::string& name, bool quoted);
    void MissingInclude(const Token& at, const std::string& name, bool quoted);
    void Pragma(File& file, const Token& at, const Words& rest);
    void CodePagePragma(File& file, const Token& at, const Words& rest);
    void LineNumber(File& file, const Token& at, const Words& rest);

    bool Active() const { return m_conditions.empty() || m_conditions.back().active; }
    int IndexOf(const std::string& name, const std::string& path);
    int GuessedCodePage(const std::string& path, const std::string& bytes, int codePage);
    Words Expanded(const Words& words);
    [[noreturn]] void Fail(const Token& at, const std::string& text) const;

    const SourceFiles& m_files;
    const PreprocessorSettings& m_settings;
    Report& m_report;
    Macros m_macros;
    TokenList m_list;
    std::vector<std::string> m_read;
    std::set<std::string> m_once; ///< with "#pragma once"
    std::vector<Condition> m_conditions;
    Words m_pending; ///< a call whose arguments go on
    int m_pendingLines = 0;
    int m_depth = 0;
    int m_includes = 0;
    std::size_t m_bytes = 0;
    std::size_t m_defined = 0; ///< words of all macros
    std::size_t m_lacking = 0;
};

} // namespace vm::rc
