#include <vmcore/wnd/clipboard.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include <vmcore/app/messages.h>
#include <vmcore/gdi/CBitmap.h>
#include <vmcore/wnd/CWnd.h>

#include "core/log.h"
#include "files/SafeFile.h"
#include "files/posixPath.h"
#include "platform/GraphicsContext.h"
#include "platform/Image.h"
#include "platform/pdfPage.h"

namespace {

// The window's drawing context for one paint; the window may go during it.
class PaintsInto {
public:
    PaintsInto(CWnd* wnd, HDC context)
        : m_wnd(wnd), m_before(std::exchange(wnd->paintContext, context)) {}
    ~PaintsInto() {
        if (CWndListVerify(m_wnd)) m_wnd->paintContext = m_before;
    }
    PaintsInto(const PaintsInto&) = delete;
    PaintsInto& operator=(const PaintsInto&) = delete;

private:
    CWnd* m_wnd;
    HDC m_before;
};

// The old contents go first: a page that cannot be made leaves nothing that could be taken for it.
void CopyPage(QSize size, const std::function<void(vm::GraphicsContext&)>& draw) {
    NSPasteboard* const clipboard = GetPasteboard();
    if (!clipboard) return;
    clipboard->clear();
    const QByteArray page = vm::MakePdfPage(size, draw);
    auto* data = new QMimeData; // the clipboard's from now on
    data->setData("application/pdf", page);
    clipboard->setMimeData(data);
}

bool WriteWhole(const std::string& path, const QByteArray& bytes) {
    vm::SafeFile file(path);
    if (!file.IsOpen()) return false;
    file.Write({bytes.data(), static_cast<std::size_t>(bytes.size())});
    return file.Commit();
}

QSize PageSize(const CWnd& wnd, int width, int height) {
    if (width != 0 && height != 0) return {width, height};
    RECT client;
    wnd.GetClientRect(&client);
    return {client.right, client.bottom};
}

std::function<void(vm::GraphicsContext&)> PaintOf(CWnd* wnd) {
    return [wnd](vm::GraphicsContext& page) {
        const PaintsInto paint(wnd, &page);
        wnd->WindowProc(WM_PAINT, 0, 0);
    };
}

} // namespace

NSPasteboard* GetPasteboard() {
    static NSPasteboard* s_clipboard = nullptr;
    if (!s_clipboard && qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        s_clipboard = QGuiApplication::clipboard();
    if (!s_clipboard) vm::PrintError("PasteboardCreate failed - I wonder why?!\n");
    return s_clipboard;
}

void AfxCopyWindowToClipboard(CWnd* wnd, int width, int height) {
    if (!wnd) return;
    const QSize size = PageSize(*wnd, width, height);
    if (!size.isEmpty()) CopyPage(size, PaintOf(wnd));
}

BOOL AfxSaveWindowAsPDF(CWnd* wnd, int width, int height, LPCSTR file) {
    const std::optional<std::string> path = vm::PathForCreateFile(file);
    const QSize size = wnd ? PageSize(*wnd, width, height) : QSize();
    if (!path || size.isEmpty()) return FALSE;
    if (WriteWhole(*path, vm::MakePdfPage(size, PaintOf(wnd)))) return TRUE;
    vm::Log(vm::LogModule::Wnd, "Couldnt write '%s'", path->c_str());
    return FALSE;
}

void AfxCopyBitmapToClipboard(CBitmap* bitmap) {
    tagBITMAP record{};
    if (!bitmap || !bitmap->GetBitmap(&record) || !record.bmBits) return;
    const QImage& pixels = record.bmBits->Pixels();
    CopyPage(pixels.size(), [&pixels](vm::GraphicsContext& page) {
        page.DrawImage(pixels, QRectF(pixels.rect()), QRectF(pixels.rect()));
    });
}
