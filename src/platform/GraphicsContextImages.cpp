// Images of the graphics context: drawing them, and drawing into the one that belongs to a bitmap.
#include "platform/GraphicsContext.h"

namespace vm {
namespace {

// Beyond this the toolkit's coordinates run over.
bool IsSafe(const QRectF& target) {
    constexpr double kFarthest = 32000;
    return target.left() >= -kFarthest && target.top() >= -kFarthest &&
           target.right() <= kFarthest && target.bottom() <= kFarthest;
}

bool Overlap(const QRectF& target, const QRect& clip) {
    return !clip.isEmpty() && target.left() < clip.left() + clip.width() &&
           target.right() > clip.left() && target.top() < clip.top() + clip.height() &&
           target.bottom() > clip.top();
}

// The part of `source` that comes to lie on `part` when all of it fills `whole`.
QRectF PartOf(const QRectF& source, const QRectF& whole, const QRectF& part) {
    const double sx = source.width() / whole.width();
    const double sy = source.height() / whole.height();
    return {source.x() + (part.x() - whole.x()) * sx, source.y() + (part.y() - whole.y()) * sy,
            part.width() * sx, part.height() * sy};
}

} // namespace

GraphicsContext* GraphicsContext::ForBitmap(Image& owner, QImage& pixels) {
    auto* context = ForView(std::make_shared<PaintTarget>(&pixels), {}, QRegion(pixels.rect()));
    context->m_bitmap = &owner;
    return context;
}

void GraphicsContext::LetGoOfBitmap() {
    m_target->End();
    m_bitmap = nullptr;
}

// Upright whatever the sign of the y scale: "move, flip, draw" and a plain draw are one copy.
void GraphicsContext::DrawImage(const QImage& image, const QRectF& rect, const QRectF& source) {
    const QTransform& transform = m_state.transform;
    const QRectF target =
        OnlyMoves() ? rect.translated(transform.dx(), transform.dy()) : transform.mapRect(rect);
    if (!Overlap(target, m_state.clip.rect) || source.isEmpty()) return;
    if (IsSafe(target)) return m_target->DrawImage(image, target, source, Paint());
    const QRectF visible = target & QRectF(m_state.clip.rect);
    m_target->DrawImage(image, visible, PartOf(source, target, visible), Paint());
}

} // namespace vm
