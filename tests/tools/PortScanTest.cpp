// `vmcore port scan`: tokens, what counts as a use, and that the tables agree with the headers.
#include "portUses.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "portTables.h"

namespace vm::tool {
namespace {

using Lines = std::vector<std::string>;

// The names and headers of a source, with their lines.
std::string Tokens(const std::string& text) {
    std::string found;
    const PortSource source(text);
    for (const PortToken& token : source.Tokens())
        if (token.kind == PortTokenKind::Name || token.kind == PortTokenKind::Header)
            found += std::string(token.text) + ":" + std::to_string(token.line) + " ";
    return found;
}

TEST(PortTokens, OnlyNamesOutsideOfTextsAndComments) {
    const struct {
        const char* text;
        const char* found;
    } rows[] = {
        {"a // b \\\n c\nd", "a:1 d:3 "},
        {"a /* b\n c */ d", "a:1 d:2 "},
        {"a \"b \\\" c\" d 'e' L\"f\" u8\"g\" h", "a:1 d:1 h:1 "},
        {"a R\"x(b \" \n)\" c)x\" d", "a:1 d:2 "},
        {"a \"not closed\nb", "a:1 b:2 "},
        {"1'000 0x1Fu 1.5e-3f a", "a:1 "},
        {"ab\\\ncd e\nf", "abcd:1 e:2 f:3 "},
        {"#include <afxwin.h> // b\n#include \"x.h\"\na", "<afxwin.h>:1 \"x.h\":2 a:3 "},
        {"#define F(x, y) x + y + z\nx", "z:1 x:2 "},
        {"#define A\\\n b\nc", "b:2 c:3 "},
        {"#if defined(B)\na\n#elif C\nb\n#endif D\nc", "a:2 b:4 c:6 "},
        {"#if 0\na\n#if 1\nb\n#endif\ne\n#else\nc\n#endif\nd", "c:8 d:10 "},
        {"#pragma warning(disable: 4)\na", "a:2 "},
        {"\xEF\xBB\xBF"
         "a",
         "a:1 "},
        {"gr\xF6\xDF b", "gr\xF6\xDF:1 b:1 "},
        {"#if 0\na", ""},
        {"R\"(a", ""},
        {"a \\", "a:1 "},
        {"#define", ""},
        {"#include <a", ""},
    };
    for (const auto& row : rows) EXPECT_EQ(Tokens(row.text), row.found) << row.text;
    EXPECT_EQ(Tokens(std::string("\xFF\xFE"
                                 "a\0\n\0b\0",
                                 8)),
              "a:1 b:2 ");
    EXPECT_EQ(Tokens(std::string("\xFE\xFF"
                                 "\0a\0 \0b\0",
                                 9)),
              "a:1 b:1 ");
}

// 'NAME STATE COUNT' each.
Lines Used(const std::string& text) {
    PortScan scan;
    scan.Learn(text);
    scan.Count("x.cpp", text);
    Lines lines;
    for (const auto& [name, use] : scan.Uses())
        lines.push_back(name + " " + PortStateName(use.state) + " " + std::to_string(use.count));
    return lines;
}

TEST(PortScan, Uses) {
    const struct {
        const char* text;
        Lines used;
    } rows[] = {
        {"int a = WHEEL_DELTA;", {"WHEEL_DELTA missing 1"}},
        {"int a = WM_NEVER_HEARD_OF;", {"WM_NEVER_HEARD_OF unknown 1"}},
        {"int a = MY_WM_THING + WM_;", {}},
        {"#define WM_MINE (WM_USER + 1)\nint a = WM_MINE;", {"WM_USER difference 1"}},
        {"enum { WM_MINE = 5 }; int a = WM_MINE;", {}},
        {"void f() { const int WM_MINE = 5; g(WM_MINE); }", {}},
        {"class CView {}; CView* view;", {}},
        {"class CView; CView* view;", {"CView missing 2"}},
        {"DWORD WINAPI GetLastError(); int f() { return GetLastError(); }",
         {"DWORD there 1", "GetLastError missing 1", "WINAPI there 1"}},
        {"void GetLastError() {} void f() { GetLastError(); }", {}},
        {"void f() { GetLastError(); GetLastErrors(); int GetLastError; }",
         {"GetLastError missing 1"}},
        {"void f() { ::GetLastError(); std::GetLastError(); }", {"GetLastError missing 1"}},
        {"int WinMain(int) { return 0; }", {"WinMain missing 1"}},
        {"void f() { MoveFileExW(0, 0); }", {"MoveFileExW missing 1"}},
        {"#include <AfxOle.h>\n#include <vector>\n#include \"afxwin.h\"",
         {"\"afxwin.h\" there 1", "<AfxOle.h> missing 1"}},
        // members of variables, parameters, fields, casts, results
        {"void f() { CString s; s.Mid(1); }", {"CString difference 1", "CString::Mid missing 1"}},
        {"void f(const CString& s) { s.Mid(1); }",
         {"CString difference 1", "CString::Mid missing 1"}},
        {"void f() { auto* s = new CString; s->Mid(1); }",
         {"CString difference 1", "CString::Mid missing 1"}},
        {"void f() { ((CEdit*)x)->Never(); }", {"CEdit there 1", "CEdit::Never unknown 1"}},
        {"void f() { static_cast<CEdit*>(x)->Undo(); }", {"CEdit there 1", "CEdit::Undo there 1"}},
        {"void f() { CEdit e[2]; e[g(1)].Undo(); }", {"CEdit there 1", "CEdit::Undo there 1"}},
        {"void f() { AfxGetApp()->m_lpCmdLine; }",
         {"AfxGetApp there 1", "CWinApp::m_lpCmdLine missing 1"}},
        {"struct A { CEdit e, g; }; void f(A* a) { a->g.Undo(); }",
         {"CEdit there 1", "CEdit::Undo there 1"}},
        {"struct A { CButton e; }; struct B { int e; }; void f(B b) { b.e.SetCheck(1); }",
         {"CButton difference 1"}},
        // of the object that a function belongs to, also by its bases
        {"class A : public CWnd { void F(); }; void A::F() { UpdateWindow(); F(); }",
         {"CWnd there 1", "CWnd::UpdateWindow there 1"}},
        {"class A : public CWnd { void F() { m_hWnd; } };",
         {"CWnd there 1", "CWnd::m_hWnd missing 1"}},
        {"class A : public CView { void F() { UpdateWindow(); Sleep(1); } };",
         {"CView missing 1", "CWnd::UpdateWindow there 1", "Sleep difference 1"}},
        {"class A : public CWnd { void UpdateWindow(); void F() { UpdateWindow(); } };",
         {"CWnd there 1", "CWnd::UpdateWindow there 1"}},
        {"class A : public CWnd {}; class B : A {}; void f(B b) { b.UpdateWindow(); b.Own(); }",
         {"CWnd there 1", "CWnd::UpdateWindow there 1"}},
        {"class A : public CWinApp { int OnIdle(int); };",
         {"CWinApp difference 1", "CWinApp::OnIdle difference 1"}},
        {"void f() { CSocket s; s.Send(); }", {"CSocket missing 1", "CSocket::Send missing 1"}},
        {"CFile::modeRead; CFile::modeNoTruncate;",
         {"CFile difference 2", "CFile::modeNoTruncate missing 1", "CFile::modeRead there 1"}},
        // of nobody knows whom: only where the name says enough
        {"void f() { x->EnsureVisible(1); x->SetCurSel(1); x->SetCheck(1); x.size(); x->Add(1); }",
         {"EnsureVisible there 1", "SetCurSel there 1"}},
        {"struct A { void Mid(); }; void f() { x->Mid(1); }", {}},
        {"void f() { x->ReverseFind(1); }", {"CString::ReverseFind missing 1"}},
        // macros with parts of statements, and unbalanced branches
        {"BEGIN_IT(A, CWnd) ON(x) END_IT() class A : public CWnd { void F(); };\n"
         "IMPLEMENT(A) void A::F() { UpdateWindow(); }",
         {"CWnd there 2", "CWnd::UpdateWindow there 1"}},
        {"class A : public CWnd { void F(int); };\n#if X\nvoid A::F(int) {\n#else\n"
         "void A::F(long) {\n#endif\nUpdateWindow(); }\nvoid g() { UpdateWindow(); }",
         {"CWnd there 1", "CWnd::UpdateWindow there 1", "UpdateWindow missing 1"}},
    };
    for (const auto& row : rows) EXPECT_EQ(Used(row.text), row.used) << row.text;
}

TEST(PortScan, EveryPlaceIsKept) {
    PortScan scan(true);
    for (const char* file : {"a.cpp", "b.cpp"}) scan.Count(file, "\nWHEEL_DELTA\nWHEEL_DELTA");
    const PortUse& use = scan.Uses().at("WHEEL_DELTA");
    ASSERT_EQ(use.places.size(), 4u);
    EXPECT_EQ(scan.Files()[use.places[3].file], "b.cpp");
    EXPECT_EQ(use.places[3].line, 3u);
}

TEST(PortScan, TextsThatNoCompilerTakes) {
    const std::string parts[] = {"{",   "}",  "(",     "[]",        "#if X\n",      "#else\n",
                                 "a(",  "a.", "CWnd*", "template<", "class A:A,A{", "\xFF",
                                 "R\"", "\\", "::~",   "x)->"};
    for (const std::string& part : parts) {
        std::string text = "class A : public A, CWnd { void f() { ";
        for (int i = 0; i < 20000; ++i) text += part;
        Used(text + ".UpdateWindow(); m_x.y;");
    }
}

// The words in front of the first bar of each line.
Lines NamesOf(const std::vector<std::string_view>& table) {
    Lines names;
    for (const std::string_view line : table) {
        if (line.find(" | ") == std::string_view::npos) continue;
        std::string name;
        for (const char c : line.substr(0, line.find(" | "))) {
            if (c != ' ' && c != ',') name += c;
            if (c == ' ' && !name.empty()) names.push_back(std::exchange(name, {}));
        }
        names.push_back(name);
    }
    return names;
}

bool IsThere(const std::string& name) {
    for (const std::string_view line : kPortThere)
        if (line.substr(2) == name) return true;
    return false;
}

// Whether a class, or a base of it, has the member.
bool HasMember(const std::string& className, const std::string& member) {
    if (IsThere(className + "::" + member)) return true;
    for (const std::string_view line : kPortThere) {
        if (!line.starts_with("c " + className + " ")) continue;
        const Lines bases = NamesOf({std::string(line.substr(3 + className.size())) + " | "});
        for (const std::string& base : bases)
            if (HasMember(base, member)) return true;
    }
    return false;
}

TEST(PortTables, DifferencesAreInTheHeaders) {
    for (const std::string& name : NamesOf(kPortDifferences))
        EXPECT_TRUE(IsThere(name)) << name << " is in differences.txt and in no header";
}

TEST(PortTables, WhatIsMissingIsNotInTheHeaders) {
    const Lines names = NamesOf(kPortMissing);
    EXPECT_GT(names.size(), 400u);
    for (const std::string& name : names) {
        const std::size_t colons = name.find("::");
        const std::string plain =
            name[0] == '<' ? name.substr(1, name.size() - 2) : name.substr(0, name.find(':'));
        const bool isThere = colons == std::string::npos
                                 ? IsThere(plain)
                                 : HasMember(plain, name.substr(colons + 2));
        EXPECT_FALSE(isThere) << name << " is in missing.txt and in a header";
    }
}

} // namespace
} // namespace vm::tool
