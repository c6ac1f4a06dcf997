#include "wnd/TextRules.h"

#include <algorithm>

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QTextEdit>

#include "wnd/controlText.h"

namespace vm {
namespace {

bool EndsLine(QChar c) {
    return c == QChar::ParagraphSeparator || c == QChar::LineSeparator || c == u'\n';
}

int DocumentLength(const QTextDocument& document) {
    return document.characterCount() - 1 + document.blockCount() - 1;
}

int CaretOf(QWidget* edit) {
    if (auto* plain = qobject_cast<QPlainTextEdit*>(edit)) return plain->textCursor().position();
    return static_cast<QTextEdit*>(edit)->textCursor().position();
}

} // namespace

QString Allowed(const TypingRules& rules, const QString& typed) {
    QString text = typed;
    if (rules.digitsOnly)
        text.removeIf([](QChar c) { return !EndsLine(c) && (c < u'0' || c > u'9'); });
    if (rules.letters == TypingRules::Letters::Upper) return text.toUpper();
    return rules.letters == TypingRules::Letters::Lower ? text.toLower() : text;
}

int HostLength(const QString& text) {
    return static_cast<int>(text.size() + std::count_if(text.begin(), text.end(), EndsLine));
}

QString Beginning(const QString& text, int room) {
    int end = 0;
    for (; end < text.size(); ++end) {
        room -= EndsLine(text[end]) ? 2 : 1;
        if (room < 0) break;
    }
    return text.left(end);
}

TextRules* TextRules::Of(QWidget* edit) {
    QTextDocument* document = nullptr;
    if (auto* plain = qobject_cast<QPlainTextEdit*>(edit)) document = plain->document();
    if (auto* rich = qobject_cast<QTextEdit*>(edit)) document = rich->document();
    if (!document) return nullptr;
    for (QObject* child : edit->children())
        if (auto* rules = dynamic_cast<TextRules*>(child)) return rules;
    return new TextRules(edit, document);
}

TextRules::TextRules(QWidget* edit, QTextDocument* document)
    : QObject(edit), m_edit(edit), m_document(document), m_length(DocumentLength(*document)) {
    connect(document, &QTextDocument::contentsChange, this,
            [this](int at, int, int) { m_at = at; });
    if (auto* plain = qobject_cast<QPlainTextEdit*>(edit))
        connect(plain, &QPlainTextEdit::textChanged, this, &TextRules::Changed);
    else
        connect(static_cast<QTextEdit*>(edit), &QTextEdit::textChanged, this, &TextRules::Changed);
    edit->installEventFilter(this);
}

bool TextRules::eventFilter(QObject* edit, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (key.key() == Qt::Key_Tab && key.modifiers() == Qt::ControlModifier) return WriteTab();
    if (!key.matches(QKeySequence::InsertLineSeparator)) return false;
    QKeyEvent plain(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    QCoreApplication::sendEvent(edit, &plain);
    return true;
}

bool TextRules::WriteTab() {
    if (!m_edit->property("tabChangesFocus").toBool() || m_edit->property("readOnly").toBool())
        return false;
    return QMetaObject::invokeMethod(m_edit, "insertPlainText",
                                     Q_ARG(QString, QStringLiteral("\t")));
}

void TextRules::Changed() {
    if (!ProgramChange::InProgress()) {
        const int before = m_length;
        const int kept = Mend(CaretOf(m_edit));
        m_tookBack = kept == 0 && DocumentLength(*m_document) == before;
    }
    m_length = DocumentLength(*m_document);
}

// How many characters stay of those between the change and the caret, -1 when all do. A text that is
// too long already may stay so, but not grow.
int TextRules::Mend(int caret) {
    if (caret <= m_at) return -1;
    QTextCursor cursor(m_document);
    cursor.setPosition(m_at);
    cursor.setPosition(caret, QTextCursor::KeepAnchor);
    const QString typed = cursor.selectedText();
    QString kept = Allowed(rules, typed);
    const int others = DocumentLength(*m_document) - HostLength(typed);
    if (rules.limit > 0) kept = Beginning(kept, std::max(rules.limit, m_length) - others);
    if (kept == typed) return -1;
    const ProgramChange mending;
    cursor.joinPreviousEditBlock(); // undone together
    cursor.insertText(kept);
    cursor.endEditBlock();
    return static_cast<int>(kept.size());
}

} // namespace vm
