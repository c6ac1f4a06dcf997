#include "controls/typingRules.h"

#include <QtGui/QValidator>
#include <QtWidgets/QLineEdit>

#include "wnd/controlText.h"

namespace vm {
namespace {

// The rules of a line. What the program sets passes.
class TypedLine : public QValidator {
public:
    TypedLine(const TypingRules& rules, QObject* line) : QValidator(line), m_rules(rules) {}

    State validate(QString& text, int&) const override {
        if (ProgramChange::InProgress()) return Acceptable;
        const QString allowed = Allowed(m_rules, text);
        if (allowed.size() != text.size()) return Invalid; // or the caret would be elsewhere
        text = allowed;
        return Acceptable;
    }

private:
    TypingRules m_rules;
};

} // namespace

bool SetTypingRules(QWidget& edit, const TypingRules& rules) {
    if (auto* line = qobject_cast<QLineEdit*>(&edit)) {
        line->setValidator(new TypedLine(rules, line));
        return true;
    }
    TextRules* const text = TextRules::Of(&edit);
    if (text) text->rules = rules;
    return text != nullptr;
}

bool SetTypingRule(QWidget& edit, const QString& name) {
    TypingRules rules;
    rules.digitsOnly = name == QLatin1String("digits");
    if (name == QLatin1String("upper")) rules.letters = TypingRules::Letters::Upper;
    if (name == QLatin1String("lower")) rules.letters = TypingRules::Letters::Lower;
    const bool isKnown = rules.digitsOnly || rules.letters != TypingRules::Letters::AsTyped;
    return isKnown && SetTypingRules(edit, rules);
}

} // namespace vm
