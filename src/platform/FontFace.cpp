#include "platform/FontFace.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>
#include <utility>

#include <QtCore/QFile>
#include <QtCore/QtEndian>
#include <QtGui/QFont>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainterPath>

#include "core/macroman.h"

namespace vm {
namespace {

constexpr double kDefaultSize = 12;
// Larger ones show nothing but the inside of a letter, and their numbers run over.
constexpr double kLargestSize = 10000;

// One table of the font file, read by byte offset; 0 beyond its end.
class Table {
public:
    Table(const QRawFont& font, const char* tag) : m_bytes(font.fontTable(tag)) {}

    bool Exists() const { return !m_bytes.isEmpty(); }
    double Signed(int offset) const { return Read<qint16>(offset); }
    double Unsigned(int offset) const { return Read<quint16>(offset); }
    double Fixed(int offset) const { return Read<qint32>(offset) / 65536.0; }

private:
    template <class T>
    T Read(int offset) const {
        if (offset + static_cast<int>(sizeof(T)) > m_bytes.size()) return 0;
        return qFromBigEndian<T>(m_bytes.constData() + offset);
    }
    QByteArray m_bytes;
};

double HeightOf(const QRawFont& font, char16_t character) {
    const QString text(QChar{character});
    const auto glyphs = font.glyphIndexesForString(text);
    return glyphs.isEmpty() ? 0 : -font.pathForGlyph(glyphs.first()).boundingRect().top();
}

double CapHeight(const QRawFont& font, double scale) {
    const Table os2(font, "OS/2");
    const double height = os2.Unsigned(0) >= 2 ? os2.Signed(88) * scale : 0;
    return height > 0 ? height : HeightOf(font, u'H');
}

// For font files without these tables: what the toolkit makes of them.
FontMetrics ToolkitMetrics(const QRawFont& font) {
    return {.ascender = font.ascent(),
            .descender = -font.descent(),
            .leading = font.leading(),
            .capHeight = HeightOf(font, u'H'),
            .maxAdvance = font.maxCharWidth(),
            .italicAngle = font.style() == QFont::StyleNormal ? 0.0 : -12.0,
            .underlineThickness = font.lineThickness()};
}

// The toolkit's own numbers are rounded up to whole pixels in places; the tables are exact.
FontMetrics MetricsOf(const QRawFont& font, double size) {
    const Table hhea(font, "hhea");
    const double unitsPerEm = Table(font, "head").Unsigned(18);
    if (!hhea.Exists() || unitsPerEm <= 0) return ToolkitMetrics(font);
    const double scale = size / unitsPerEm;
    const Table post(font, "post");
    return {.ascender = hhea.Signed(4) * scale,
            .descender = hhea.Signed(6) * scale,
            .leading = hhea.Signed(8) * scale,
            .capHeight = CapHeight(font, scale),
            .maxAdvance = hhea.Unsigned(10) * scale,
            .italicAngle = post.Fixed(4),
            .underlineThickness = post.Signed(10) * scale};
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

} // namespace

FontFace::FontFace(std::string_view name, double size, QRawFont raw)
    : m_name(name), m_size(size), m_raw(std::move(raw)), m_metrics(MetricsOf(m_raw, size)) {
    FillTables();
    m_run.setRawFont(m_raw);
}

void FontFace::FillTables() {
    m_advances.fill(kNotMeasured);
    for (unsigned code = 0; code < 256; ++code) {
        const QChar character{MacRomanToUnicode(static_cast<unsigned char>(code))};
        const bool control = code < 0x20 || code == 0x7F;
        m_glyphs[code] = kNoGlyph;
        int count = 1;
        if (!control) m_raw.glyphIndexesForChars(&character, 1, &m_glyphs[code], &count);
    }
}

int FontFace::MeasuredUnits(unsigned char code) const {
    QPointF advance;
    if (m_glyphs[code] != kNoGlyph) m_raw.advancesForGlyphIndexes(&m_glyphs[code], &advance, 1);
    return m_advances[code] = static_cast<std::int32_t>(std::lround(advance.x() * kUnits));
}

// A file is read once: its other sizes share what the toolkit knows of it.
QRawFont FontFace::RawFont(const std::string& file, double size) {
    static auto* const s_files = new std::map<std::string, QRawFont>;
    const auto [entry, isNew] = s_files->try_emplace(file);
    if (isNew)
        entry->second = QRawFont(QFile::decodeName(file.c_str()), size, QFont::PreferNoHinting);
    QRawFont raw = entry->second;
    if (raw.isValid()) raw.setPixelSize(size);
    return raw;
}

std::unique_ptr<FontFace> FontFace::Load(std::string_view name, double size) {
    const std::optional<std::string> file = FindFontFile(name);
    if (!file) return nullptr;
    QRawFont raw = RawFont(*file, size);
    if (!raw.isValid()) return nullptr;
    return std::unique_ptr<FontFace>(new FontFace(name, size, std::move(raw)));
}

FontFace* FontFace::Find(std::string_view name, double size) {
    using Key = std::pair<std::string, double>;
    static auto* const s_faces = new std::map<Key, std::unique_ptr<FontFace>>;
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return nullptr;
    if (name.empty()) name = "Arial";
    size = size > 0 ? std::min(size, kLargestSize) : kDefaultSize;
    const auto [entry, isNew] = s_faces->try_emplace(Key(Lower(name), size));
    if (isNew) entry->second = Load(name, size);
    return entry->second.get();
}

// The toolkit embeds only fonts that come from its own data base. Glyph numbers hold for one file, so
// it must be the very same: the header table has a checksum of all others.
const QRawFont& FontFace::Embeddable() const {
    if (m_embeddable.isValid()) return m_embeddable;
    QFont font(m_raw.familyName());
    font.setStyleName(m_raw.styleName());
    font.setPixelSize(std::max(1, qRound(m_size)));
    font.setHintingPreference(QFont::PreferNoHinting);
    m_embeddable = QRawFont::fromFont(font);
    m_embeddable.setPixelSize(m_size);
    if (m_embeddable.fontTable("head") != m_raw.fontTable("head")) m_embeddable = m_raw;
    return m_embeddable;
}

double FontFace::Width(std::string_view text) const {
    std::int64_t width = 0;
    for (const char c : text) width += Units(static_cast<unsigned char>(c));
    return static_cast<double>(width) / kUnits;
}

} // namespace vm
