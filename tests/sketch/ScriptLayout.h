// The dialogs of a resource script, read as plainly as can be: names and numbers, without styles. And the
// pixels that they stand for, so that tests can tell where a control belongs without asking the library.
#pragma once

#include <string>
#include <vector>

#include <QtCore/QRect>

class QFont;

struct ScriptControl {
    std::string name; ///< the symbol, or the text of one that has no number of its own
    QRect units;      ///< in dialog units; of a combo box without its list
    bool isArrows;    ///< they stand within the field before them
};

struct ScriptDialog {
    std::string symbol;
    int number;
    QSize units;
    std::vector<ScriptControl> controls;
};

/// The dialogs of the script, whose numbers are in the header.
std::vector<ScriptDialog> ReadDialogs(const std::string& scriptPath, const std::string& headerPath);

/// A unit is a quarter of the average width of the font's letters, down an eighth of its height.
QRect InPixels(const QRect& units, const QFont& font);
