// What the sources of CDC share: the guard with the operation's name, and conversions.
#pragma once

#include <cstdint>
#include <utility>

#include <QtCore/QRectF>

#include <vmcore/gdi/CDC.h>

#include "core/guard.h"
#include "platform/GraphicsContext.h"

namespace vm {

/// Runs `body` with the context behind `handle`; `operation` is for example "CDC::LineTo()".
template <class T, class Body>
T WithContext(HDC handle, const char* operation, T neutral, Body&& body) {
    return Guarded(LogModule::Gdi, operation, neutral,
                   [&]() -> T { return std::forward<Body>(body)(ContextOf(handle)); });
}

template <class Body>
void WithContext(HDC handle, const char* operation, Body&& body) {
    Guarded(LogModule::Gdi, operation, [&] { std::forward<Body>(body)(ContextOf(handle)); });
}

/// Handle values 0 and 1 are no contexts.
inline bool IsContext(HDC handle) {
    return reinterpret_cast<std::uintptr_t>(handle) > 1;
}

/// Draws what there is of `asked` on the image; FALSE without any.
BOOL DrawPart(GraphicsContext& context, const QImage& image, const BlitRects& asked);

/// The face of a context that none has been selected into; null without an application object.
inline const FontFace* FirstFace() {
    return FontFace::Find("Arial", 8);
}

inline QRectF ToRectF(const tagRECT& rect) {
    return {QPointF(rect.left, rect.top), QPointF(rect.right, rect.bottom)};
}

} // namespace vm
