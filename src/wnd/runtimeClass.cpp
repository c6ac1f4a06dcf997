// Class records: that of every window, and the walk from a class to its bases.
#include <vmcore/wnd/runtimeClass.h>

#include <vmcore/wnd/CWnd.h>

VM_IMPLEMENT_RECORD(CWnd, &CWnd::CreateObject, nullptr)

CRuntimeClass* CWnd::GetRuntimeClass() const {
    return RUNTIME_CLASS(CWnd);
}
CWnd* CWnd::CreateObject() {
    return new CWnd;
}
BOOL CWnd::IsKindOf(const CRuntimeClass* record) const {
    return GetRuntimeClass()->IsDerivedFrom(record);
}

CWnd* CRuntimeClass::CreateObject() const {
    return m_pfnCreateObject ? m_pfnCreateObject() : nullptr;
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const {
    const CRuntimeClass* record = this;
    while (record && record != base)
        record = record->m_pfnGetBaseClass ? record->m_pfnGetBaseClass() : nullptr;
    return record != nullptr;
}
