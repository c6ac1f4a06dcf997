// One QPainter that several graphics contexts may draw through in turn, and what is set on it at
// the moment: a painter's state is changed at the first draw that needs it, and only if it differs.
// Everything here is in the painter's own coordinates; the painter is never saved and restored.
#pragma once

#include <cstdint>
#include <memory>

#include <QtCore/QRect>
#include <QtGui/QGlyphRun>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QRegion>
#include <QtGui/QTransform>

namespace vm {

/// A clip made of shapes: each holds within the one before it.
struct ClipShape {
    QPainterPath path;
    std::shared_ptr<const ClipShape> outer;
};

/// Where drawing is allowed: within `rect`, within `region` unless that is empty, within all
/// shapes.
struct Clip {
    QRect rect;
    QRegion region;
    std::shared_ptr<const ClipShape> shapes;
    std::uint64_t serial = 0; ///< names these contents; 0 stands for no clip at all

    bool IsRectangle() const { return region.isEmpty() && !shapes; }
};

/// What every draw needs to know.
struct PaintState {
    const Clip& clip;
    double alpha;
};

class PaintTarget {
public:
    /// Draws through `painter`, which must have no clip and no transformation of its own.
    explicit PaintTarget(QPainter* painter);
    /// Opens a painter of its own on `device` for the first draw.
    explicit PaintTarget(QPaintDevice* device);
    ~PaintTarget();
    PaintTarget(const PaintTarget&) = delete;
    PaintTarget& operator=(const PaintTarget&) = delete;

    /// Lets go of the painter, before it or its device goes away. Contexts that still refer to the
    /// target draw nothing more: each draw throws PlatformError "DeadContext".
    void End();
    bool IsAlive() const { return m_painter || m_device; }
    /// Whether there has been a draw that may have changed the device.
    bool HasPainter() const { return m_painter != nullptr; }
    /// Whether the device is a page of a document, whose text stays text.
    bool IsPage() const;

    /// Whole pixels, which must lie within the clip's rectangle.
    void FillPixels(const QRect& rect, QRgb color, const PaintState& state);
    /// The same, but the pixels become transparent.
    void ClearPixels(const QRect& rect, const PaintState& state);
    void FillPath(const QPainterPath& path, QRgb color, const PaintState& state);
    /// `width` counts before `transform`, which maps the path.
    void StrokePath(const QPainterPath& path, QRgb color, double width, const QTransform& transform,
                    const PaintState& state);
    void DrawGlyphs(const QGlyphRun& glyphs, const QRectF& bounds, QRgb color,
                    const QTransform& transform, const PaintState& state);
    /// The part `source` of `image`, which may be what is painted on, fills `target`.
    void DrawImage(const QImage& image, const QRectF& target, const QRectF& source,
                   const PaintState& state);

private:
    QPainter& Painter();
    bool CopyDirectly(const QImage& image, const QRectF& target, const QRectF& source,
                      const PaintState& state) const;
    bool FillDirectly(const QRect& rect, QRgb color, const PaintState& state) const;
    void Prepare(const QRectF& bounds, const QTransform& transform, const PaintState& state);
    void UseClip(const QRectF& bounds, const Clip& clip);
    void SetPainterClip(const Clip& clip);
    void UseTransform(const QTransform& transform);
    void UsePen(QRgb color, double width);
    void UseSmoothing(bool wanted);

    QPaintDevice* m_device = nullptr; ///< for a painter of its own
    std::unique_ptr<QPainter> m_own;
    QPainter* m_painter = nullptr;
    const QImage* m_raster = nullptr; ///< the painter's device, when its pixels can be written
    std::uint64_t m_clipSerial = 0;
    QRect m_clipRect; ///< the whole of the painter's clip; empty when that is no rectangle
    bool m_transformed = false;
    bool m_smooth = false;
    double m_alpha = 1;
    QRgb m_penColor = 0;
    double m_penWidth = -1;
};

} // namespace vm
