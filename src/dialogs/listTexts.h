// The rows that an interface file gives its lists: the toolkit's loader only fills lists of its own.
#pragma once

#include <map>

#include <QtCore/QString>
#include <QtCore/QStringList>

class QByteArray;

namespace vm {

/// The items of every QListWidget in an interface file, by the name of the widget.
using ListTexts = std::map<QString, QStringList>;
ListTexts ListTextsOf(const QByteArray& file);

} // namespace vm
