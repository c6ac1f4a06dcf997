// The dialogs of the sample as they are painted, against the dialog units of their script: each control
// in its place, and no letters cut off, at three sizes of the desktop's font.
#include <filesystem>

#include <gtest/gtest.h>

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QSlider>

#include "PaintedParts.h"
#include "ScriptLayout.h"
#include "dialogs/DialogsFixture.h"

namespace {

constexpr int kNearly = 2;    // pixels
constexpr int kBevel = 4;     // pixels at the ends of a button that letters leave free
constexpr int kRoom = 300;    // pixels more than any text needs
const QString kSample = "Äg"; // the highest and the lowest letters

enum Edges { kLeft = 1, kRight = 2, kTop = 4, kBottom = 8, kAll = 15 };

/// Which edges of its rectangle a control paints at: letters and grooves are smaller than their place.
int PaintedEdges(const QWidget& widget) {
    if (widget.inherits("QRadioButton") || widget.inherits("QCheckBox")) return kLeft;
    if (qobject_cast<const QGroupBox*>(&widget)) return kLeft | kRight | kBottom;
    if (qobject_cast<const QSlider*>(&widget)) return kLeft | kRight;
    const auto* label = qobject_cast<const QLabel*>(&widget);
    return label && label->pixmap().isNull() ? kLeft : kAll;
}

bool IsNear(const QRect& a, const QRect& b, int edges = kAll) {
    const auto near = [&](int edge, int x, int y) {
        return !(edges & edge) || std::abs(x - y) <= kNearly;
    };
    return near(kLeft, a.left(), b.left()) && near(kTop, a.top(), b.top()) &&
           near(kRight, a.right(), b.right()) && near(kBottom, a.bottom(), b.bottom());
}

std::string Text(const QRect& rect) {
    return vm::Format("%d,%d %dx%d", rect.x(), rect.y(), rect.width(), rect.height());
}

QString WordsOf(const QWidget& widget) {
    return widget.property("title").toString() + widget.property("text").toString();
}

/// What the program would fill, so that there is something to see.
void Fill(QWidget& widget) {
    auto* label = qobject_cast<QLabel*>(&widget);
    if (label && label->text().isEmpty()) {
        QPixmap picture(label->size());
        picture.fill(Qt::red);
        label->objectName().contains("COUNT") ? label->setText(kSample) : label->setPixmap(picture);
    }
    if (auto* line = qobject_cast<QLineEdit*>(&widget)) line->setText(kSample);
    if (auto* box = qobject_cast<QComboBox*>(&widget)) box->addItem(kSample);
}

class SketchDialogs : public DialogsFixture, public testing::WithParamInterface<int> {
protected:
    SketchDialogs() : m_font(QApplication::font()) {
        std::filesystem::copy(SKETCH_RESOURCES,
                              std::filesystem::path(bundle.PathOf("DLG_1")).parent_path(),
                              std::filesystem::copy_options::recursive);
        QFont font = m_font;
        font.setPointSize(GetParam());
        QApplication::setFont(font); // for windows that are made from now on
        top.Create("", "Top", WS_VISIBLE, RECT{80, 90, 880, 690}, nullptr, 0);
    }
    ~SketchDialogs() override {
        top.DestroyWindow();
        QApplication::setFont(m_font);
    }

    QWidget* WidgetOf(const ScriptControl& control) {
        // Keys that would lead nowhere are taken out.
        const QString name = QString::fromStdString(control.name).remove('&');
        for (QWidget* child : dialog.view->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            if (child->objectName() == name ||
                (!child->objectName().startsWith("ID") && WordsOf(*child).remove('&') == name))
                return child;
        return nullptr;
    }
    /// A control, or a field with its arrows.
    void CheckPlace(const QList<QWidget*>& widgets, const QRect& must) {
        const QRect painted = PaintedBy(*dialog.view, widgets);
        const int edges = PaintedEdges(*widgets.front());
        EXPECT_TRUE(must.contains(painted)) << Text(painted) << " is beyond " << Text(must);
        EXPECT_TRUE(IsNear(painted, must, edges)) << Text(painted) << " is not " << Text(must);
        if (widgets.size() > 1) return;
        const QRect is = widgets.front()->geometry();
        EXPECT_TRUE(IsNear(is, must)) << Text(is) << " is not " << Text(must);
    }
    void CheckLetters(QWidget& widget) {
        const bool isField = qobject_cast<QLineEdit*>(&widget) || qobject_cast<QComboBox*>(&widget);
        if (!isField && WordsOf(widget).isEmpty()) return;
        const QRect place = widget.geometry();
        const QRect letters = LettersOf(*dialog.view, widget);
        if (widget.inherits("QPushButton")) {
            EXPECT_TRUE(place.adjusted(kBevel, kBevel, -kBevel, -kBevel).contains(letters))
                << Text(letters) << " is over the frame " << Text(place);
        }
        // The arrow of a combo box has the colour of its letters, and stays where it is.
        widget.resize(place.size() + QSize(isField ? 0 : kRoom, kRoom));
        const QSize whole = LettersOf(widget, widget).size();
        widget.setGeometry(place);
        EXPECT_FALSE(whole.isEmpty());
        EXPECT_EQ(letters.size(), whole) << "letters are cut off";
    }
    void Check(const std::vector<ScriptControl>& controls) {
        const QFont& font = dialog.view->font();
        for (std::size_t i = 0; i < controls.size(); ++i) {
            SCOPED_TRACE(controls[i].name);
            QWidget* widget = WidgetOf(controls[i]);
            ASSERT_TRUE(widget);
            CheckLetters(*widget);
            QList<QWidget*> together = {widget};
            const QRect units = controls[i].units;
            if (i + 1 < controls.size() && controls[i + 1].isArrows)
                together.append(WidgetOf(controls[++i]));
            CheckPlace(together, InPixels(units, font));
        }
    }

    RecordingWindow top;
    TestDialog dialog;

private:
    const QFont m_font;
};

} // namespace

TEST_P(SketchDialogs, ArePaintedAsTheirScriptSays) {
    const std::vector<ScriptDialog> dialogs = ReadDialogs(SKETCH_SCRIPT, SKETCH_HEADER);
    ASSERT_EQ(dialogs.size(), 6u);
    for (const ScriptDialog& script : dialogs) {
        SCOPED_TRACE(script.symbol);
        ASSERT_TRUE(dialog.Create(script.number, &top));
        ASSERT_EQ(dialog.view->font().pointSize(), GetParam());
        const QList<QWidget*> children =
            dialog.view->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
        ASSERT_EQ(static_cast<std::size_t>(children.size()), script.controls.size());
        for (QWidget* child : children) Fill(*child);
        dialog.view->grab(); // the style paints the marks of sliders differently a second time
        EXPECT_EQ(dialog.view->size(),
                  InPixels({{0, 0}, script.units}, dialog.view->font()).size());
        Check(script.controls);
        dialog.DestroyWindow();
    }
}

INSTANTIATE_TEST_SUITE_P(FontSizes, SketchDialogs, testing::Values(9, 12, 16),
                         testing::PrintToStringParamName());
