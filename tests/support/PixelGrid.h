// A picture as text: one character a pixel, so that a failing drawing test shows what it drew.
#pragma once

#include <string>
#include <vector>

#include <QtGui/QImage>

/// Rows of `image`: '.' where a pixel is transparent or white, '#' where it is opaque black, 'x'
/// for anything else.
std::vector<std::string> PixelGrid(const QImage& image);
