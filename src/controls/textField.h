// The native text fields, of one line or of many, behind one interface. Characters and lines are counted
// as hosts do: in the text with CR and LF at the ends of lines.
#pragma once

#include <memory>

#include <QtCore/QString>

#include <vmcore/core/types.h>

class CWnd;

namespace vm {

struct TextRange {
    int first;
    int end;
};

/// What members of CEdit do. Nothing here is reported as the user's doing.
class TextField {
public:
    /// The field of the object's view, or inside its combo box or spin box; null without one.
    static std::unique_ptr<TextField> Of(const CWnd& wnd);
    static std::unique_ptr<TextField> In(QWidget* view);
    virtual ~TextField() = default;

    virtual TextRange Selection() const = 0;
    virtual void Select(TextRange range,
                        bool scroll) = 0;          ///< both within the text; caret at the end
    virtual void Replace(const QString& text) = 0; ///< the selection, up to the limit
    virtual void SetLimit(int characters) = 0;
    virtual int Limit() const = 0;

    virtual int Length() const = 0;
    virtual int LineCount() const = 0;
    virtual QString Line(int line) const = 0;
    virtual int LineStart(int line) const = 0;
    virtual int LineAt(int character) const = 0;
    virtual void Scroll(int lines, int characters) = 0;
    virtual int FirstVisible() const = 0;

    virtual bool CanUndo() const = 0;
    virtual void Undo() = 0;
    virtual void ForgetUndo() = 0;
    virtual void Copy() = 0;
    virtual bool IsModified() const = 0;
    virtual void SetModified(bool modified) = 0;
    virtual bool IsReadOnly() const = 0;
    virtual void SetReadOnly(bool readOnly) = 0;
};

/// A host's text as the toolkit holds it: no carriage returns.
QString FieldText(const char* text);
/// The range that a host means: `end` -1 is the end, `first` -1 nothing.
TextRange RangeIn(const TextField& field, int first, int end);

} // namespace vm
