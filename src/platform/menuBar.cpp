#include "platform/menuBar.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QMenuBar>

namespace vm {

PlugInsHidden::PlugInsHidden() : m_folders(QCoreApplication::libraryPaths()) {
    QCoreApplication::setLibraryPaths({});
}

PlugInsHidden::~PlugInsHidden() {
    QCoreApplication::setLibraryPaths(m_folders);
}

QMenuBar* MakeMenuBar(QWidget* parent) {
    const PlugInsHidden hidden;
    return new QMenuBar(parent);
}

} // namespace vm
