#include "platform/blitRows.h"

#include <cstring>

namespace vm {
namespace {

// Four pixels at a time, in the registers that every processor of the family has, or eight where the
// processor has wider ones. Vectors go by reference: how wide ones are passed depends on the processor.
struct Narrow {
    using Words = std::uint32_t __attribute__((vector_size(16)));
    using Halves = std::uint16_t __attribute__((vector_size(16)));
};
struct Wide {
    using Words = std::uint32_t __attribute__((vector_size(32)));
    using Halves = std::uint16_t __attribute__((vector_size(32)));
};
using Four = Narrow::Words;
constexpr int kAtOnce = sizeof(Four) / sizeof(QRgb);

constexpr std::uint32_t kOdd = 0x00FF00FF; // red and blue

Four Load(const QRgb* pixels) {
    Four words;
    std::memcpy(&words, pixels, sizeof words);
    return words;
}

void Store(QRgb* pixels, Four words) {
    std::memcpy(pixels, &words, sizeof words);
}

// Products of bytes are divided by 255 and rounded; the results stand in the upper bytes.
template <class Width>
[[gnu::always_inline]] inline void BlendOnto(typename Width::Words& below,
                                             const typename Width::Words& source) {
    using Words = typename Width::Words;
    using Halves = typename Width::Halves;
    const Words rest = 255 - (source >> 24);
    const auto factor = reinterpret_cast<Halves>(rest | rest << 16);
    const Halves odd = reinterpret_cast<Halves>(below & kOdd) * factor;
    const Halves even = reinterpret_cast<Halves>(below >> 8 & kOdd) * factor;
    below = source + (reinterpret_cast<Words>((odd + (odd >> 8) + 0x80) >> 8) |
                      reinterpret_cast<Words>((even + (even >> 8) + 0x80) & 0xFF00));
}

// Artwork has long runs of pixels that are opaque or not there at all.
template <class Width>
[[gnu::always_inline]] inline void BlendSome(QRgb* row, const QRgb* pixels) {
    constexpr std::uint64_t kOpaque = 0xFF000000FF000000;
    typename Width::Words source, below;
    std::uint64_t pairs[sizeof source / sizeof kOpaque];
    std::memcpy(pairs, pixels, sizeof source);
    std::uint64_t all = kOpaque, any = 0;
    for (const std::uint64_t pair : pairs) {
        all &= pair;
        any |= pair;
    }
    if (any == 0) return;
    std::memcpy(&source, pixels, sizeof source);
    if (all != kOpaque) {
        std::memcpy(&below, row, sizeof below);
        BlendOnto<Width>(below, source);
        source = below;
    }
    std::memcpy(row, &source, sizeof source);
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
Four Means(const QRgb* upper, const QRgb* lower) {
    const Four a = Load(upper), b = Load(upper + kAtOnce);
    const Four c = Load(lower), d = Load(lower + kAtOnce);
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
            const Four means = Means(upper + 2 * x, lower + 2 * x);
            Four result = kBlend ? Load(row + x) : means;
            if (kBlend) BlendOnto<Narrow>(result, means);
            Store(row + x, result);
        }
        for (; x < size.width(); ++x) {
            const QRgb mean = Mean(upper[2 * x], upper[2 * x + 1], lower[2 * x], lower[2 * x + 1]);
            row[x] = kBlend ? Blended(mean, row[x]) : mean;
        }
    }
}

template <class Width>
[[gnu::always_inline]] inline void BlendRowsBy(const PixelRows& to, const SourceRows& from,
                                               QSize size) {
    constexpr int kSome = sizeof(typename Width::Words) / sizeof(QRgb);
    for (int y = 0; y < size.height(); ++y) {
        QRgb* const row = to.Row(y);
        const QRgb* const source = from.Row(y);
        int x = 0;
        for (; x + kSome <= size.width(); x += kSome) BlendSome<Width>(row + x, source + x);
        for (; x < size.width(); ++x) row[x] = Blended(source[x], row[x]);
    }
}

#ifdef __x86_64__
[[gnu::target("avx2")]] void BlendRowsWide(const PixelRows& to, const SourceRows& from,
                                           QSize size) {
    BlendRowsBy<Wide>(to, from, size);
}
#endif

} // namespace

void CopyRows(const PixelRows& to, const SourceRows& from, QSize size) {
    const auto bytes = static_cast<std::size_t>(size.width()) * sizeof(QRgb);
    for (int y = 0; y < size.height(); ++y) std::memcpy(to.Row(y), from.Row(y), bytes);
}

void BlendRows(const PixelRows& to, const SourceRows& from, QSize size) {
#ifdef __x86_64__
    static const bool s_wide = __builtin_cpu_supports("avx2");
    if (s_wide) return BlendRowsWide(to, from, size);
#endif
    BlendRowsBy<Narrow>(to, from, size);
}

void HalveRows(const PixelRows& to, const SourceRows& from, QSize size) {
    Halve<false>(to, from, size);
}

void BlendHalvedRows(const PixelRows& to, const SourceRows& from, QSize size) {
    Halve<true>(to, from, size);
}

} // namespace vm
