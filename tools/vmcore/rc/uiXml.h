// Interface files as text: the elements that all of them have, with everything escaped.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QXmlStreamWriter>

#include "rc/script.h"

namespace vm::rc {

/// A property; `type` is the element of its value: "string", "bool", "number", "enum", "set", "cstring".
struct UiProperty {
    std::string name;
    std::string type;
    std::string value;
    bool dynamic = false;
};

UiProperty UiText(const char* name, const std::string& text);
UiProperty UiBool(const char* name, bool value);
UiProperty UiNumber(const char* name, int value);
UiProperty UiEnum(const char* name, const char* value);
UiProperty UiDynamic(const char* name, const std::string& text);
UiProperty UiTag(int tag);

/// Without what XML cannot hold; nothing in it is escaped.
QString XmlText(const std::string& text);

using Attributes = std::vector<std::pair<const char*, std::string>>;

class UiXml {
public:
    explicit UiXml(const std::string& formClass);

    void Begin(const char* element, const Attributes& attributes = {});
    void End();
    void Leaf(const char* element, const std::string& text, const Attributes& attributes = {});
    void Empty(const char* element, const Attributes& attributes);
    void Write(const UiProperty& property);
    void WriteRect(const char* property, const Rect& rect);
    void WriteSize(const char* property, int width, int height, bool dynamic = false);
    /// The whole file. Nothing can be added afterwards.
    std::string Finish();

private:
    QByteArray m_bytes;
    QXmlStreamWriter m_xml;
};

} // namespace vm::rc
