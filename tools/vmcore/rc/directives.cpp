// What stands behind '#' at the beginning of a line.
#include <algorithm>

#include "rc/constants.h"
#include "rc/preprocessor.h"

namespace vm::rc {
namespace {

using Words = std::vector<Token>;

std::string Joined(const Words& words) {
    std::string text;
    for (const Token& word : words) {
        if (!text.empty() && !word.glued) text += ' ';
        text += word.text;
    }
    return text;
}

// Of "#include <name>" the words do not say where blanks are.
std::string BetweenAngles(const std::string& line) {
    const std::size_t begin = line.find('<');
    const std::size_t end = line.find('>', std::min(begin, line.size()));
    return end == std::string::npos ? std::string() : line.substr(begin + 1, end - begin - 1);
}

} // namespace

void Preprocessor::Directive(File& file, const SourceLine& line, const Words& words) {
    if (words.empty()) return;
    const Token& name = words[0];
    const Words rest(words.begin() + 1, words.end());
    if (TakeConditional(file, name, rest) || !Active()) return;
    if (name.text == "define") return Define(name, rest);
    if (name.text == "undef") return Undefine(name, rest);
    if (name.text == "include") return Include(file, line, name, rest);
    if (name.text == "pragma") return Pragma(file, name, rest);
    if (name.text == "line") return LineNumber(file, name, rest);
    if (name.text == "error") Fail(name, "#error " + Joined(rest));
    // Compilers have directives of their own for their languages.
    if (!file.isHeader) Fail(name, "expected a directive, not '#" + name.text + "'");
}

// Conditions count in lines that are passed over, too.
bool Preprocessor::TakeConditional(const File& file, const Token& name, const Words& rest) {
    if (name.text == "ifdef" || name.text == "ifndef") {
        const bool named = !rest.empty() && rest[0].kind == TokenKind::Name;
        if (!named && Active()) Fail(name, "expected a name behind #" + name.text);
        If(name, Active() && IsDefined(rest[0].text) == (name.text == "ifdef"));
    } else if (name.text == "if") {
        If(name, Active() && Evaluate(name, rest));
    } else if (name.text == "elif") {
        Innermost(file, name);
        ElseIf(name, rest);
    } else if (name.text == "else") {
        Else(file, name);
    } else if (name.text == "endif") {
        EndIf(file, name);
    } else {
        return false;
    }
    return true;
}

void Preprocessor::If(const Token& at, bool holds) {
    if (m_conditions.size() >= static_cast<std::size_t>(m_settings.limits.conditions))
        Fail(at, "conditions are nested too deeply");
    m_conditions.push_back({Active(), holds, holds, false, m_list.PlaceOf(at)});
}

// A file ends the conditions that it begins.
Preprocessor::Condition& Preprocessor::Innermost(const File& file, const Token& at) {
    if (m_conditions.size() <= file.conditions) Fail(at, "#" + at.text + " without #if");
    Condition& condition = m_conditions.back();
    if (condition.hadElse && at.text != "endif") Fail(at, "#" + at.text + " behind #else");
    return condition;
}

void Preprocessor::ElseIf(const Token& at, const Words& rest) {
    Condition& condition = m_conditions.back();
    condition.active = condition.outer && !condition.done && Evaluate(at, rest);
    condition.done = condition.done || condition.active;
}

void Preprocessor::Else(const File& file, const Token& at) {
    Condition& condition = Innermost(file, at);
    condition.active = condition.outer && !condition.done;
    condition.hadElse = true;
}

void Preprocessor::EndIf(const File& file, const Token& at) {
    Innermost(file, at);
    m_conditions.pop_back();
}

bool Preprocessor::IsDefined(const std::string& name) const {
    return m_macros.Has(name) || ConstantValue(name).has_value();
}

// "defined NAME" and "defined(NAME)" are answered before names are replaced.
Words Preprocessor::WithoutDefined(const Words& rest) const {
    Words words;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        words.push_back(rest[i]);
        if (rest[i].kind != TokenKind::Name || rest[i].text != "defined") continue;
        const bool braced = i + 1 < rest.size() && rest[i + 1].Is("(");
        const std::size_t at = i + (braced ? 2 : 1);
        if (at >= rest.size() || rest[at].kind != TokenKind::Name)
            Fail(rest[i], "expected a name behind 'defined'");
        if (braced && (at + 1 >= rest.size() || !rest[at + 1].Is(")")))
            Fail(rest[at], "expected ')' behind '" + rest[at].text + "'");
        words.back().kind = TokenKind::Number;
        words.back().text = IsDefined(rest[at].text) ? "1" : "0";
        i = at + (braced ? 1 : 0);
    }
    return words;
}

bool Preprocessor::Evaluate(const Token& at, const Words& rest) {
    const Words words = Expanded(WithoutDefined(rest));
    try {
        return IsTrue(words, [](const std::string& name) {
            return static_cast<long long>(ConstantValue(name).value_or(0));
        });
    } catch (const ConditionError& error) {
        Fail(error.at ? *error.at : at, error.text);
    }
}

