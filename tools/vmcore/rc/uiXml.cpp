#include "rc/uiXml.h"

#include <QtCore/QString>

namespace vm::rc {
namespace {

// XML has no other control characters, and no halves of pairs.
bool IsAllowed(QChar c) {
    return c == u'\n' || c == u'\t' || (c >= u' ' && c < QChar(0x7F)) ||
           (c >= QChar(0xA0) && c < QChar(0xFFFE));
}

} // namespace

QString XmlText(const std::string& text) {
    const QString all = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    QString clean;
    for (const QChar c : all)
        if (IsAllowed(c)) clean += c;
    return clean;
}

UiProperty UiText(const char* name, const std::string& text) {
    return {name, "string", text};
}
UiProperty UiBool(const char* name, bool value) {
    return {name, "bool", value ? "true" : "false"};
}
UiProperty UiNumber(const char* name, int value) {
    return {name, "number", std::to_string(value)};
}
UiProperty UiEnum(const char* name, const char* value) {
    return {name, "enum", value};
}
UiProperty UiDynamic(const char* name, const std::string& text) {
    return {name, "string", text, true};
}
UiProperty UiTag(int tag) {
    return {"tag", "number", std::to_string(tag), true};
}

UiXml::UiXml(const std::string& formClass) : m_xml(&m_bytes) {
    m_xml.setAutoFormatting(true);
    m_xml.setAutoFormattingIndent(1);
    m_xml.writeStartDocument();
    Begin("ui", {{"version", "4.0"}});
    Leaf("class", formClass);
}

void UiXml::Begin(const char* element, const Attributes& attributes) {
    m_xml.writeStartElement(QLatin1String(element));
    for (const auto& [name, value] : attributes)
        m_xml.writeAttribute(QLatin1String(name), XmlText(value));
}

void UiXml::End() {
    m_xml.writeEndElement();
}

void UiXml::Leaf(const char* element, const std::string& text, const Attributes& attributes) {
    Begin(element, attributes);
    m_xml.writeCharacters(XmlText(text));
    End();
}

void UiXml::Empty(const char* element, const Attributes& attributes) {
    m_xml.writeEmptyElement(QLatin1String(element));
    for (const auto& [name, value] : attributes)
        m_xml.writeAttribute(QLatin1String(name), XmlText(value));
}

void UiXml::Write(const UiProperty& property) {
    Attributes attributes = {{"name", property.name}};
    if (property.dynamic) attributes.emplace_back("stdset", "0");
    Begin("property", attributes);
    Leaf(property.type.c_str(), property.value);
    End();
}

void UiXml::WriteRect(const char* property, const Rect& rect) {
    Begin("property", {{"name", property}});
    Begin("rect");
    Leaf("x", std::to_string(rect.x));
    Leaf("y", std::to_string(rect.y));
    Leaf("width", std::to_string(rect.cx));
    Leaf("height", std::to_string(rect.cy));
    End();
    End();
}

void UiXml::WriteSize(const char* property, int width, int height, bool dynamic) {
    Attributes attributes = {{"name", property}};
    if (dynamic) attributes.emplace_back("stdset", "0");
    Begin("property", attributes);
    Begin("size");
    Leaf("width", std::to_string(width));
    Leaf("height", std::to_string(height));
    End();
    End();
}

std::string UiXml::Finish() {
    m_xml.writeEndDocument();
    return m_bytes.toStdString();
}

} // namespace vm::rc
