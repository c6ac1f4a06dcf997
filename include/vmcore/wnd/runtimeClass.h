// Class records: the name of an object's class, its bases, and how to make another one.
//
//     class Pane : public CWnd {                  IMPLEMENT_DYNCREATE(Pane, CWnd)
//         DECLARE_DYNCREATE(Pane)
//     };                                          if (wnd->IsKindOf(RUNTIME_CLASS(Pane))) ...
//
// Every window class of the library has a record. A record is found by a function of its class, so
// that one class has one record in a program with all its plug-ins; a class without one of its own
// does not compile in RUNTIME_CLASS. There are no archives, and DECLARE_SERIAL with them.
#pragma once

#include <cstddef>

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

class CWnd;

/// What GetRuntimeClass answers. The field order is part of the binary interface.
struct VM_API CRuntimeClass {
    const char* m_lpszClassName = "";
    int m_nObjectSize = 0;
    UINT m_wSchema = 0xFFFF;                         ///< not used
    CWnd* (*m_pfnCreateObject)() = nullptr;          ///< null without DECLARE_DYNCREATE
    CRuntimeClass* (*m_pfnGetBaseClass)() = nullptr; ///< null for CWnd

    CWnd* CreateObject() const; ///< made by new, for the caller to delete; null for other classes
    BOOL IsDerivedFrom(const CRuntimeClass* base) const; ///< also when it is `base` itself
};

#define RUNTIME_CLASS(className) (className::RecordOf##className())

#define DECLARE_DYNAMIC(className)                                                                 \
public:                                                                                            \
    static CRuntimeClass* RecordOf##className();                                                   \
    CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(className)                                                               \
    DECLARE_DYNAMIC(className)                                                                     \
    static CWnd* CreateObject();

#define IMPLEMENT_DYNAMIC(className, baseClass)                                                    \
    VM_IMPLEMENT_RECORD(className, nullptr, &baseClass::RecordOf##baseClass)                       \
    CRuntimeClass* className::GetRuntimeClass() const {                                            \
        return RUNTIME_CLASS(className);                                                           \
    }

#define IMPLEMENT_DYNCREATE(className, baseClass)                                                  \
    VM_IMPLEMENT_RECORD(className, &className::CreateObject, &baseClass::RecordOf##baseClass)      \
    CRuntimeClass* className::GetRuntimeClass() const {                                            \
        return RUNTIME_CLASS(className);                                                           \
    }                                                                                              \
    CWnd* className::CreateObject() {                                                              \
        return new className;                                                                      \
    }

/// Null when the object is of another class; both take a null object.
#define DYNAMIC_DOWNCAST(className, object)                                                        \
    (vm::CheckedDowncast<className>(RUNTIME_CLASS(className), object))
#define STATIC_DOWNCAST(className, object) (static_cast<className*>(object))

// The record itself, constant from the start.
#define VM_IMPLEMENT_RECORD(className, create, base)                                               \
    CRuntimeClass* className::RecordOf##className() {                                              \
        static CRuntimeClass s_record{#className, static_cast<int>(sizeof(className)), 0xFFFF,     \
                                      create, base};                                               \
        return &s_record;                                                                          \
    }

namespace vm {
template <class Class, class Object>
Class* CheckedDowncast(const CRuntimeClass* record, Object* object) {
    return object && object->IsKindOf(record) ? static_cast<Class*>(object) : nullptr;
}
} // namespace vm
