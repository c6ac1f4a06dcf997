// Menu bars, and what keeps their making quick.
#pragma once

#include <memory>

#include <QtCore/QStringList>

class QMenuBar;
class QWidget;

namespace vm {

/// While one lives the toolkit looks for plug-ins in no folder: some of its objects would load every
/// one of a kind only to find out that they need none. Those loaded already stay.
class PlugInsHidden {
public:
    PlugInsHidden();
    ~PlugInsHidden();
    PlugInsHidden(const PlugInsHidden&) = delete;
    PlugInsHidden& operator=(const PlugInsHidden&) = delete;

private:
    QStringList m_folders;
};

/// A menu bar of `parent`. Its constructor asks the style for the picture of a button that is hardly
/// ever seen; that is a PNG, which the toolkit reads itself, but it loads all picture formats to find
/// that out: a tenth of the time that a small program takes to show its window.
QMenuBar* MakeMenuBar(QWidget* parent);

} // namespace vm
