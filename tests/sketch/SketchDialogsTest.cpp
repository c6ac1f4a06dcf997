// The dialogs of the sample as the library shows them, against their dialog units in the script: where
// the controls are, and whether texts have room, at three sizes of the desktop's font.
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>

#include "dialogs/DialogsFixture.h"
#include "rc/DiskFiles.h"
#include "rc/compile.h"

using namespace vm::rc;

namespace {

constexpr int kNoId = 65535;
constexpr int kNearly = 2;          // pixels
constexpr int kClosedCombo = 13;    // units; the script's height is that of the open list
constexpr int kLeastForLetters = 9; // pixels

std::string ReadAll(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<Dialog> ScriptDialogs() {
    const Compiled compiled =
        CompileScript(SKETCH_SCRIPT, ReadAll(SKETCH_SCRIPT), DiskFiles({}), CompileSettings());
    std::vector<Dialog> dialogs;
    for (const Resource& resource : compiled.resources)
        if (const auto* dialog = std::get_if<Dialog>(&resource)) dialogs.push_back(*dialog);
    return dialogs;
}

/// The pixels of units, of which `parts` are `base` pixels.
int Scaled(int units, int base, int parts) {
    return (units * base + parts / 2) / parts;
}

/// The base units of a font, as they are documented: the average of the letters, and the height.
QSize BaseUnits(const QFont& font) {
    const QFontMetrics metrics(font);
    const QString letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    return {(metrics.horizontalAdvance(letters) / 26 + 1) / 2, metrics.height()};
}

QRect InPixels(const Rect& units, QSize base) {
    const QPoint topLeft(Scaled(units.x, base.width(), 4), Scaled(units.y, base.height(), 8));
    const QPoint end(Scaled(units.x + units.cx, base.width(), 4),
                     Scaled(units.y + units.cy, base.height(), 8));
    return {topLeft, end - QPoint(1, 1)};
}

bool IsNear(const QRect& a, const QRect& b) {
    const auto near = [](int x, int y) { return std::abs(x - y) <= kNearly; };
    return near(a.left(), b.left()) && near(a.top(), b.top()) && near(a.right(), b.right()) &&
           near(a.bottom(), b.bottom());
}

/// The arrows stand within their buddy, so that both share its rectangle.
bool SharesARectangle(const Dialog& dialog, const Control& control) {
    for (std::size_t i = 1; i < dialog.controls.size(); ++i)
        if (dialog.controls[i].windowClass == "msctls_updown32" &&
            (&control == &dialog.controls[i] || &control == &dialog.controls[i - 1]))
            return true;
    return false;
}

bool IsTextCut(const QWidget& widget) {
    const QString words = widget.property("text").toString().remove('&');
    const QFontMetrics metrics(widget.font());
    if (const auto* box = qobject_cast<const QGroupBox*>(&widget))
        return metrics.horizontalAdvance(box->title().remove('&')) + kLeastForLetters >
               box->width();
    if (words.isEmpty()) return false;
    if (widget.inherits("QPushButton"))
        return metrics.horizontalAdvance(words) + kLeastForLetters > widget.width() ||
               metrics.height() > widget.height();
    if (widget.inherits("QLabel") || widget.inherits("QRadioButton") ||
        widget.inherits("QCheckBox"))
        return widget.sizeHint().width() > widget.width() || metrics.height() > widget.height();
    return false;
}

class SketchDialogs : public DialogsFixture, public testing::WithParamInterface<int> {
protected:
    SketchDialogs() : m_font(QApplication::font()) {
        const std::filesystem::path folder =
            std::filesystem::path(bundle.PathOf("DLG_1")).parent_path();
        std::filesystem::copy(SKETCH_RESOURCES, folder, std::filesystem::copy_options::recursive);
        QFont font = m_font;
        font.setPointSize(GetParam());
        QApplication::setFont(font); // for windows that are made from now on
        top.Create("", "Top", WS_VISIBLE, RECT{80, 90, 880, 690}, nullptr, 0);
    }
    ~SketchDialogs() override {
        top.DestroyWindow();
        QApplication::setFont(m_font);
    }
    void CheckPlaces(const Dialog& script, QSize base) {
        EXPECT_EQ(dialog.view->size(),
                  InPixels({0, 0, script.rect.cx, script.rect.cy}, base).size());
        for (const Control& control : script.controls) {
            const int id = control.id.number.value_or(kNoId);
            if (id == kNoId || id < 0 || SharesARectangle(script, control)) continue;
            SCOPED_TRACE(control.id.symbol);
            Rect units = control.rect;
            if (control.windowClass == "combobox") units.cy = kClosedCombo;
            const QRect is = dialog.GetDlgItem(id)->view->geometry();
            const QRect must = InPixels(units, base);
            EXPECT_TRUE(IsNear(is, must))
                << is.x() << "," << is.y() << " " << is.width() << "x" << is.height() << " is not "
                << must.x() << "," << must.y() << " " << must.width() << "x" << must.height();
        }
    }

    RecordingWindow top;
    TestDialog dialog;

private:
    const QFont m_font;
};

} // namespace

TEST_P(SketchDialogs, AreAsTheirScriptSays) {
    const std::vector<Dialog> dialogs = ScriptDialogs();
    ASSERT_EQ(dialogs.size(), 6u);
    for (const Dialog& script : dialogs) {
        SCOPED_TRACE(script.head.id.symbol);
        ASSERT_TRUE(dialog.Create(*script.head.id.number, &top));
        ASSERT_EQ(dialog.view->font().pointSize(), GetParam());
        CheckPlaces(script, BaseUnits(dialog.view->font()));
        for (const QWidget* child : dialog.view->findChildren<QWidget*>())
            EXPECT_FALSE(IsTextCut(*child))
                << child->objectName().toStdString() << " "
                << child->property("text").toString().toStdString() << ": "
                << child->sizeHint().width() << " of " << child->width();
        dialog.DestroyWindow();
    }
}

INSTANTIATE_TEST_SUITE_P(FontSizes, SketchDialogs, testing::Values(9, 12, 16),
                         testing::PrintToStringParamName());
