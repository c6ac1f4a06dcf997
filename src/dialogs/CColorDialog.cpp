#include <vmcore/dialogs/CFontDialog.h>

#include <algorithm>
#include <iterator>

#include <QtWidgets/QColorDialog>

#include "dialogs/toolkitDialog.h"

namespace {

constexpr int kCustomColors = 16;
constexpr COLORREF kWhite = 0xFFFFFF;

QPointer<QColorDialog> s_open; // the innermost
const CHOOSECOLOR* s_openFor = nullptr;

QColor ColorOf(COLORREF color) {
    return QColor(GetRValue(color), GetGValue(color), GetBValue(color));
}
COLORREF RecordOf(const QColor& color) {
    return RGB(static_cast<unsigned>(color.red()), static_cast<unsigned>(color.green()),
               static_cast<unsigned>(color.blue()));
}

// The toolkit keeps the colours of all dialogs; each run has those of its record.
class CustomColors {
public:
    explicit CustomColors(COLORREF* colors)
        : m_colors(colors ? colors : CColorDialog::GetSavedCustomColors()) {
        for (int i = 0; i < kCustomColors; ++i)
            QColorDialog::setCustomColor(i, ColorOf(m_colors[i]));
    }
    ~CustomColors() {
        for (int i = 0; i < kCustomColors; ++i)
            m_colors[i] = RecordOf(QColorDialog::customColor(i));
    }
    CustomColors(const CustomColors&) = delete;
    CustomColors& operator=(const CustomColors&) = delete;

private:
    COLORREF* m_colors;
};

} // namespace

BOOL ChooseColor(CHOOSECOLOR* record) {
    if (!vm::CanShowDialog("ChooseColor")) return FALSE;
    if (!record) {
        vm::SetDialogError(CDERR_INITIALIZATION);
        return FALSE;
    }
    const CustomColors custom(record->lpCustColors);
    const QPointer<QColorDialog> dialog = new QColorDialog(vm::DialogParent(record->hwndOwner));
    dialog->setCurrentColor(ColorOf(record->Flags & CC_RGBINIT ? record->rgbResult : 0));
    const QPointer<QColorDialog> outer = s_open;
    const CHOOSECOLOR* const outerRecord = s_openFor;
    s_open = dialog;
    s_openFor = record;
    const bool accepted = vm::RunToolkitDialog(dialog);
    s_open = outer;
    s_openFor = outerRecord;
    if (accepted) record->rgbResult = RecordOf(dialog->selectedColor());
    delete dialog.data();
    return accepted;
}

CColorDialog::CColorDialog(COLORREF initial, DWORD flags, CWnd* parent)
    : CDialog(0, parent), m_cc{} {
    m_cc.lStructSize = sizeof m_cc;
    m_cc.rgbResult = initial;
    m_cc.lpCustColors = GetSavedCustomColors();
    m_cc.Flags = flags | CC_RGBINIT;
}

int CColorDialog::DoModal() {
    if (parentWnd) m_cc.hwndOwner = parentWnd->view;
    return ChooseColor(&m_cc) ? IDOK : IDCANCEL;
}

void CColorDialog::SetCurrentColor(COLORREF color) {
    if (s_open && s_openFor == &m_cc)
        s_open->setCurrentColor(ColorOf(color));
    else
        m_cc.rgbResult = color;
}

COLORREF* CColorDialog::GetSavedCustomColors() {
    static COLORREF s_colors[kCustomColors];
    static const bool s_filled =
        (std::fill(std::begin(s_colors), std::end(s_colors), kWhite), true);
    static_cast<void>(s_filled);
    return s_colors;
}

IMPLEMENT_DYNAMIC(CColorDialog, CDialog)
