// Sizes, glyphs and metrics are FontFace's; here is only the search for the file.
#include "platform/fontResolver.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <memory>
#include <unordered_map>

#include <fontconfig/fontconfig.h>

namespace vm {
namespace {

struct FcDeleter {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcObjectSet* objects) const { FcObjectSetDestroy(objects); }
    void operator()(FcFontSet* fonts) const { FcFontSetDestroy(fonts); }
};
template <class T>
using FcPtr = std::unique_ptr<T, FcDeleter>;

// Faces whose stand-in the desktop's configuration does not know, or knows only as "any sans
// serif".
struct Alias {
    const char* asked;
    const char* family;
};
constexpr Alias kAliases[] = {
    {"arial", "Liberation Sans"},
    {"helvetica", "Liberation Sans"},
    {"helvetica neue", "Liberation Sans"},
    {"times", "Liberation Serif"},
    {"times new roman", "Liberation Serif"},
    {"courier", "Liberation Mono"},
    {"courier new", "Liberation Mono"},
    {"ms sans serif", "Liberation Sans"},
    {"ms shell dlg", "Liberation Sans"},
    {"verdana", "DejaVu Sans"},
    {"tahoma", "DejaVu Sans"},
    {"geneva", "DejaVu Sans"},
    {"lucida grande", "DejaVu Sans"},
    {"lucida console", "DejaVu Sans Mono"},
    {"monaco", "DejaVu Sans Mono"},
    {"menlo", "DejaVu Sans Mono"},
    {"consolas", "DejaVu Sans Mono"},
    {"georgia", "DejaVu Serif"},
};

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

const FcChar8* AsFc(const std::string& text) {
    return reinterpret_cast<const FcChar8*>(text.c_str());
}

std::string StringOf(FcPattern* pattern, const char* object, int n = 0) {
    FcChar8* value = nullptr;
    if (FcPatternGetString(pattern, object, n, &value) != FcResultMatch) return {};
    return reinterpret_cast<const char*>(value);
}

// Metrics are read from the tables of OpenType files, so that other formats come last.
bool HasTables(FcPattern* font) {
    const std::string format = StringOf(font, FC_FONTFORMAT);
    return format == "TrueType" || (format == "CFF" && !StringOf(font, FC_FILE).ends_with(".pfb"));
}

bool HasFamily(FcPattern* font, const std::string& lowerFamily) {
    for (int n = 0;; ++n) {
        const std::string family = StringOf(font, FC_FAMILY, n);
        if (family.empty()) return false;
        if (Lower(family) == lowerFamily) return true;
    }
}

// The installed face whose full or PostScript name this is.
std::optional<std::string> InstalledAs(const char* object, const std::string& name) {
    const FcPtr<FcPattern> pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), object, AsFc(name));
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    const FcPtr<FcObjectSet> objects(
        FcObjectSetBuild(FC_FILE, FC_FONTFORMAT, static_cast<const char*>(nullptr)));
    const FcPtr<FcFontSet> fonts(FcFontList(nullptr, pattern.get(), objects.get()));
    if (!fonts || fonts->nfont == 0) return std::nullopt;
    FcPattern** const end = fonts->fonts + fonts->nfont;
    FcPattern** const best = std::find_if(fonts->fonts, end, HasTables);
    return StringOf(best == end ? fonts->fonts[0] : *best, FC_FILE);
}

FcPtr<FcPattern> Query(const FaceStyle& style) {
    FcPtr<FcPattern> query(FcPatternCreate());
    FcPatternAddString(query.get(), FC_FAMILY, AsFc(style.family));
    FcPatternAddInteger(query.get(), FC_WEIGHT,
                        style.black  ? FC_WEIGHT_BLACK
                        : style.bold ? FC_WEIGHT_BOLD
                                     : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(query.get(), FC_SLANT, style.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddInteger(query.get(), FC_WIDTH, style.narrow ? FC_WIDTH_CONDENSED : FC_WIDTH_NORMAL);
    FcPatternAddBool(query.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, query.get(), FcMatchPattern);
    FcDefaultSubstitute(query.get());
    return query;
}

// Whether the configuration names the matched family as a replacement of its own accord, and not
// as the last resort for any name.
bool NamedByConfiguration(FcPattern* query, FcPattern* match) {
    FcValue value;
    FcValueBinding binding;
    for (int n = 0; FcPatternGetWithBinding(query, FC_FAMILY, n, &value, &binding) == FcResultMatch;
         ++n) {
        const auto* family = reinterpret_cast<const char*>(value.u.s);
        if (HasFamily(match, Lower(family))) return binding != FcValueBindingWeak;
    }
    return false;
}

std::optional<std::string> InFamily(const FaceStyle& style) {
    const FcPtr<FcPattern> query = Query(style);
    FcResult result = FcResultNoMatch;
    const FcPtr<FcPattern> match(FcFontMatch(nullptr, query.get(), &result));
    if (!match) return std::nullopt;
    if (!HasFamily(match.get(), Lower(style.family)) &&
        !NamedByConfiguration(query.get(), match.get()))
        return std::nullopt;
    return StringOf(match.get(), FC_FILE);
}

std::optional<std::string> InAliasOf(FaceStyle style) {
    const std::string family = Lower(style.family);
    const auto* alias = std::find_if(std::begin(kAliases), std::end(kAliases),
                                     [&](const Alias& row) { return family == row.asked; });
    if (alias == std::end(kAliases)) return std::nullopt;
    style.family = alias->family;
    return InFamily(style);
}

std::optional<std::string> Search(const std::string& name) {
    FaceStyle plain;
    plain.family = name;
    if (auto file = InFamily(plain)) return file;
    for (const char* object : {FC_FULLNAME, FC_POSTSCRIPT_NAME})
        if (auto file = InstalledAs(object, name)) return file;
    const FaceStyle style = SplitFaceName(name);
    if (style.family != name)
        if (auto file = InFamily(style)) return file;
    return InAliasOf(style);
}

// Takes one style word off the end; false when there is none or nothing would be left.
bool TakeStyleWord(FaceStyle& style) {
    const std::size_t space = style.family.find_last_of(" -");
    if (space == std::string::npos || space == 0) return false;
    const std::string word = Lower(std::string_view(style.family).substr(space + 1));
    if (word == "bold")
        style.bold = true;
    else if (word == "black")
        style.black = true;
    else if (word == "italic" || word == "oblique")
        style.italic = true;
    else if (word == "narrow")
        style.narrow = true;
    else if (word != "regular" && !word.empty())
        return false;
    style.family.resize(space);
    return true;
}

} // namespace

FaceStyle SplitFaceName(std::string_view name) {
    FaceStyle style;
    style.family = name;
    while (TakeStyleWord(style)) {
    }
    return style;
}

std::optional<std::string> FindFontFile(std::string_view name) {
    static auto* const s_found = new std::unordered_map<std::string, std::optional<std::string>>;
    if (name.empty()) return std::nullopt;
    const auto [entry, isNew] = s_found->try_emplace(Lower(name));
    if (isNew) entry->second = Search(std::string(name));
    return entry->second;
}

} // namespace vm
