#include "dialogs/FileChooser.h"

#include <algorithm>
#include <cstring>
#include <filesystem>

#include <QtCore/QFile>

#include <vmcore/app/messages.h>
#include <vmcore/files/paths.h>

#include "core/macroman.h"
#include "dialogs/chosenFiles.h"
#include "dialogs/shownPath.h"
#include "dialogs/toolkitDialog.h"
#include "platform/eventboundary.h"
#include "platform/messagebox.h"
#include "platform/runloop.h"

namespace fs = std::filesystem;

namespace vm {
namespace {

bool Exists(const std::string& path) {
    std::error_code ignored;
    return fs::exists(path, ignored);
}
bool IsFolder(const std::string& path) {
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

std::string Translated(const char* name) {
    char path[MAX_PATH] = "";
    if (!name || std::strlen(name) >= sizeof path) return {};
    std::strcpy(path, name);
    Win2PosixPath(path, false);
    return path;
}

std::string StartFolder(const OPENFILENAME& record) {
    const std::string suggested = Translated(record.lpstrFile);
    const std::string folder(FolderOf(suggested));
    // After a choice of several files the record begins with their folder.
    for (const std::string& start :
         {folder.empty() ? folder : suggested, folder, Translated(record.lpstrInitialDir),
          std::string(CurrentDirectory)})
        if (!start.empty() && IsFolder(start)) return start;
    std::error_code ignored;
    return fs::current_path(ignored).string();
}

} // namespace

FileChooser::FileChooser(QWidget* parent, const OPENFILENAME& record, bool isOpening)
    : QFileDialog(parent), m_record(record), m_isOpening(isOpening),
      m_filters(ParseFilter(record.lpstrFilter)) {
    setAcceptMode(isOpening ? AcceptOpen : AcceptSave);
    setOption(DontConfirmOverwrite); // asked here, for the name that comes back
    // Whether a file must exist is asked here, too: its extension may be missing.
    const bool many = isOpening && record.Flags & OFN_ALLOWMULTISELECT;
    setFileMode(many ? ExistingFiles : AnyFile);
    if (record.lpstrTitle) setWindowTitle(FromMacRoman(record.lpstrTitle));
    SetFilters(record.nFilterIndex);
    Suggest();
}

void FileChooser::SetFilters(DWORD index) {
    if (m_filters.empty()) return;
    QStringList names;
    for (const FileFilter& filter : m_filters) names += ToolkitFilter(filter);
    setNameFilters(names);
    const DWORD chosen = std::clamp<DWORD>(index, 1, static_cast<DWORD>(names.size()));
    selectNameFilter(names[static_cast<qsizetype>(chosen) - 1]);
}

void FileChooser::Suggest() {
    const std::string folder = StartFolder(m_record);
    setDirectory(QFile::decodeName(folder.c_str()));
    const std::string suggested = Translated(m_record.lpstrFile);
    const std::string name(NameOf(suggested));
    if (!name.empty() && !IsFolder(suggested)) selectFile(QFile::decodeName(name.c_str()));
}

DWORD FileChooser::FilterIndex() const {
    const QString selected = selectedNameFilter();
    for (std::size_t index = 0; index < m_filters.size(); ++index)
        if (ToolkitFilter(m_filters[index]) == selected) return static_cast<DWORD>(index + 1);
    return 0;
}

// The toolkit's own tests, which know nothing of extensions, are left out. The desktop's own dialog is
// closed already when its user has chosen.
void FileChooser::accept() {
    if (Navigates()) return QFileDialog::accept();
    bool taken = false;
    const QPointer<QObject> alive = this;
    AtEventBoundary([&] { taken = Takes(); });
    if (!alive) return;
    if (taken) return QDialog::accept();
    if (!testAttribute(Qt::WA_DontShowOnScreen) || result() == Accepted || LoopsAreEnding()) return;
    hide();
    show();
}

bool FileChooser::Navigates() const {
    const QStringList files = selectedFiles();
    return files.empty() || std::any_of(files.begin(), files.end(), [](const QString& file) {
               const std::optional<std::string> path = PathShownAs(file);
               return path && IsFolder(*path);
           });
}

// What is typed without an extension gets one, but for a file that has none.
std::string FileChooser::Completed(const std::string& path) const {
    if (!m_record.lpstrDefExt || (m_isOpening && Exists(path))) return path;
    const DWORD filter = FilterIndex();
    std::string extension = filter ? ExtensionOf(m_filters[filter - 1]) : std::string();
    if (extension.empty()) extension = m_record.lpstrDefExt;
    return WithExtension(path, extension.starts_with('.') ? extension.substr(1) : extension);
}

bool FileChooser::Takes() {
    m_chosen.clear();
    for (const QString& file : selectedFiles()) {
        const std::optional<std::string> shown = PathShownAs(file);
        if (!shown) return Refuse(file.toStdString(), "Several files are shown under this name.");
        const std::string path = m_isOpening ? Completed(*shown) : SavedAs(Completed(*shown));
        if (!Takes(path)) return false;
        m_chosen.push_back(path);
    }
    return true;
}

bool FileChooser::Takes(const std::string& path) {
    if (!IsUsablePath(path))
        return Refuse(path, path.size() >= MAX_PATH ? "The path of this file is too long."
                                                    : "Files with such a name cannot be used.");
    const bool mustExist = m_isOpening && m_record.Flags & OFN_FILEMUSTEXIST;
    if ((mustExist || m_record.Flags & OFN_PATHMUSTEXIST) && !IsFolder(std::string(FolderOf(path))))
        return Refuse(path, "There is no such folder.");
    if (mustExist && !Exists(path)) return Refuse(path, "There is no such file.");
    if (m_isOpening || !(m_record.Flags & OFN_OVERWRITEPROMPT) || !Exists(path)) return true;
    const std::string question =
        std::string(NameOf(path)) + " already exists.\nDo you want to replace it?";
    return ShowMessageBox(this, question.c_str(), windowTitle().toUtf8().constData(),
                          MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2) == IDYES;
}

bool FileChooser::Refuse(const std::string& path, const char* why) {
    const std::string text = path + "\n" + why;
    ShowMessageBox(this, text.c_str(), windowTitle().toUtf8().constData(), MB_OK | MB_ICONWARNING);
    return false;
}

namespace {

// False when the buffer cannot hold it. The zero after the last name is for those who walk a list: in
// a buffer for one path of the greatest length there is no place for it.
bool Deliver(OPENFILENAME& record, const std::string& list) {
    const bool mayBeList = record.Flags & OFN_ALLOWMULTISELECT;
    const std::size_t least = mayBeList ? list.size() : list.size() - 1;
    if (least > record.nMaxFile) {
        const WORD needed = static_cast<WORD>(std::min<std::size_t>(least, 0xFFFF));
        if (record.nMaxFile >= sizeof needed) std::memcpy(record.lpstrFile, &needed, sizeof needed);
        SetDialogError(FNERR_BUFFERTOOSMALL);
        return false;
    }
    std::memcpy(record.lpstrFile, list.data(), std::min<std::size_t>(list.size(), record.nMaxFile));
    return true;
}

void Describe(OPENFILENAME& record, const std::vector<std::string>& paths) {
    const std::string& path = paths.front();
    const std::string_view name = NameOf(path);
    const std::size_t dot = name.find_last_of('.');
    const bool hasExtension = dot != std::string_view::npos && dot + 1 < name.size();
    const std::size_t offset =
        paths.size() > 1 ? std::strlen(record.lpstrFile) + 1 : path.size() - name.size();
    record.nFileOffset = static_cast<WORD>(offset);
    record.nFileExtension = static_cast<WORD>(hasExtension ? offset + dot + 1 : 0);
    record.Flags &= ~DWORD{OFN_EXTENSIONDIFFERENT};
    if (record.lpstrDefExt && hasExtension && name.substr(dot + 1) != record.lpstrDefExt)
        record.Flags |= OFN_EXTENSIONDIFFERENT;
    if (record.lpstrFileTitle && record.nMaxFileTitle > 0) {
        const std::size_t length = std::min<std::size_t>(name.size(), record.nMaxFileTitle - 1);
        std::memcpy(record.lpstrFileTitle, name.data(), length);
        record.lpstrFileTitle[length] = '\0';
    }
}

} // namespace

bool RunFileDialog(OPENFILENAME* record, bool isOpening) {
    if (!CanShowDialog(isOpening ? "GetOpenFileName" : "GetSaveFileName")) return false;
    if (!record || !record->lpstrFile || record->nMaxFile == 0) {
        SetDialogError(CDERR_INITIALIZATION);
        return false;
    }
    const QPointer<FileChooser> chooser =
        new FileChooser(DialogParent(record->hwndOwner), *record, isOpening);
    const bool accepted = RunToolkitDialog(chooser.data());
    const std::vector<std::string> paths = chooser ? chooser->Chosen() : std::vector<std::string>();
    if (accepted) record->nFilterIndex = chooser->FilterIndex();
    delete chooser.data();
    if (!accepted || paths.empty() || !Deliver(*record, SelectionList(paths))) return false;
    Describe(*record, paths);
    if (!(record->Flags & OFN_NOCHANGEDIR))
        SetCurrentDirectory(std::string(FolderOf(paths.front())).c_str());
    return true;
}

} // namespace vm

BOOL GetOpenFileName(OPENFILENAME* record) {
    return vm::RunFileDialog(record, true);
}

BOOL GetSaveFileName(OPENFILENAME* record) {
    return vm::RunFileDialog(record, false);
}
