#include "rc/iconImage.h"

#include <algorithm>
#include <vector>

#include <QtCore/QtEndian>

namespace vm::rc {
namespace {

constexpr qsizetype kFolderStart = 6;
constexpr qsizetype kEntrySize = 16;
constexpr int kHeaderSize = 40; // of a picture
constexpr int kFileHeaderSize = 14;
constexpr int kLargestSide = 4096;
constexpr int kMostImages = 256; // of a file; an icon of a person's has a dozen
constexpr char kPngStart[] = "\x89PNG";

template <class Number>
Number At(const QByteArray& bytes, qsizetype offset) {
    constexpr auto size = static_cast<qsizetype>(sizeof(Number));
    quint32 number = 0;
    if (offset < 0 || offset + size > bytes.size()) return 0;
    for (qsizetype i = 0; i < size; ++i)
        number |= quint32{static_cast<quint8>(bytes[offset + i])} << (8 * i);
    return static_cast<Number>(number);
}

QByteArray Bytes(quint32 number) {
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

// One picture: a header whose height counts the mask too, colours, pixels and mask.
class IconPicture {
public:
    explicit IconPicture(QByteArray bytes) : m_bytes(std::move(bytes)) {
        m_width = At<qint32>(m_bytes, 4);
        m_height = At<qint32>(m_bytes, 8) / 2;
        m_bits = At<quint16>(m_bytes, 14);
        if (!IsKnown()) m_width = m_height = m_bits = 0;
        const quint32 used = At<quint32>(m_bytes, 32);
        const quint32 most = m_bits <= 8 ? quint32{1} << m_bits : 0;
        m_pixels = kHeaderSize + 4 * qsizetype{used && used < most ? used : most};
        m_mask = m_pixels + Stride(m_bits) * m_height;
    }
    bool IsGood() const { return m_width > 0 && m_mask <= m_bytes.size(); }
    QImage Image() const {
        if (!IsGood()) return {};
        const QImage deep = m_bits == 32 ? WithTransparency() : QImage();
        return deep.isNull() ? Masked(Plain()) : deep;
    }
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    int Bits() const { return m_bits; }

private:
    bool IsKnown() const {
        const bool isDepth = m_bits == 1 || m_bits == 4 || m_bits == 8 || m_bits == 16 ||
                             m_bits == 24 || m_bits == 32;
        return At<quint32>(m_bytes, 0) == kHeaderSize && isDepth && m_width > 0 && m_height > 0 &&
               m_width <= kLargestSide && m_height <= kLargestSide;
    }
    qsizetype Stride(int bits) const { return (qsizetype{m_width} * bits + 31) / 32 * 4; }

    // As a bitmap file, which the toolkit reads.
    QImage Plain() const {
        QByteArray file(kFileHeaderSize, '\0');
        file += m_bytes.left(m_mask);
        file.replace(0, 2, "BM");
        file.replace(2, 4, Bytes(static_cast<quint32>(file.size())));
        file.replace(10, 4, Bytes(static_cast<quint32>(kFileHeaderSize + m_pixels)));
        file.replace(kFileHeaderSize + 8, 4, Bytes(static_cast<quint32>(m_height)));
        return QImage::fromData(file, "BMP").convertToFormat(QImage::Format_ARGB32);
    }

    // Null when no pixel has any, which old programs wrote: the mask counts then.
    QImage WithTransparency() const {
        QImage image(m_width, m_height, QImage::Format_ARGB32);
        bool isSeen = false;
        for (int y = 0; y < m_height; ++y)
            for (int x = 0; x < m_width; ++x) {
                const qsizetype row = m_pixels + Stride(32) * (m_height - 1 - y);
                const auto pixel = At<quint32>(m_bytes, row + 4 * qsizetype{x});
                isSeen |= qAlpha(pixel) != 0;
                image.setPixel(x, y, pixel);
            }
        return isSeen ? image : QImage();
    }

    QImage Masked(QImage image) const {
        if (image.isNull() || m_mask + Stride(1) * m_height > m_bytes.size()) return image;
        for (int y = 0; y < m_height; ++y)
            for (int x = 0; x < m_width; ++x) {
                const qsizetype row = m_mask + Stride(1) * (m_height - 1 - y);
                if (At<quint8>(m_bytes, row + x / 8) & (0x80 >> x % 8)) image.setPixel(x, y, 0);
            }
        return image;
    }

    QByteArray m_bytes;
    int m_width = 0;
    int m_height = 0;
    int m_bits = 0;
    qsizetype m_pixels = 0;
    qsizetype m_mask = 0;
};

struct Candidate {
    qint64 area;
    int bits;
    QByteArray bytes; ///< no copy: thousands of entries may have the same bytes
};

QImage ImageOf(const QByteArray& bytes) {
    return bytes.startsWith(kPngStart) ? QImage::fromData(bytes, "PNG")
                                       : IconPicture(bytes).Image();
}

Candidate CandidateOf(const QByteArray& bytes) {
    if (!bytes.startsWith(kPngStart)) {
        const IconPicture picture(bytes);
        return {qint64{picture.Width()} * picture.Height(), picture.Bits(), bytes};
    }
    constexpr qsizetype kSize = 16; // where a PNG file has its width and height
    if (bytes.size() < kSize + 8) return {0, 0, bytes};
    const auto width = qFromBigEndian<quint32>(bytes.constData() + kSize);
    const auto height = qFromBigEndian<quint32>(bytes.constData() + kSize + 4);
    return {std::min<qint64>(width, kLargestSide) * std::min<qint64>(height, kLargestSide), 32,
            bytes};
}

} // namespace

bool IsIconFile(const QByteArray& bytes) {
    return At<quint16>(bytes, 0) == 0 && At<quint16>(bytes, 2) == 1 && IconImageCount(bytes) > 0;
}

int IconImageCount(const QByteArray& bytes) {
    return std::min<int>(At<quint16>(bytes, 4), kMostImages);
}

QImage BestIconImage(const QByteArray& bytes) {
    std::vector<Candidate> candidates;
    for (int i = 0; i < IconImageCount(bytes); ++i) {
        const qsizetype entry = kFolderStart + kEntrySize * i;
        const qsizetype offset = At<quint32>(bytes, entry + 12);
        if (entry + kEntrySize > bytes.size() || offset >= bytes.size()) continue;
        const auto size = std::min<qsizetype>(At<quint32>(bytes, entry + 8), bytes.size() - offset);
        candidates.push_back(
            CandidateOf(QByteArray::fromRawData(bytes.constData() + offset, size)));
    }
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const Candidate& a, const Candidate& b) {
                         return a.area != b.area ? a.area > b.area : a.bits > b.bits;
                     });
    for (const Candidate& candidate : candidates)
        if (const QImage image = ImageOf(candidate.bytes); !image.isNull()) return image;
    return {};
}

} // namespace vm::rc
