// What a user may type into a text of many lines: how much, and which characters. The toolkit has
// such rules for fields of one line only.
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

class QTextDocument;
class QWidget;

namespace vm {

struct TypingRules {
    enum class Letters { AsTyped, Upper, Lower };
    int limit = 0; ///< 0 for none; a line's end counts as two
    Letters letters = Letters::AsTyped;
    bool digitsOnly = false;
};

/// As it may stand there; line ends are the toolkit's.
QString Allowed(const TypingRules& rules, const QString& typed);
/// As many as hosts count: two for a line's end.
int HostLength(const QString& text);
/// The beginning of the text that a host counts as `room` characters at most.
QString Beginning(const QString& text, int room);

/// A child of the edit. It mends what the user typed before others hear of the change, when it was made
/// before they connected. What the program sets stays as it is. Shift and Return end a line as Return does;
/// Ctrl and Tab write a tab where Tab leads on.
class TextRules : public QObject {
public:
    /// Of a QPlainTextEdit or QTextEdit; made when there are none. Null for other views.
    static TextRules* Of(QWidget* edit);

    TypingRules rules;
    /// The last change left nothing of what was typed.
    bool TookBack() const { return m_tookBack; }

protected:
    bool eventFilter(QObject* edit, QEvent* event) override;

private:
    explicit TextRules(QWidget* edit, QTextDocument* document);
    bool WriteTab();
    void Changed();
    int Mend(int caret);

    QWidget* m_edit;
    QTextDocument* m_document;
    int m_at = 0; // where the last change was
    int m_length = 0;
    bool m_tookBack = false;
};

} // namespace vm
