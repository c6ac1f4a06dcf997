// What the contestants draw: always the same pictures, made from a fixed sequence of numbers.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Drawer.h"

namespace bench {

constexpr int kWidth = 1000;
constexpr int kHeight = 700;

using Scene = std::function<void(Drawer&)>;

/// One kind of primitive, drawn `count` times.
struct Primitive {
    std::string name;
    int count;
    Scene draw;
};
std::vector<Primitive> Primitives();

/// A window's whole paint: 1,000 lines, 1,000 frames, 1,000 fills, and 200 texts with Texts::With.
enum class Texts { With, Without };
Scene WholePaint(Texts texts);

/// A text of 21 characters, which ends in NUL.
extern const std::string_view kText;

} // namespace bench
