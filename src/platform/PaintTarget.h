// One QPainter that several graphics contexts may draw through in turn, and what is set on it at
// the moment: a painter's state is changed at the first draw that needs it, and only if it differs.
// Everything here is in the device's own pixels, whatever its ratio and wherever on it the painter's
// origin lies; the painter is never saved and restored.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include <QtCore/QRect>
#include <QtGui/QBrush>
#include <QtGui/QGlyphRun>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QPen>
#include <QtGui/QRegion>
#include <QtGui/QTransform>

#include "platform/CoverageFill.h"
#include "platform/FontFace.h"

namespace vm {

/// A clip made of shapes: each holds within the one before it.
struct ClipShape {
    QPainterPath path;
    QRegion region; ///< instead of the path, unless it is empty
    std::shared_ptr<const ClipShape> outer;

    QRectF Bounds() const { return region.isEmpty() ? path.boundingRect() : region.boundingRect(); }
};

/// Where drawing is allowed: within `rect` and within all shapes.
struct Clip {
    QRect rect;
    std::shared_ptr<const ClipShape> shapes;
    std::uint64_t serial = 0; ///< names these contents; 0 stands for no clip at all

    bool IsRectangle() const { return !shapes; }
};

/// What every draw needs to know.
struct PaintState {
    const Clip& clip;
    double alpha;
};

class PaintTarget {
public:
    /// Draws through `painter`, which must have no clip and no transformation of its own, and is
    /// left with one.
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

    /// From the painter's coordinates, as they were given, to the device's pixels.
    const QTransform& ToPixels() const { return m_toPixels; }

    /// Whole pixels, which must lie within the clip's rectangle.
    void FillPixels(const QRect& rect, QRgb color, const PaintState& state);
    /// The same, but the pixels become transparent.
    void ClearPixels(const QRect& rect, const PaintState& state);
    void FillPath(const QPainterPath& path, QRgb color, const PaintState& state);
    /// A closed outline; where it runs twice, it counts by its direction.
    void FillPolygon(std::span<const QPointF> points, QRgb color, const PaintState& state);
    /// `width` counts before `transform`, which maps the path.
    void StrokePath(const QPainterPath& path, QRgb color, double width, const QTransform& transform,
                    const PaintState& state);
    void DrawGlyphs(const QGlyphRun& glyphs, const QRectF& bounds, QRgb color,
                    const QTransform& transform, const PaintState& state);
    /// The part `source` of `image`, which may be what is painted on, fills `target`.
    void DrawImage(const QImage& image, const QRectF& target, const QRectF& source,
                   const PaintState& state);

    /// Text with its baseline from `origin` on; false, and nothing is drawn, where only DrawGlyphs
    /// can.
    bool DrawTextDirectly(const FontFace& font, std::string_view text, QPointF origin, QRgb color,
                          const PaintState& state);

private:
    // Brushes and pens that were used lately, because making one costs an allocation. The one that
    // came first goes first.
    struct Ink {
        QRgb color;
        double width; ///< of a pen; 0 for text
        bool operator==(const Ink&) const = default;
    };
    template <class Tool>
    struct ToolBox {
        std::array<Ink, 32> inks{};
        std::array<Tool, 32> tools;
        std::size_t count = 0; ///< made so far
    };
    template <class Tool, class Make>
    static const Tool& Kept(ToolBox<Tool>& box, const Ink& ink, Make&& make);

    void Begin();
    QPainter& Painter();
    bool BlitDirectly(const QImage& image, const QRectF& target, const QRectF& source,
                      const PaintState& state) const;
    bool FillDirectly(const QRect& rect, QRgb color, const PaintState& state) const;
    bool FillDirectly(std::span<const QPointF> polygon, const QRectF& bounds, QRgb color,
                      const PaintState& state);
    PixelRows Pixels() const;
    void Prepare(const QRectF& bounds, const QTransform& transform, const PaintState& state);
    void UseClip(const QRectF& bounds, const Clip& clip);
    void SetPainterClip(const Clip& clip);
    void UseTransform(const QTransform& transform);
    void UseBrush(QRgb color);
    void UsePen(const Ink& ink);
    void UseNoPen();
    const QBrush& BrushOf(QRgb color);
    const QPen& PenOf(const Ink& ink);
    void UseSmoothing(bool wanted);

    QPaintDevice* m_device = nullptr; ///< for a painter of its own
    std::unique_ptr<QPainter> m_own;
    QPainter* m_painter = nullptr;
    const QImage* m_raster = nullptr; ///< the painter's device, when its pixels can be written
    QTransform m_toPixels;
    QTransform m_fromPixels; ///< set on the painter while nothing else is
    std::uint64_t m_clipSerial = 0;
    QRect m_clipRect; ///< the whole of the painter's clip; empty when that is no rectangle
    bool m_transformed = false;
    bool m_smooth = false;
    double m_alpha = 1;
    bool m_hasPen = true; ///< what a painter begins with
    Ink m_pen{};
    bool m_hasBrush = false;
    QRgb m_brushColor = 0;
    ToolBox<QBrush> m_brushes;
    ToolBox<QPen> m_pens;
    CoverageFill m_coverage;
};

} // namespace vm
