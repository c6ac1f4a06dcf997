#include "app/help.h"

#include <filesystem>

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>

#include <vmcore/wnd/CWnd.h>

#include "app/appState.h"
#include "core/log.h"
#include "platform/bundle.h"

namespace vm {
namespace {

HelpOpener s_opener; // main thread

bool OpenInBrowser(const std::string& address) {
    return QDesktopServices::openUrl(QUrl(QString::fromStdString(address)));
}

std::string FileAddress(const std::string& path, const std::string& anchor) {
    QUrl url = QUrl::fromLocalFile(QString::fromStdString(path));
    url.setFragment(QString::fromStdString(anchor));
    return url.toString(QUrl::FullyEncoded).toStdString();
}

} // namespace

std::string HelpAddress(const std::string& resources, const std::string& book,
                        const std::string& anchor) {
    std::error_code error;
    for (const char* page : {"/index.html", ".html"}) {
        const std::string path = resources + "/" + book + page;
        if (std::filesystem::is_regular_file(path, error)) return FileAddress(path, anchor);
    }
    return {};
}

bool OpenHelpAnchor(const std::string& anchor, const std::string& book) {
    const Bundle* bundle = App().DVBundle;
    const std::string address =
        bundle && !book.empty() ? HelpAddress(bundle->ResourcePath(), book, anchor) : "";
    if (address.empty()) {
        Log(LogModule::App, "help: no page for %s in the book \"%s\"", anchor.c_str(),
            book.c_str());
        return false;
    }
    return s_opener ? s_opener(address) : OpenInBrowser(address);
}

void OpenHelpOfBundle(int topic) {
    const Bundle* bundle = App().DVBundle;
    const std::string book =
        bundle ? bundle->InfoString("CFBundleHelpBookName").value_or("") : std::string();
    OpenHelpAnchor(Format("%s%d", "DV_", topic), book);
}

void SetHelpOpener(HelpOpener opener) {
    s_opener = opener;
}

} // namespace vm

int WinHelp(HWND, const char*, UINT command, DWORD_PTR data) {
    if (!QCoreApplication::instance()) return 0; // nothing that could show a page
    if (command != 0) return 1;
    vm::OpenHelpAnchor(vm::Format("%s%ld", "DV_", static_cast<long>(data)), "DravikXL Help");
    return 1;
}

// The window form hands `data` on in the file's place as well; the page depends on `data` alone.
int CWnd::WinHelp(DWORD_PTR data, UINT command) {
    ::WinHelp(view, reinterpret_cast<const char*>(data), command, data);
    return 0;
}
