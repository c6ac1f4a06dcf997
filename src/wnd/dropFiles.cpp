#include "wnd/dropFiles.h"

#include <cstring>

#include <QtCore/QFile>
#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QCursor>
#include <QtGui/QDropEvent>

#include <vmcore/wnd/CWnd.h>

#include "core/ascii.h"
#include "platform/messagebox.h"
#include "platform/pathList.h"

namespace vm {
namespace {

PathList FilesOf(const QMimeData& data) {
    PathList files;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile())
            files.paths.push_back(QFile::encodeName(url.toLocalFile()).toStdString());
    return files;
}

} // namespace

bool AcceptFileDrag(QDropEvent* drag) {
    if (FilesOf(*drag->mimeData()).paths.empty()) return false;
    drag->acceptProposedAction();
    return true;
}

void SendDroppedFiles(CWnd& wnd, QDropEvent* drop) {
    PathList files = FilesOf(*drop->mimeData());
    drop->acceptProposedAction();
    wnd.SendMessage(WM_DROPFILES, reinterpret_cast<WPARAM>(&files), 0);
}

} // namespace vm

UINT DragQueryFile(NSArray* drop, UINT index, char* buffer, UINT size) {
    if (!drop) return 0;
    if (index == 0xFFFFFFFF) return static_cast<UINT>(drop->paths.size());
    if (index >= drop->paths.size()) return 0;
    const std::string& path = drop->paths[index];
    if (!vm::IsAscii(path)) {
        if (buffer && size) buffer[0] = '\0';
        vm::ShowMessageBox(nullptr,
                           "Dravik can only read files with ASCII names.\nPlease edit the name",
                           "Dravik", 1);
        return 2; // hosts test for a length above 0 and find an empty name
    }
    if (buffer && size) {
        std::strncpy(buffer, path.c_str(), size);
        buffer[size - 1] = '\0';
    }
    return static_cast<UINT>(path.size());
}

BOOL DragQueryPoint(NSArray*, POINT* point) {
    const QPoint mouse = QCursor::pos();
    if (point) *point = {mouse.x(), mouse.y()};
    return TRUE;
}

void DragFinish(NSArray*) {}
