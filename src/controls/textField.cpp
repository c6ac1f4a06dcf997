#include "controls/textField.h"

#include <algorithm>
#include <limits>
#include <string>

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTextEdit>

#include "core/macroman.h"
#include "wnd/TextRules.h"
#include "wnd/controlText.h"
#include "wnd/nativeControl.h"

namespace vm {
namespace {

// One line. It may hold line feeds that a program set.
class LineField : public TextField {
public:
    explicit LineField(QLineEdit& line) : m_line(line) {}

    TextRange Selection() const override {
        if (!m_line.hasSelectedText())
            return {Host(m_line.cursorPosition()), Host(m_line.cursorPosition())};
        return {Host(m_line.selectionStart()), Host(m_line.selectionEnd())};
    }
    void Select(TextRange range, bool) override {
        const int first = Native(range.first);
        m_line.setSelection(first, Native(range.end) - first);
        if (range.first == range.end) m_line.setCursorPosition(first);
    }
    void Replace(const QString& text) override { m_line.insert(text); }
    void SetLimit(int characters) override { SetTextLimit(m_line, characters); }
    int Limit() const override { return TextLimit(m_line); }

    int Length() const override { return HostLength(m_line.text()); }
    int LineCount() const override { return 1; }
    QString Line(int) const override { return m_line.text(); }
    int LineStart(int) const override { return 0; }
    int LineAt(int) const override { return 0; }
    void Scroll(int, int) override {}
    int FirstVisible() const override {
        return Host(m_line.cursorPositionAt({0, m_line.height() / 2}));
    }

    bool CanUndo() const override { return m_line.isUndoAvailable(); }
    void Undo() override { m_line.undo(); }
    // Setting a text is what the toolkit does not undo.
    void ForgetUndo() override {
        const TextRange selection = Selection();
        const bool modified = m_line.isModified();
        m_line.setText(m_line.text());
        Select(selection, false);
        m_line.setModified(modified);
    }
    void Copy() override { m_line.copy(); }
    bool IsModified() const override { return m_line.isModified(); }
    void SetModified(bool modified) override { m_line.setModified(modified); }
    bool IsReadOnly() const override { return m_line.isReadOnly(); }
    void SetReadOnly(bool readOnly) override { m_line.setReadOnly(readOnly); }

private:
    int Host(int position) const { return HostLength(m_line.text().left(position)); }
    int Native(int position) const {
        return static_cast<int>(Beginning(m_line.text(), position).size());
    }

    QLineEdit& m_line;
};

// Many lines: the blocks of the document.
template <class Edit>
class DocumentField : public TextField {
public:
    explicit DocumentField(Edit& edit) : m_edit(edit), m_document(*edit.document()) {}

    TextRange Selection() const override {
        const QTextCursor cursor = m_edit.textCursor();
        return {Host(cursor.selectionStart()), Host(cursor.selectionEnd())};
    }
    void Select(TextRange range, bool scroll) override {
        QTextCursor cursor(&m_document);
        cursor.setPosition(Native(range.first));
        cursor.setPosition(Native(range.end), QTextCursor::KeepAnchor);
        const int line = m_edit.verticalScrollBar()->value();
        m_edit.setTextCursor(cursor);
        if (!scroll) m_edit.verticalScrollBar()->setValue(line);
    }
    void Replace(const QString& text) override {
        const TextRange selection = Selection();
        const int limit = TextRules::Of(&m_edit)->rules.limit;
        const int room = limit - (Length() - (selection.end - selection.first));
        m_edit.insertPlainText(limit > 0 ? Beginning(text, room) : text);
        m_edit.ensureCursorVisible();
    }
    void SetLimit(int characters) override {
        TextRules::Of(&m_edit)->rules.limit = std::max(characters, 0);
    }
    int Limit() const override {
        const int limit = TextRules::Of(&m_edit)->rules.limit;
        return limit > 0 ? limit : std::numeric_limits<int>::max();
    }

