// Combo boxes: how they are made, their entries and selection. Their field, their list and their messages
// are in CComboBoxMessages.cpp.
#include <vmcore/controls/CComboBox.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>

#include <QtWidgets/QComboBox>

#include <vmcore/app/messages.h>

#include "controls/comboEntries.h"
#include "core/macroman.h"
#include "wnd/controlText.h"
#include "wnd/nativeControl.h"

namespace {

constexpr DWORD kTypes = CBS_DROPDOWNLIST; // the bits of the three kinds

std::optional<vm::ComboEntries> EntriesOf(const CComboBox& object) {
    auto* combo = vm::ControlOf<QComboBox>(object);
    return combo ? std::optional<vm::ComboEntries>(*combo) : std::nullopt;
}

QString TextOf(const char* text) {
    return vm::FromMacRoman(text ? text : "");
}

std::optional<std::string> EntryText(const CComboBox& object, int index) {
    const auto* combo = vm::ControlOf<QComboBox>(object);
    if (!combo || index < 0 || index >= combo->count()) return std::nullopt;
    return vm::ToMacRomanLossy(combo->itemText(index));
}

// Hosts give the height of the open list with the field's.
void TakeHeight(QComboBox& combo) {
    const int height = combo.height();
    const int field = combo.sizeHint().height();
    if (height <= field) return;
    combo.resize(combo.width(), field);
    combo.setMaxVisibleItems(std::max(1, (height - field) / combo.fontMetrics().height()));
}

} // namespace

BOOL CComboBox::Create(DWORD createStyle, const RECT& rect, CWnd* parent, UINT id) {
    const DWORD type = createStyle & kTypes;
    auto* combo = new QComboBox;
    combo->setEditable(type == CBS_SIMPLE || type == CBS_DROPDOWN);
    combo->setProperty(vm::kSortProperty, (createStyle & CBS_SORT) != 0);
    if (!vm::AdoptControl(*this, combo, parent, rect, createStyle, id)) return FALSE;
    TakeHeight(*combo);
    return TRUE;
}

int CComboBox::AddString(const char* entry) {
    auto entries = EntriesOf(*this);
    return entries ? entries->Add(TextOf(entry)) : CB_ERR;
}

int CComboBox::InsertString(int index, const char* entry) {
    auto entries = EntriesOf(*this);
    return entries ? entries->Insert(index, TextOf(entry)) : CB_ERR;
}

int CComboBox::DeleteString(int index) {
    auto entries = EntriesOf(*this);
    return entries && entries->Remove(index) ? entries->Count() : CB_ERR;
}

void CComboBox::ResetContent() {
    if (auto entries = EntriesOf(*this)) entries->Clear();
}

int CComboBox::GetCount() const {
    const auto entries = EntriesOf(*this);
    return entries ? entries->Count() : CB_ERR;
}

int CComboBox::GetLBTextLen(int index) const {
    const auto entry = EntryText(*this, index);
    return entry ? static_cast<int>(entry->size()) : CB_ERR;
}

int CComboBox::GetLBText(int index, char* buffer) const {
    const auto entry = EntryText(*this, index);
    if (!entry) return CB_ERR;
    if (buffer) std::strcpy(buffer, entry->c_str());
    return static_cast<int>(entry->size());
}

void CComboBox::GetLBText(int index, CString& result) const {
    if (const auto entry = EntryText(*this, index)) result = entry->c_str();
}

int CComboBox::FindString(int after, const char* start) const {
    const auto entries = EntriesOf(*this);
    return entries ? entries->Find(after, TextOf(start), false) : CB_ERR;
}

int CComboBox::FindStringExact(int after, const char* whole) const {
    const auto entries = EntriesOf(*this);
    return entries ? entries->Find(after, TextOf(whole), true) : CB_ERR;
}

int CComboBox::Dir(UINT, const char*) {
    return CB_ERR;
}

DWORD_PTR CComboBox::GetItemData(int index) const {
    const auto entries = EntriesOf(*this);
    return entries && entries->Has(index) ? entries->Data(index) : static_cast<DWORD_PTR>(CB_ERR);
}

int CComboBox::SetItemData(int index, DWORD_PTR data) {
    auto entries = EntriesOf(*this);
    if (!entries || !entries->Has(index)) return CB_ERR;
    entries->SetData(index, data);
    return 0;
}

void* CComboBox::GetItemDataPtr(int index) const {
    return reinterpret_cast<void*>(GetItemData(index));
}
int CComboBox::SetItemDataPtr(int index, void* data) {
    return SetItemData(index, reinterpret_cast<DWORD_PTR>(data));
}

int CComboBox::GetCurSel() const {
    const auto* combo = vm::ControlOf<QComboBox>(*this);
    return combo ? vm::SelectedEntry(*combo) : CB_ERR;
}

int CComboBox::SetCurSel(int index) {
    auto entries = EntriesOf(*this);
    if (!entries) return CB_ERR;
    entries->Select(index);
    return entries->Has(index) ? index : CB_ERR;
}

int CComboBox::SelectString(int after, const char* start) {
    const int found = FindString(after, start);
    return found == CB_ERR ? CB_ERR : SetCurSel(found);
}
