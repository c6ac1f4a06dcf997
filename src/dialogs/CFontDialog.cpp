#include <vmcore/dialogs/CFontDialog.h>

#include <algorithm>
#include <cstring>

#include <QtWidgets/QFontDialog>

#include "dialogs/fontChoice.h"
#include "dialogs/toolkitDialog.h"

namespace {

constexpr std::size_t kStyleSize = 32;
constexpr int kTenths = 10;

void LimitSize(const CHOOSEFONT& record, LOGFONT& font) {
    if (!(record.Flags & CF_LIMITSIZE) || record.nSizeMax < record.nSizeMin) return;
    font.lfHeight = std::clamp(font.lfHeight, record.nSizeMin, record.nSizeMax);
}

void Deliver(CHOOSEFONT& record, const QFont& font) {
    LOGFONT& chosen = *record.lpLogFont;
    const LOGFONT before = chosen;
    vm::TakeFont(chosen, font);
    LimitSize(record, chosen);
    if (!(record.Flags & CF_EFFECTS)) {
        chosen.lfUnderline = before.lfUnderline;
        chosen.lfStrikeOut = before.lfStrikeOut;
    }
    record.iPointSize = chosen.lfHeight * kTenths;
    if (!record.lpszStyle) return;
    const QByteArray style = font.styleName().toUtf8().left(kStyleSize - 1);
    std::memcpy(record.lpszStyle, style.constData(), static_cast<std::size_t>(style.size()) + 1);
}

} // namespace

BOOL ChooseFont(CHOOSEFONT* record) {
    if (!vm::CanShowDialog("ChooseFont")) return FALSE;
    if (!record || !record->lpLogFont) {
        vm::SetDialogError(CDERR_INITIALIZATION);
        return FALSE;
    }
    const QPointer<QFontDialog> dialog = new QFontDialog(vm::DialogParent(record->hwndOwner));
    dialog->setOption(QFontDialog::ScalableFonts);
    dialog->setOption(QFontDialog::MonospacedFonts, record->Flags & CF_FIXEDPITCHONLY);
    if (record->Flags & CF_INITTOLOGFONTSTRUCT)
        dialog->setCurrentFont(vm::FontOf(*record->lpLogFont));
    const bool accepted = vm::RunToolkitDialog(dialog);
    if (accepted) Deliver(*record, dialog->selectedFont());
    delete dialog.data();
    return accepted;
}

CFontDialog::CFontDialog(LOGFONT* initial, DWORD flags, CDC*, CWnd* parent)
    : CDialog(0, parent), m_cf{}, m_lf{}, m_initial(initial), m_style{} {
    m_cf.lStructSize = sizeof m_cf;
    m_cf.lpLogFont = &m_lf;
    m_cf.lpszStyle = m_style;
    m_cf.Flags = flags;
    if (!initial) return;
    m_lf = *initial;
    m_cf.Flags |= CF_INITTOLOGFONTSTRUCT;
    m_cf.iPointSize = std::abs(initial->lfHeight) * kTenths;
}

int CFontDialog::DoModal() {
    if (parentWnd) m_cf.hwndOwner = parentWnd->view;
    if (!ChooseFont(&m_cf)) return IDCANCEL;
    if (m_initial) *m_initial = *m_cf.lpLogFont;
    m_lf = *m_cf.lpLogFont;
    return IDOK;
}

void CFontDialog::GetCurrentFont(LOGFONT* out) const {
    if (out) *out = m_lf;
}

CString CFontDialog::GetFaceName() const {
    char name[LF_FACESIZE + 1] = "";
    std::memcpy(name, m_lf.lfFaceName, LF_FACESIZE);
    return CString(name);
}

CString CFontDialog::GetStyleName() const {
    return m_cf.lpszStyle ? CString(m_cf.lpszStyle) : CString();
}

IMPLEMENT_DYNAMIC(CFontDialog, CDialog)
