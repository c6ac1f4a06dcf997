// What the sources of CDC share: the guard with the operation's name, and conversions.
#pragma once

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

inline QRectF ToRectF(const tagRECT& rect) {
    return {QPointF(rect.left, rect.top), QPointF(rect.right, rect.bottom)};
}

} // namespace vm
