#include "dialogs/dialogLists.h"

#include <QtCore/QVariant>
#include <QtCore/QXmlStreamReader>

#include "controls/listBoxMessages.h"
#include "controls/listBoxTable.h"
#include "core/macroman.h"

namespace vm {
namespace {

constexpr char kCurrentRow[] = "currentRow";

bool HasAttribute(const QXmlStreamReader& xml, const char* name, const char* value) {
    return xml.attributes().value(QLatin1String(name)) == QLatin1String(value);
}

// The text of the property that the reader is at.
QString PropertyText(QXmlStreamReader& xml) {
    QString text;
    while (xml.readNextStartElement())
        text = xml.readElementText(QXmlStreamReader::SkipChildElements);
    return text;
}

QString ItemText(QXmlStreamReader& xml) {
    QString text;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("property") && HasAttribute(xml, "name", "text"))
            text = PropertyText(xml);
        else
            xml.skipCurrentElement();
    }
    return text;
}

QStringList ItemTexts(QXmlStreamReader& xml) {
    QStringList texts;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("item"))
            texts << ItemText(xml);
        else
            xml.skipCurrentElement();
    }
    return texts;
}

} // namespace

bool IsListClass(const QString& className) {
    return className == QLatin1String("QListWidget") || className == QLatin1String("QListView");
}

ListTexts ListTextsOf(const QByteArray& file) {
    ListTexts lists;
    QXmlStreamReader xml(file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) continue;
        if (xml.name() != QLatin1String("widget") || !HasAttribute(xml, "class", "QListWidget"))
            continue;
        const QString name = xml.attributes().value(QLatin1String("name")).toString();
        lists[name] = ItemTexts(xml);
    }
    return lists;
}

void FillListBox(QWidget& widget, const ListTexts& texts) {
    if (!ListBoxTable::Of(&widget)) return;
    TransientListBox box(widget);
    const auto found = texts.find(widget.objectName());
    if (found != texts.end())
        for (const QString& text : found->second) box->AddString(ToMacRomanLossy(text).c_str());
    const QVariant row = widget.property(kCurrentRow);
    if (row.isValid()) box->SetCurSel(row.toInt());
}

} // namespace vm
