#include "uiReader.h"

#include <utility>

#include <QtCore/QXmlStreamReader>

namespace vm::tool {
namespace {

class Reader {
public:
    explicit Reader(std::string_view bytes)
        : m_xml(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size()))) {}

    UiFile Read();

private:
    static constexpr std::size_t kNobody = static_cast<std::size_t>(-1);

    void Begin();
    void BeginElement(UiElement::Kind kind);
    void Value();
    void Fail(const std::string& why);

    QString Attribute(const char* name) const {
        return m_xml.attributes().value(QLatin1String(name)).toString();
    }
    std::size_t Line() const { return static_cast<std::size_t>(m_xml.lineNumber()); }

    QXmlStreamReader m_xml;
    UiFile m_file;
    std::vector<std::size_t> m_owners; // of properties: indices of elements, for each open tag
    int m_depth = 0;                   // of open widgets
    std::string m_property;            // the open one
};

void Reader::Fail(const std::string& why) {
    if (!m_file.trouble.empty()) return;
    m_file.trouble = why;
    m_file.troubleLine = Line();
}

void Reader::BeginElement(UiElement::Kind kind) {
    m_owners.back() = m_file.elements.size();
    m_file.elements.push_back({kind,
                               Attribute("class").toStdString(),
                               Attribute("name").toStdString(),
                               Line(),
                               m_depth,
                               {}});
    if (kind == UiElement::Kind::Widget) ++m_depth;
}

// The text of a property, of whatever type.
void Reader::Value() {
    const std::size_t line = Line();
    const std::string text =
        m_xml.readElementText(QXmlStreamReader::IncludeChildElements).toStdString();
    const std::size_t owner = m_owners.back();
    if (owner != kNobody)
        m_file.elements[owner].properties.try_emplace(m_property, UiProperty{line, text});
}

void Reader::Begin() {
    const auto tag = m_xml.name();
    if (m_owners.empty() && tag != QLatin1String("ui"))
        return Fail("the root element is <" + tag.toString().toStdString() + ">, not <ui>");
    if (!m_property.empty()) return Value();
    const bool isProperty = tag == QLatin1String("property");
    m_owners.push_back(isProperty ? m_owners.back() : kNobody);
    if (isProperty) m_property = Attribute("name").toStdString();
    if (tag == QLatin1String("widget")) BeginElement(UiElement::Kind::Widget);
    if (tag == QLatin1String("action")) BeginElement(UiElement::Kind::Action);
}

UiFile Reader::Read() {
    while (!m_xml.atEnd() && m_file.trouble.empty()) {
        const auto token = m_xml.readNext();
        if (token == QXmlStreamReader::StartElement) Begin();
        if (token != QXmlStreamReader::EndElement || m_owners.empty()) continue;
        if (m_xml.name() == QLatin1String("widget")) --m_depth;
        if (m_xml.name() == QLatin1String("property")) m_property.clear();
        m_owners.pop_back();
    }
    if (m_xml.hasError()) Fail(m_xml.errorString().toStdString());
    const bool hasRoot =
        !m_file.elements.empty() && m_file.elements[0].kind == UiElement::Kind::Widget;
    if (!hasRoot) Fail("there is no widget in it");
    return std::move(m_file);
}

} // namespace

UiFile ReadUi(std::string_view bytes) {
    return Reader(bytes).Read();
}

} // namespace vm::tool
