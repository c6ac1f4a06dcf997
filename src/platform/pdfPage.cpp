#include "platform/pdfPage.h"

#include <memory>

#include <QtCore/QBuffer>
#include <QtGui/QPageSize>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>

#include "platform/GraphicsContext.h"

namespace vm {
namespace {

constexpr int kPointsPerInch = 72;

// The context of a page, which ends however its drawing ends.
class PageContext {
public:
    PageContext(QPainter& painter, QSize size)
        : m_target(std::make_shared<PaintTarget>(&painter)),
          m_context(GraphicsContext::ForView(m_target, {}, QRegion(QRect({}, size)))) {}
    ~PageContext() {
        m_target->End();
        m_context->Release();
    }
    PageContext(const PageContext&) = delete;
    PageContext& operator=(const PageContext&) = delete;
    GraphicsContext& Get() const { return *m_context; }

private:
    std::shared_ptr<PaintTarget> m_target;
    GraphicsContext* m_context;
};

} // namespace

QByteArray MakePdfPage(QSize size, const std::function<void(GraphicsContext&)>& draw) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(kPointsPerInch);
    writer.setPageSize(QPageSize(QSizeF(size), QPageSize::Point, {}, QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    QPainter painter(&writer);
    painter.setRenderHint(QPainter::LosslessImageRendering);
    draw(PageContext(painter, size).Get());
    painter.end();
    return buffer.data();
}

} // namespace vm
