#include "ScriptLayout.h"

#include <cmath>
#include <fstream>
#include <regex>
#include <sstream>

#include <QtGui/QFontMetrics>

namespace {

constexpr int kClosedCombo = 13; // units; the script's height is that of the open list

std::string ReadAll(const std::string& path) {
    std::stringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

std::string First(const std::string& line, const char* pattern) {
    std::smatch match;
    return std::regex_search(line, match, std::regex(pattern)) ? match.str(1) : "";
}

ScriptControl ReadControl(const std::string& line, const std::smatch& numbers) {
    const auto number = [&](int i) { return std::stoi(numbers.str(i)); };
    const std::string symbol = First(line, "[ ,](ID(?!C_STATIC|I_)\\w+),");
    const bool isCombo = line.find("COMBOBOX") != std::string::npos;
    return {symbol.empty() ? First(line, "\"([^\"]*)\"") : symbol,
            {number(1), number(2), number(3), isCombo ? kClosedCombo : number(4)},
            line.find("updown") != std::string::npos};
}

int Scaled(int units, double base, int parts) {
    return static_cast<int>(std::lround(units * base / parts));
}

} // namespace

std::vector<ScriptDialog> ReadDialogs(const std::string& scriptPath,
                                      const std::string& headerPath) {
    static const std::regex head("^(\\w+) DIALOGEX 0, 0, (\\d+), (\\d+)"),
        four(",(\\d+),(\\d+),(\\d+),(\\d+)(,|$)");
    const std::string header = ReadAll(headerPath);
    std::istringstream script(std::regex_replace(ReadAll(scriptPath), std::regex("\r"), ""));
    std::vector<ScriptDialog> dialogs;
    std::smatch match;
    for (std::string line; std::getline(script, line);) {
        if (std::regex_search(line, match, head))
            dialogs.push_back(
                {match.str(1),
                 std::stoi(First(header, ("#define " + match.str(1) + " +(\\d+)").c_str())),
                 {std::stoi(match.str(2)), std::stoi(match.str(3))},
                 {}});
        else if (!dialogs.empty() && std::regex_search(line, match, four))
            dialogs.back().controls.push_back(ReadControl(line, match));
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
