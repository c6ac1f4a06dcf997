#include "controls/interfaceLimits.h"

#include <vector>

#include <QtCore/QXmlStreamReader>

namespace vm {
namespace {

constexpr std::size_t kDeepestNesting = 64;
constexpr int kMostCells = 1000; // in one direction

class Checker {
public:
    explicit Checker(const QByteArray& bytes) : m_xml(bytes) {}
    InterfaceProblem Problem();

private:
    void Begin();
    void End();
    void CheckPosition();
    void CheckLayout();
    void Count(int& elements);
    void Refuse(const std::string& why);

    QXmlStreamReader m_xml;
    InterfaceProblem m_problem = {0, {}};
    std::vector<bool> m_hasLayout; // of each element that is open
    int m_rows = 0;                // elements of tables, in the whole file
    int m_columns = 0;
    bool m_isCount = false; // inside a property that says how many cells there are
    QString m_text;         // of it
};

void Checker::Refuse(const std::string& why) {
    if (m_problem.why.empty()) m_problem = {static_cast<int>(m_xml.lineNumber()), why};
}

void Checker::Count(int& elements) {
    if (++elements > kMostCells) Refuse("too many rows or columns");
}

// Where an item is in a grid.
void Checker::CheckPosition() {
    for (const char* name : {"row", "column", "rowspan", "colspan"})
        if (m_xml.attributes().value(QLatin1String(name)).toInt() > kMostCells)
            Refuse("a row or column beyond the last possible one");
}

// The loader makes each one and loses all but one.
void Checker::CheckLayout() {
    if (m_hasLayout.empty()) return;
    if (m_hasLayout.back()) Refuse("a second layout in one place");
    m_hasLayout.back() = true;
}

void Checker::Begin() {
    const auto tag = m_xml.name();
    if (tag == QLatin1String("layout")) CheckLayout();
    m_hasLayout.push_back(false);
    if (m_hasLayout.size() > kDeepestNesting) Refuse("nested too deeply");
    if (tag == QLatin1String("row")) Count(m_rows);
    if (tag == QLatin1String("column")) Count(m_columns);
    if (tag == QLatin1String("item")) CheckPosition();
    if (tag != QLatin1String("property")) return;
    const auto name = m_xml.attributes().value(QLatin1String("name"));
    m_isCount = name == QLatin1String("rowCount") || name == QLatin1String("columnCount");
    m_text.clear();
}

void Checker::End() {
    m_hasLayout.pop_back();
    if (!m_isCount || m_xml.name() != QLatin1String("property")) return;
    m_isCount = false;
    if (!(m_text.toDouble() <= kMostCells)) Refuse("too many rows or columns");
}

InterfaceProblem Checker::Problem() {
    while (!m_xml.atEnd() && m_problem.why.empty()) {
        m_xml.readNext();
        if (m_xml.isStartElement()) Begin();
        if (m_xml.isCharacters() && m_isCount) m_text += m_xml.text();
        if (m_xml.isEndElement()) End();
    }
    if (m_xml.hasError()) Refuse(m_xml.errorString().toStdString());
    return std::move(m_problem);
}

} // namespace

InterfaceProblem ProblemOfInterface(const QByteArray& bytes) {
    return Checker(bytes).Problem();
}

} // namespace vm
