// Interface files that hold a menu.
#include <QtCore/QCoreApplication>
#include <QtGui/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include "controls/interfaceFile.h"
#include "controls/menuRegistry.h"
#include "core/log.h"

namespace vm {
namespace {

// "Save\tCtrl+S" as a text is the same as the text "Save" with that shortcut.
void TakeShortcutFromText(QAction* item) {
    const qsizetype tab = item->text().indexOf(QLatin1Char('\t'));
    if (tab < 0) return;
    const QKeySequence keys =
        QKeySequence::fromString(item->text().mid(tab + 1), QKeySequence::PortableText);
    if (keys.isEmpty() || keys[0].key() == Qt::Key_unknown) return;
    item->setShortcut(keys);
    item->setText(item->text().left(tab));
}

void PrepareItems(QMenu* menu) {
    for (QAction* item : menu->actions()) {
        if (QMenu* sub = item->menu()) {
            PrepareItems(sub);
            continue;
        }
        PrepareItem(item);
        TakeShortcutFromText(item);
    }
}

// The bar goes on to own the menus; the new menu shows them and owns the bar.
QMenu* MenuOfBar(QMenuBar* bar) {
    auto* menu = new QMenu(bar->objectName());
    for (QAction* item : bar->actions()) {
        bar->removeAction(item);
        menu->addAction(item);
    }
    bar->setParent(menu);
    bar->hide();
    return menu;
}

} // namespace

QMenu* LoadMenuFile(const std::string& name) {
    if (!QCoreApplication::instance()) {
        LogAboutInterfaceFile(name, "menus cannot be loaded before the application is made");
        return nullptr;
    }
    QWidget* root = LoadInterfaceFile(name);
    if (!root) return nullptr;
    auto* bar = qobject_cast<QMenuBar*>(root);
    QMenu* menu = bar ? MenuOfBar(bar) : qobject_cast<QMenu*>(root);
    if (menu) {
        PrepareItems(menu);
        return menu;
    }
    Log(LogModule::Controls,
        "interface file %s: the root of a menu file must be a QMenuBar or a QMenu, not a %s",
        InterfaceFilePath(name).c_str(), root->metaObject()->className());
    delete root;
    return nullptr;
}

} // namespace vm
