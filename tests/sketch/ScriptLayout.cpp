#include "ScriptLayout.h"

#include <cmath>

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtGui/QFontMetrics>

namespace {

constexpr int kClosedCombo = 13; // units; the script's height is that of the open list

QString ReadAll(const std::string& path) {
    QFile file(QString::fromStdString(path)); // code page 1252: the same for what is in it
    return file.open(QIODevice::ReadOnly | QIODevice::Text) ? QString::fromLatin1(file.readAll())
                                                            : QString();
}

QString First(const QString& text, const QString& pattern) {
    return QRegularExpression(pattern).match(text).captured(1);
}

ScriptControl ReadControl(const QString& line, const QRegularExpressionMatch& numbers) {
    const auto number = [&](int i) { return numbers.captured(i).toInt(); };
    const QString symbol = First(line, "[ ,](ID(?!C_STATIC|I_)\\w+),");
    const bool isCombo = line.contains(QLatin1String("COMBOBOX"));
    return {(symbol.isEmpty() ? First(line, "\"([^\"]*)\"") : symbol).toStdString(),
            {number(1), number(2), number(3), isCombo ? kClosedCombo : number(4)},
            line.contains(QLatin1String("updown"))};
}

int Scaled(int units, double base, int parts) {
    return static_cast<int>(std::lround(units * base / parts));
}

} // namespace

std::vector<ScriptDialog> ReadDialogs(const std::string& scriptPath,
                                      const std::string& headerPath) {
    static const QRegularExpression head("^(\\w+) DIALOGEX 0, 0, (\\d+), (\\d+)"),
        four(",(\\d+),(\\d+),(\\d+),(\\d+)(,|$)");
    const QString header = ReadAll(headerPath);
    std::vector<ScriptDialog> dialogs;
    for (const QString& line : ReadAll(scriptPath).split('\n')) {
        const auto begin = head.match(line);
        const auto control = four.match(line);
        if (begin.hasMatch())
            dialogs.push_back({begin.captured(1).toStdString(),
                               First(header, "#define " + begin.captured(1) + " +(\\d+)").toInt(),
                               {begin.captured(2).toInt(), begin.captured(3).toInt()},
                               {}});
        else if (!dialogs.empty() && control.hasMatch())
            dialogs.back().controls.push_back(ReadControl(line, control));
    }
    return dialogs;
}

QRect InPixels(const QRect& units, const QFont& font) {
    static const QString letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const QFontMetrics metrics(font);
    const int across = (metrics.horizontalAdvance(letters) / 26 + 1) / 2;
    const QPoint topLeft(Scaled(units.x(), across, 4), Scaled(units.y(), metrics.height(), 8));
    const QPoint end(Scaled(units.x() + units.width(), across, 4),
                     Scaled(units.y() + units.height(), metrics.height(), 8));
    return {topLeft, end - QPoint(1, 1)};
}
