// Every field of the model that is not at its default.
#include "modelText.h"

#include <cstdio>

namespace vm::rc {
namespace {

std::string Hex(std::uint32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, "%08X", value);
    return text;
}

// Line ends, tabs and quotes as escapes.
std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') quoted += '\\';
        if (static_cast<unsigned char>(c) >= ' ')
            quoted += c;
        else
            quoted += "\\" + std::to_string(static_cast<int>(c)) + ";";
    }
    return quoted + "\"";
}

std::string IdText(const Id& id) {
    const std::string number = id.number ? std::to_string(*id.number) : Quoted(id.name);
    return number + (id.symbol.empty() || id.symbol == number ? "" : "(" + id.symbol + ")");
}

std::string RectText(const Rect& r) {
    return std::to_string(r.x) + "," + std::to_string(r.y) + "," + std::to_string(r.cx) + "," +
           std::to_string(r.cy);
}

std::string Flag(bool value, const char* name) {
    return value ? std::string(" ") + name : std::string();
}
std::string Number(std::uint32_t value, const char* name) {
    return value ? " " + std::string(name) + "=" + std::to_string(value) : std::string();
}

std::string HeadText(const Head& head) {
    std::string text = head.keyword + " " + IdText(head.id);
    if (head.language.primary || head.language.sub)
        text += " language=" + std::to_string(head.language.primary) + "," +
                std::to_string(head.language.sub);
    return text;
}

std::string FontText(const Font& font) {
    if (font.points == 0) return {};
    return " font=" + std::to_string(font.points) + Quoted(font.face) +
           Number(static_cast<std::uint32_t>(font.weight), "weight") + Flag(font.italic, "italic") +
           Number(static_cast<std::uint32_t>(font.charset), "charset");
}

std::string ControlText(const Control& c) {
    std::string text = "  " + c.keyword + " " + c.windowClass + " " + IdText(c.id) + " " +
                       (c.image ? "image=" + IdText(*c.image) : Quoted(c.text)) + " " +
                       RectText(c.rect) + " " + Hex(c.style);
    if (c.exStyle) text += " ex=" + Hex(c.exStyle);
    text += Number(c.helpId, "help") + Flag(c.hasData, "data") + "\n";
    for (const std::string& item : c.items) text += "    " + Quoted(item) + "\n";
    return text;
}

std::string Text(const Dialog& d) {
    std::string text = HeadText(d.head) + " " + RectText(d.rect) + " " + Hex(d.style);
    if (d.exStyle) text += " ex=" + Hex(d.exStyle);
    text += Number(d.helpId, "help") + " " + Quoted(d.caption) + FontText(d.font);
    if (d.menu) text += " menu=" + IdText(*d.menu);
    if (d.windowClass) text += " class=" + IdText(*d.windowClass);
    text += "\n";
    for (const Control& control : d.controls) text += ControlText(control);
    return text;
}

std::string ItemText(const MenuItem& item, const std::string& indent) {
    const char* const kinds[] = {"ITEM ", "POPUP ", "SEPARATOR"};
    std::string text = indent + kinds[static_cast<int>(item.kind)];
    if (item.kind != MenuEntry::Separator) text += Quoted(item.text);
    if (item.id.number) text += " " + IdText(item.id);
    text += Flag(item.checked, "checked") + Flag(item.grayed, "grayed") +
            Flag(item.radio, "radio") + Flag(item.isDefault, "default") +
            Flag(item.column, "column") + Flag(item.help, "help");
    text += "\n";
    for (const MenuItem& inner : item.items) text += ItemText(inner, indent + "  ");
    return text;
}

std::string Text(const Menu& menu) {
    std::string text = HeadText(menu.head) + "\n";
    for (const MenuItem& item : menu.items) text += ItemText(item, "  ");
    return text;
}

std::string Text(const AcceleratorTable& table) {
    std::string text = HeadText(table.head) + "\n";
    for (const Accelerator& key : table.keys)
        text += "  " + key.symbol + " " + std::to_string(key.key) + Flag(key.virtualKey, "key") +
                Flag(key.shift, "shift") + Flag(key.control, "control") + Flag(key.alt, "alt") +
                " -> " + IdText(key.command) + "\n";
    return text;
}

// Of long texts the length.
std::string Text(const StringTable& table) {
    std::string text = HeadText(table.head) + "\n";
    for (const StringEntry& entry : table.strings)
        text += "  " + IdText(entry.id) + " " +
                (entry.text.size() > 500 ? std::to_string(entry.text.size()) + " bytes"
                                         : Quoted(entry.text)) +
                "\n";
    return text;
}

std::string Text(const Picture& picture) {
    return HeadText(picture.head) + " file=" + picture.path + "\n";
}

std::string Numbers(const std::vector<int>& numbers) {
    std::string text;
    for (const int number : numbers) text += " " + std::to_string(number);
    return text;
}

std::string Text(const VersionInfo& info) {
    std::string text = HeadText(info.head) + " file" + Numbers(info.fileVersion) + " product" +
                       Numbers(info.productVersion) + "\n";
    for (const VersionStrings& strings : info.strings) {
        text += "  " + strings.block + "\n";
        for (const VersionValue& value : strings.values)
            text += "    " + value.key + " " + Quoted(value.text) + "\n";
    }
    return text;
}

std::string Text(const Other& other) {
    return HeadText(other.head) + (other.path.empty() ? "" : " file=" + other.path) +
           Flag(!other.isThere, "missing") + "\n";
}

} // namespace

std::string ModelText(const std::vector<Resource>& resources) {
    std::string text;
    for (const Resource& resource : resources)
        text += std::visit([](const auto& value) { return Text(value); }, resource);
    return text;
}

} // namespace vm::rc
