#include "dialogs/listTexts.h"

#include <QtCore/QXmlStreamReader>

namespace vm {
namespace {

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

} // namespace vm