    int Length() const override { return Host(m_document.characterCount() - 1); }
    int LineCount() const override { return m_document.blockCount(); }
    QString Line(int line) const override { return m_document.findBlockByNumber(line).text(); }
    int LineStart(int line) const override { return Start(m_document.findBlockByNumber(line)); }
    int LineAt(int character) const override {
        int first = 0;
        int last = LineCount() - 1;
        while (first < last) {
            const int middle = (first + last + 1) / 2;
            if (LineStart(middle) <= character)
                first = middle;
            else
                last = middle - 1;
        }
        return first;
    }
    void Scroll(int lines, int characters) override {
        if (qobject_cast<QPlainTextEdit*>(&m_edit))
            m_edit.verticalScrollBar()->setValue(RowOfLine(FirstVisible() + lines));
        else
            Move(*m_edit.verticalScrollBar(), lines, m_edit.fontMetrics().lineSpacing());
        Move(*m_edit.horizontalScrollBar(), characters, m_edit.fontMetrics().averageCharWidth());
    }
    int FirstVisible() const override { return m_edit.cursorForPosition({0, 0}).blockNumber(); }

    bool CanUndo() const override { return m_document.isUndoAvailable(); }
    void Undo() override { m_edit.undo(); }
    // The toolkit counts changes from the beginning of what can be undone.
    void ForgetUndo() override {
        const bool modified = m_document.isModified();
        m_document.clearUndoRedoStacks();
        m_document.setModified(!modified);
        m_document.setModified(modified);
    }
    void Copy() override { m_edit.copy(); }
    bool IsModified() const override { return m_document.isModified(); }
    void SetModified(bool modified) override { m_document.setModified(modified); }
    bool IsReadOnly() const override { return m_edit.isReadOnly(); }
    void SetReadOnly(bool readOnly) override { m_edit.setReadOnly(readOnly); }

private:
    static int Start(const QTextBlock& block) { return block.position() + block.blockNumber(); }
    // A line may be wrapped to several rows.
    int RowOfLine(int line) const {
        const int last = m_document.blockCount() - 1;
        return m_document.findBlockByNumber(std::clamp(line, 0, last)).firstLineNumber();
    }
    static void Move(QScrollBar& bar, int count, int size) {
        bar.setValue(bar.value() + count * size);
    }

    int Host(int position) const { return position + m_document.findBlock(position).blockNumber(); }
    int Native(int position) const {
        const QTextBlock block = m_document.findBlockByNumber(LineAt(position));
        return block.position() + std::min(position - Start(block), block.length() - 1);
    }

    Edit& m_edit;
    QTextDocument& m_document;
};

QLineEdit* LineIn(QWidget* view) {
    if (auto* combo = qobject_cast<QComboBox*>(view)) return combo->lineEdit();
    if (auto* spin = qobject_cast<QAbstractSpinBox*>(view)) return spin->findChild<QLineEdit*>();
    return qobject_cast<QLineEdit*>(view);
}

} // namespace

std::unique_ptr<TextField> TextField::In(QWidget* view) {
    if (QLineEdit* line = LineIn(view)) return std::make_unique<LineField>(*line);
    if (auto* plain = qobject_cast<QPlainTextEdit*>(view))
        return std::make_unique<DocumentField<QPlainTextEdit>>(*plain);
    if (auto* rich = qobject_cast<QTextEdit*>(view))
        return std::make_unique<DocumentField<QTextEdit>>(*rich);
    return nullptr;
}

std::unique_ptr<TextField> TextField::Of(const CWnd& wnd) {
    return In(ControlOf<QWidget>(wnd));
}

QString FieldText(const char* text) {
    return FromMacRoman(text ? text : "").remove(u'\r');
}

TextRange RangeIn(const TextField& field, int first, int end) {
    const int length = field.Length();
    if (first < 0) {
        const int caret = field.Selection().end;
        return {caret, caret};
    }
    first = std::min(first, length);
    return {first, end < 0 ? length : std::min(end, length)};
}

} // namespace vm
