// From the words of a script to its resources. Every statement is in what comes out or in the report.
#pragma once

#include "rc/SourceFiles.h"
#include "rc/TokenReader.h"
#include "rc/report.h"
#include "rc/script.h"
#include "rc/token.h"

namespace vm::rc {

/// Throws SyntaxError. Pictures are looked for in `files`; the path of one that is not there stays as
/// the script has it.
Script ParseScript(const TokenList& tokens, const SourceFiles& files, Report& report);

/// What the parsers of the resources share, each of which has a source of its own.
class Parser {
public:
    Parser(const TokenList& tokens, const SourceFiles& files, Report& report)
        : m_reader(tokens, report), m_files(files), m_report(report) {}
    Script Run();

private:
    void Statement();
    void Resource(Head head);
    bool ByKeyword(const Head& head);
    void SkipOptions(); ///< DISCARDABLE and the like
    bool TakeCommonStatement(Head& head);
    void CommonStatements(Head& head);
    void LeftOut(const Place& place, const std::string& what, const std::string& why);

    void ParseDialog(Head head, bool extended);
    bool DialogStatement(Dialog& dialog);
    void DialogFont(Font& font);
    Rect TakeRect();
    Control ParseControl();
    void ParseKindOfControl(Control& control);
    void ParseGenericControl(Control& control);
    void TakeTextOrImage(Control& control);
    void PictureOfText(Control& control);
    void ControlClass(Control& control);
    void ControlTail(Control& control);

    void ParseMenu(Head head, bool extended);
    std::vector<MenuItem> MenuItems(bool extended, int depth);
    MenuItem MenuEntryAt(bool extended, int depth);
    void PlainItem(MenuItem& item);
    void MenuOptions(MenuItem& item);
    bool TakeMenuOption(MenuItem& item);
    void ExtendedItem(MenuItem& item);
    void MenuType(MenuItem& item, std::uint32_t type);
    void MenuState(MenuItem& item, std::uint32_t state);

    void ParseAccelerators(Head head);
    Accelerator AcceleratorAt();
    void KeyOfText(Accelerator& key, const std::string& text);
    void KeyOptions(Accelerator& key, bool isText);
    void ParseStrings(Head head);

    void ParseVersion(Head head);
    bool FixedVersionStatement(VersionInfo& info);
    void VersionBlock(VersionInfo& info, const std::string& path, int depth);
    void VersionEntry(VersionInfo& info, const std::string& path);

    void ParsePicture(Head head, PictureKind kind);
    void ParseOther(Head head);
    void ParseToolbar(Head head);
    void ParseDialogInit(Head head);
    bool TakeInitBytes(std::string& bytes);
    std::string TakePath();
    std::optional<std::string> FileNamed(const std::string& name, const Token& at);

    TokenReader m_reader;
    const SourceFiles& m_files;
    Report& m_report;
    Script m_script;
    Language m_language;
    bool m_saidOptions = false;
};

} // namespace vm::rc
