#include <vmcore/dialogs/folderBrowser.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtWidgets/QFileDialog>

#include <vmcore/files/paths.h>

#include "core/macroman.h"
#include "dialogs/chosenFiles.h"
#include "dialogs/modalRun.h"
#include "dialogs/shownPath.h"
#include "dialogs/toolkitDialog.h"
#include "platform/eventboundary.h"
#include "platform/messagebox.h"
#include "platform/runloop.h"
#include "wnd/MessageTaker.h"

struct ITEMIDLIST {
    char path[MAX_PATH];
};

namespace {

// Also of one that several folders are shown as.
std::string BytesOf(const QString& path) {
    return vm::PathShownAs(path).value_or(QFile::encodeName(path).toStdString());
}

LPITEMIDLIST ListOf(const std::string& path) {
    auto* const list = static_cast<LPITEMIDLIST>(std::calloc(1, sizeof(ITEMIDLIST)));
    if (list)
        std::memcpy(list->path, path.data(), std::min<std::size_t>(path.size(), MAX_PATH - 1));
    return list;
}

class FolderChooser : public QFileDialog {
public:
    FolderChooser(QWidget* parent, const BROWSEINFO& info) : QFileDialog(parent), m_info(info) {
        setFileMode(Directory);
        setOption(ShowDirsOnly, !(info.ulFlags & BIF_BROWSEINCLUDEFILES));
        setAcceptMode(AcceptOpen);
        if (info.lpszTitle) setWindowTitle(vm::FromMacRoman(info.lpszTitle));
        connect(this, &QFileDialog::directoryEntered, this, [this](const QString& path) {
            vm::AtEventBoundary([&] { TellOf(BytesOf(path)); });
        });
    }

    std::string Chosen() const {
        const QStringList files = selectedFiles();
        return files.empty() ? std::string() : BytesOf(files.front());
    }

    void Tell(UINT message, LPARAM lParam) {
        if (m_info.lpfn) m_info.lpfn(this, message, lParam, m_info.lParam);
    }

    LRESULT Take(UINT message, WPARAM wParam, LPARAM lParam) {
        if (message != BFFM_SETSELECTION || !lParam) return 0;
        const char* const name = wParam ? reinterpret_cast<const char*>(lParam)
                                        : reinterpret_cast<LPCITEMIDLIST>(lParam)->path;
        char path[MAX_PATH] = "";
        if (std::strlen(name) >= sizeof path) return 0;
        std::strcpy(path, name);
        Win2PosixPath(path, true);
        const QString folder = QFile::decodeName(path);
        if (QFileInfo(folder).isDir()) setDirectory(folder);
        return 0;
    }

protected:
    void accept() override {
        const QString shown = selectedFiles().value(0);
        const std::optional<std::string> path = vm::PathShownAs(shown);
        if (path && vm::IsUsablePath(*path)) return AcceptFolder(shown, *path);
        const QPointer<QObject> alive = this;
        Refuse(shown.toStdString() + (path ? "\nThis folder cannot be used."
                                           : "\nSeveral folders are shown under this name."));
        if (!alive || !testAttribute(Qt::WA_DontShowOnScreen) || vm::LoopsAreEnding()) return;
        hide(); // the desktop's own dialog is closed already
        show();
    }

private:
    // The toolkit takes a folder whose name is in no encoding for a missing one.
    void AcceptFolder(const QString& shown, const std::string& path) {
        std::error_code ignored;
        const bool isHidden =
            !QFileInfo::exists(shown) && std::filesystem::is_directory(path, ignored);
        isHidden ? QDialog::accept() : QFileDialog::accept();
    }

    void Refuse(const std::string& text) {
        vm::ShowMessageBox(this, text.c_str(), windowTitle().toUtf8().constData(),
                           MB_OK | MB_ICONWARNING);
    }

    void TellOf(const std::string& path) {
        const LPITEMIDLIST list = ListOf(path);
        Tell(BFFM_SELCHANGED, reinterpret_cast<LPARAM>(list));
        std::free(list);
    }

    const BROWSEINFO& m_info;
};

class Allocator final : public IMalloc {
public:
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 1; }
    void* Alloc(std::size_t size) override { return std::malloc(size); }
    void Free(void* memory) override { std::free(memory); }
};

void CopyName(char* out, const std::string& path) {
    const std::string_view name = vm::NameOf(path);
    out[name.copy(out, MAX_PATH - 1)] = '\0';
}

} // namespace

LPITEMIDLIST SHBrowseForFolder(BROWSEINFO* info) {
    if (!vm::CanShowDialog("SHBrowseForFolder") || !info) return nullptr;
    const QPointer<FolderChooser> chooser =
        new FolderChooser(vm::DialogParent(info->hwndOwner), *info);
    if (*CurrentDirectory) chooser->setDirectory(QFile::decodeName(CurrentDirectory));
    bool accepted = false;
    {
        const vm::MessageTaker taker(chooser, [&](UINT message, WPARAM wParam, LPARAM lParam) {
            return chooser ? chooser->Take(message, wParam, lParam) : 0;
        });
        vm::Shielded([&] { chooser->Tell(BFFM_INITIALIZED, 0); });
        accepted = chooser && vm::RunToolkitDialog(chooser);
    }
    const std::string path = accepted ? chooser->Chosen() : std::string();
    delete chooser.data();
    if (!accepted) return nullptr;
    if (info->pszDisplayName) CopyName(info->pszDisplayName, path);
    return ListOf(path);
}

BOOL SHGetPathFromIDList(LPCITEMIDLIST list, char* path) {
    if (!path) return FALSE;
    *path = '\0';
    if (!list) return FALSE;
    std::memcpy(path, list->path, MAX_PATH);
    return TRUE;
}

void ILFree(LPITEMIDLIST list) {
    std::free(list);
}

void SHFree(void* memory) {
    std::free(memory);
}

void CoTaskMemFree(void* memory) {
    std::free(memory);
}

HRESULT SHGetMalloc(IMalloc** allocator) {
    static Allocator s_allocator;
    if (!allocator) return E_FAIL;
    *allocator = &s_allocator;
    return S_OK;
}
