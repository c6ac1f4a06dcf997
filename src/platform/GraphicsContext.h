// What a CDC draws into: a y-down raster context with a state stack and a text position, over
// a PaintTarget. Each drawing call throws PlatformError "DeadContext" once the
// target has ended. Main thread only.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtGui/QImage>

#include "platform/FontFace.h"
#include "platform/PaintTarget.h"
#include "platform/outlines.h"

namespace vm {

class Image;

enum class TextMode { Fill, Stroke, Invisible };

class GraphicsContext {
public:
    /// For a widget's paint, or for drawing outside of one: `origin` is where the view's (0, 0)
    /// lies on the target, `clip` what may be painted, in the coordinates of the target's painter.
    /// Counts one reference.
    static GraphicsContext* ForView(std::shared_ptr<PaintTarget> target, QPoint origin,
                                    const QRegion& clip);
    /// For an offscreen image, transparent at first. Counts one reference.
    static GraphicsContext* ForImage(int width, int height);
    /// For the pixels of a bitmap's image, until that lets go of them. Counts one reference.
    static GraphicsContext* ForBitmap(Image& owner, QImage& pixels);

    GraphicsContext(const GraphicsContext&) = delete;
    GraphicsContext& operator=(const GraphicsContext&) = delete;
    GraphicsContext* Retain();
    void Release(); ///< the last one frees the context
    int References() const { return m_references; }

    /// The pixels of an offscreen context as they are now; a null image of any other.
    QImage Snapshot() const;
    /// The image that the context draws into, if that is a bitmap's and still there.
    Image* Bitmap() const { return m_bitmap; }
    void LetGoOfBitmap();
    bool HasDrawn() const { return m_target->HasPainter(); }

    // The state stack: colours, width, alpha, font, text mode, transformation and clip. The
    // text position is not part of it.
    void Save();
    void Restore(); ///< nothing on an empty stack

    void SetFillColor(QRgb color) { m_state.fill = color; }
    void SetStrokeColor(QRgb color) { m_state.stroke = color; }
    void SetLineWidth(double width) { m_state.lineWidth = width; }
    void SetAlpha(double alpha);
    QRgb FillColor() const { return m_state.fill; }
    QRgb StrokeColor() const { return m_state.stroke; }
    double LineWidth() const { return m_state.lineWidth; }
    void Translate(double dx, double dy);
    void Scale(double sx, double sy);

    /// The smallest rectangle, in user coordinates, that holds the clip.
    QRectF ClipBoundingBox() const;
    void ClipToRect(const QRectF& rect); ///< a negative width or height counts the other way
    void ClipToPath(const QPainterPath& path);

    // Shapes. A rectangle of negative width or height counts the other way.
    void FillRect(const QRectF& rect);
    void ClearRect(const QRectF& rect); ///< to transparent, whatever the alpha
    void StrokeRect(const QRectF& rect, double width);
    void StrokeLine(QPointF from, QPointF to);
    void FillPath(const QPainterPath& path);
    void StrokePath(const QPainterPath& path);
    void FillEllipse(const QRectF& rect);
    void StrokeEllipse(const QRectF& rect);
    /// The part of a circle from one angle to another (radians, y-down), angles decreasing.
    void StrokeArc(QPointF center, double radius, double start, double end);
    /// Circular corners, `across` wide (two radii).
    void FillRoundRect(const QRectF& rect, double across);
    void StrokeRoundRect(const QRectF& rect, double across); ///< inside the rectangle

    /// The part `source` of `image` fills `rect`, upright, smoothed when that changes its size.
    void DrawImage(const QImage& image, const QRectF& rect, const QRectF& source);

    // Text: 8-bit, Roman encoding, upright. Showing moves the text position past the text.
    void SetFont(const FontFace* font) { m_state.font = font; }
    const FontFace* Font() const { return m_state.font; }
    void SetTextMode(TextMode mode) { m_state.textMode = mode; }
    void SetTextPosition(QPointF position) { m_textPosition = position; }
    QPointF TextPosition() const { return m_textPosition; }
    void ShowText(std::string_view text); ///< baseline at the text position; nothing without a font

private:
    struct State {
        QRgb fill = 0xFF000000;
        QRgb stroke = 0xFF000000;
        double lineWidth = 1;
        double alpha = 1;
        QTransform transform; ///< to the target's pixels
        bool moves = true;    ///< the transformation does nothing else
        const FontFace* font = nullptr;
        TextMode textMode = TextMode::Fill;
        Clip clip;
    };

    explicit GraphicsContext(std::shared_ptr<PaintTarget> target);
    ~GraphicsContext();

    PaintState Paint() const { return {m_state.clip, m_state.alpha}; }
    void SetTransform(const QTransform& transform);
    bool OnlyMoves() const { return m_state.moves; }
    double PixelsPerUnit() const;
    QRectF ToPixels(const QRectF& rect) const;
    QRectF Snapped(const QRectF& rect) const;
    bool WholePixels(const QRectF& rect, QRect& pixels) const;
    void FillRing(const QRectF& outer, const QRectF& inner);
    double StrokeWidth() const { return m_state.lineWidth > 1 ? m_state.lineWidth : 1; }
    template <class AddPoints>
    void FillOutline(QRgb color, AddPoints&& addPoints);
    void DrawGlyphRun(std::string_view text);
    void StrokeGlyphs(std::string_view text);

    int m_references = 1;
    std::unique_ptr<QImage> m_image; // before the target, which paints on it
    Image* m_bitmap = nullptr;
    std::shared_ptr<PaintTarget> m_target;
    State m_state;
    std::vector<State> m_saved;
    QPointF m_textPosition;
    Points m_points; ///< of the outline being filled; kept for its memory
};

/// Saves the state for the life of the object.
class SavedState {
public:
    explicit SavedState(GraphicsContext& context) : m_context(context) { m_context.Save(); }
    ~SavedState() { m_context.Restore(); }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;

private:
    GraphicsContext& m_context;
};

/// The context behind a handle. Throws PlatformError "NullContext" for null.
GraphicsContext& ContextOf(GraphicsContext* handle);

} // namespace vm
