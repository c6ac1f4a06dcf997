// Code pages by the C library's converters.
#include "rc/codePages.h"

#include <algorithm>
#include <cerrno>
#include <map>
#include <memory>

#include <iconv.h>

namespace vm::rc {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

class Converter {
public:
    explicit Converter(const std::string& from) : m_handle(iconv_open("UTF-8", from.c_str())) {}
    ~Converter() {
        if (IsOpen()) iconv_close(m_handle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    // The call's mark of failure is -1 in place of a pointer.
    bool IsOpen() const { return reinterpret_cast<std::intptr_t>(m_handle) != -1; }
    Decoded Convert(std::string_view bytes);

private:
    void Run(std::string_view& bytes, std::string& text);
    iconv_t m_handle;
};

// As far as it goes: what is left in `bytes` begins with what cannot be read.
void Converter::Run(std::string_view& bytes, std::string& text) {
    char buffer[1024];
    char* in = const_cast<char*>(bytes.data()); // which the call does not write to
    std::size_t left = bytes.size();
    bool full = true;
    while (full) {
        char* out = buffer;
        std::size_t room = sizeof buffer;
        full = iconv(m_handle, &in, &left, &out, &room) == static_cast<std::size_t>(-1) &&
               errno == E2BIG;
        text.append(buffer, out);
    }
    bytes.remove_prefix(bytes.size() - left);
}

Decoded Converter::Convert(std::string_view bytes) {
    Decoded result;
    iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
    while (!bytes.empty()) {
        Run(bytes, result.text);
        if (bytes.empty()) break;
        result.lacking.push_back(static_cast<unsigned char>(bytes[0]));
        AppendUtf8(result.text, kReplacement);
        bytes.remove_prefix(1);
    }
    return result;
}

std::string ConverterName(int codePage) {
    switch (codePage) {
    case kUtf8:
        return "UTF-8";
    case kUtf16:
        return "UTF-16LE";
    case kUtf16BigEndian:
        return "UTF-16BE";
    case 10000:
        return "MACINTOSH";
    case 20127:
        return "ASCII";
    case 20866:
        return "KOI8-R";
    case 54936:
        return "GB18030";
    case 51932:
        return "EUC-JP";
    default:
        break;
    }
    if (codePage > 28590 && codePage < 28606) return "ISO-8859-" + std::to_string(codePage - 28590);
    return "CP" + std::to_string(codePage);
}

// Opened once each; a conversion is not for several threads at a time.
Converter& ConverterOf(int codePage) {
    thread_local std::map<int, std::unique_ptr<Converter>> t_converters;
    auto& converter = t_converters[codePage];
    if (!converter) converter = std::make_unique<Converter>(ConverterName(codePage));
    return *converter;
}

bool IsAscii(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return (byte & 0x80) == 0; });
}

} // namespace

bool IsCodePage(int codePage) {
    return codePage > 0 && codePage <= 65535 && ConverterOf(codePage).IsOpen();
}

Decoded ToUtf8(std::string_view bytes, int codePage) {
    const bool isWide = codePage == kUtf16 || codePage == kUtf16BigEndian;
    if (!isWide && IsAscii(bytes)) return {std::string(bytes), {}};
    return ConverterOf(codePage).Convert(bytes);
}

std::optional<ByteOrderMark> MarkOf(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) return ByteOrderMark{kUtf8, 3};
    if (bytes.starts_with("\xFF\xFE")) return ByteOrderMark{kUtf16, 2};
    if (bytes.starts_with("\xFE\xFF")) return ByteOrderMark{kUtf16BigEndian, 2};
    return std::nullopt;
}

bool LooksLikeUtf8(std::string_view bytes) {
    return !IsAscii(bytes) && ConverterOf(kUtf8).Convert(bytes).lacking.empty();
}

void AppendUtf8(std::string& text, char32_t character) {
    const auto add = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x80) return add(character);
    if (character < 0x800) {
        add(0xC0 | character >> 6);
    } else if (character < 0x10000) {
        add(0xE0 | character >> 12);
        add(0x80 | (character >> 6 & 0x3F));
    } else {
        add(0xF0 | character >> 18);
        add(0x80 | (character >> 12 & 0x3F));
        add(0x80 | (character >> 6 & 0x3F));
    }
    add(0x80 | (character & 0x3F));
}

} // namespace vm::rc
