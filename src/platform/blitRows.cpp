#include "platform/blitRows.h"

#include <cstring>

namespace vm {
namespace {

// Four pixels at a time, in the registers that every processor of the family has.
constexpr int kAtOnce = 4;
using Words = std::uint32_t __attribute__((vector_size(16)));
using Halves = std::uint16_t __attribute__((vector_size(16)));

constexpr std::uint32_t kOdd = 0x00FF00FF; // red and blue

Words Load(const QRgb* pixels) {
    Words words;
    std::memcpy(&words, pixels, sizeof words);
    return words;
}

void Store(QRgb* pixels, Words words) {
    std::memcpy(pixels, &words, sizeof words);
}

// Products of bytes, divided by 255 and rounded; the results stand in the upper bytes.
Halves DividedBy255(Halves products) {
    return products + (products >> 8) + 0x80;
}

Words Blended(Words source, Words below) {
    const Words rest = 255 - (source >> 24);
    const auto factor = reinterpret_cast<Halves>(rest | rest << 16);
    const Halves odd = reinterpret_cast<Halves>(below & kOdd) * factor;
    const Halves even = reinterpret_cast<Halves>(below >> 8 & kOdd) * factor;
    return source + (reinterpret_cast<Words>(DividedBy255(odd) >> 8) |
                     reinterpret_cast<Words>(DividedBy255(even) & 0xFF00));
}

// Artwork has long runs of pixels that are opaque or not there at all.
void BlendFour(QRgb* row, const QRgb* source) {
    constexpr std::uint64_t kOpaque = 0xFF000000FF000000;
    std::uint64_t pairs[2];
    std::memcpy(pairs, source, sizeof pairs);
    if ((pairs[0] & pairs[1] & kOpaque) == kOpaque)
        std::memcpy(row, source, sizeof pairs);
    else if ((pairs[0] | pairs[1]) != 0)
        Store(row, Blended(Load(source), Load(row)));
}

QRgb Blended(QRgb source, QRgb below) {
    return source + ByteMul(below, 255 - qAlpha(source));
}

template <class Pixels>
Pixels Mean(Pixels a, Pixels b, Pixels c, Pixels d) {
    const Pixels odd = (a & kOdd) + (b & kOdd) + (c & kOdd) + (d & kOdd);
    const Pixels even = (a >> 8 & kOdd) + (b >> 8 & kOdd) + (c >> 8 & kOdd) + (d >> 8 & kOdd);
    return (odd >> 2 & kOdd) | (even >> 2 & kOdd) << 8;
}

// The means of eight pixels of two rows.
Words Means(const QRgb* upper, const QRgb* lower) {
    const Words a = Load(upper), b = Load(upper + kAtOnce);
    const Words c = Load(lower), d = Load(lower + kAtOnce);
    return Mean(
        __builtin_shufflevector(a, b, 0, 2, 4, 6), __builtin_shufflevector(a, b, 1, 3, 5, 7),
        __builtin_shufflevector(c, d, 0, 2, 4, 6), __builtin_shufflevector(c, d, 1, 3, 5, 7));
}

template <bool kBlend>
void Halve(const PixelRows& to, const SourceRows& from, QSize size) {
    for (int y = 0; y < size.height(); ++y) {
        QRgb* const row = to.Row(y);
        const QRgb* const upper = from.Row(2 * y);
        const QRgb* const lower = from.Row(2 * y + 1);
        int x = 0;
        for (; x + kAtOnce <= size.width(); x += kAtOnce) {
            const Words means = Means(upper + 2 * x, lower + 2 * x);
            Store(row + x, kBlend ? Blended(means, Load(row + x)) : means);
        }
        for (; x < size.width(); ++x) {
            const QRgb mean = Mean(upper[2 * x], upper[2 * x + 1], lower[2 * x], lower[2 * x + 1]);
            row[x] = kBlend ? Blended(mean, row[x]) : mean;
        }
    }
}

} // namespace

void CopyRows(const PixelRows& to, const SourceRows& from, QSize size) {
    const auto bytes = static_cast<std::size_t>(size.width()) * sizeof(QRgb);
    for (int y = 0; y < size.height(); ++y) std::memcpy(to.Row(y), from.Row(y), bytes);
}

void BlendRows(const PixelRows& to, const SourceRows& from, QSize size) {
    for (int y = 0; y < size.height(); ++y) {
        QRgb* const row = to.Row(y);
        const QRgb* const source = from.Row(y);
        int x = 0;
        for (; x + kAtOnce <= size.width(); x += kAtOnce) BlendFour(row + x, source + x);
        for (; x < size.width(); ++x) row[x] = Blended(source[x], row[x]);
    }
}

void HalveRows(const PixelRows& to, const SourceRows& from, QSize size) {
    Halve<false>(to, from, size);
}

void BlendHalvedRows(const PixelRows& to, const SourceRows& from, QSize size) {
    Halve<true>(to, from, size);
}

} // namespace vm