void Preprocessor::Define(const Token& at, const Words& rest) {
    if (rest.empty() || rest[0].kind != TokenKind::Name) Fail(at, "expected a name behind #define");
    m_defined += rest.size();
    if (m_defined > m_settings.limits.tokens) Fail(at, "the macros are too long together");
    try {
        m_macros.Define(rest);
    } catch (const MacroError& error) {
        Fail(error.at, error.text);
    }
}

void Preprocessor::Undefine(const Token& at, const Words& rest) {
    if (rest.empty() || rest[0].kind != TokenKind::Name) Fail(at, "expected a name behind #undef");
    m_macros.Remove(rest[0].text);
}

void Preprocessor::Include(File& file, const SourceLine& line, const Token& at, const Words& rest) {
    if (!rest.empty() && rest[0].Is("<")) {
        const std::string name = BetweenAngles(line.text);
        if (name.empty()) Fail(rest[0], "expected '>' behind the name of the file");
        return IncludeFile(file, at, name, false);
    }
    const Words words = Expanded(rest);
    if (!words.empty() && words[0].kind == TokenKind::String)
        return IncludeFile(file, at, std::string(Inside(words[0])), true);
    const std::string name = BetweenAngles(Joined(words));
    if (name.empty()) Fail(at, "expected \"FILE\" or <FILE> behind #include");
    IncludeFile(file, at, name, false);
}

void Preprocessor::IncludeFile(File& file, const Token& at, const std::string& name, bool quoted) {
    const Limits& limits = m_settings.limits;
    if (m_depth >= limits.includeDepth || ++m_includes > limits.includes)
        Fail(at, "too many files include each other");
    const std::string portable = PortablePath(name);
    const std::string folder = FolderOf(file.path);
    if (!quoted && IsBuiltInHeader(portable)) return;
    const auto path = m_files.Find(portable, quoted ? &folder : nullptr);
    if (!path) return MissingInclude(at, name, quoted);
    if (m_once.contains(*path)) return;
    const auto bytes = m_files.Read(*path);
    if (!bytes) Fail(at, "cannot read " + *path);
    Read(*path, *bytes, file.lines.CodePage());
}

void Preprocessor::MissingInclude(const Token& at, const std::string& name, bool quoted) {
    const std::string portable = PortablePath(name);
    if (IsBuiltInHeader(portable)) return;
    const Finding finding{m_list.PlaceOf(at), Outcome::LeftOut, "#include " + name, ""};
    if (IsBuiltInScript(portable))
        return m_report.Add({finding.place, finding.outcome, finding.what,
                             "texts and dialogs of the framework, which brings its own here"});
    if (quoted)
        Fail(at, "there is no file '" + name + "' to include; --include DIR says where to look");
    m_report.Add({finding.place, finding.outcome, finding.what,
                  "there is no such file, nor is it built in; --include DIR says where to look"});
}

void Preprocessor::Pragma(File& file, const Token& at, const Words& rest) {
    const std::string name = rest.empty() ? std::string() : rest[0].text;
    if (name == "code_page") return CodePagePragma(file, at, rest);
    if (name == "once") m_once.insert(file.path);
    if (name == "once" || file.isHeader) return;
    m_report.Add(
        {m_list.PlaceOf(at), Outcome::LeftOut, "#pragma " + name, "it means nothing for a script"});
}

void Preprocessor::CodePagePragma(File& file, const Token& at, const Words& rest) {
    const Words words = Expanded(rest);
    unsigned long long number = 0;
    const bool isCall = words.size() >= 4 && words[1].Is("(") && words[3].Is(")");
    if (!isCall) Fail(at, "expected '#pragma code_page(NUMBER)'");
    if (SameWord(words[2].text, "default"))
        number = static_cast<unsigned>(m_settings.codePage != 0 ? m_settings.codePage
                                                                : kDefaultCodePage);
    else if (!NumberOf(words[2].text, false, number) || number > 65535)
        Fail(words[2], "expected the number of a code page, not '" + words[2].text + "'");
    const int codePage = static_cast<int>(number);
    // Lines of UTF-16 have been read before one gets here.
    if (codePage == kUtf16 || codePage == kUtf16BigEndian || !IsCodePage(codePage))
        Fail(words[2], "this system has no code page " + words[2].text);
    if (!file.lines.UseCodePage(codePage))
        m_report.Add({m_list.PlaceOf(at), Outcome::LeftOut,
                      "#pragma code_page(" + words[2].text + ")",
                      "the file's byte-order mark says that it is Unicode"});
}

void Preprocessor::LineNumber(File& file, const Token& at, const Words& rest) {
    const Words words = Expanded(rest);
    unsigned long long number = 0;
    if (words.empty() || !NumberOf(words[0].text, false, number) || number == 0 ||
        number > 0x3FFFFFFF)
        Fail(at, "expected a line's number behind #line");
    file.lineOffset += static_cast<int>(number) - 1 - file.line;
    if (m_list.files.size() > static_cast<std::size_t>(m_settings.limits.includes))
        Fail(at, "too many files are named");
    if (words.size() < 2 || words[1].kind != TokenKind::String) return;
    const std::string_view name = Inside(words[1]);
    if (!name.empty()) file.index = IndexOf(std::string(name), file.path);
}

} // namespace vm::rc
