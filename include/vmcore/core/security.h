// The security record that creation functions accept and never look at.
#pragma once

#include <vmcore/core/types.h>

struct _SECURITY_ATTRIBUTES {
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
};
using SECURITY_ATTRIBUTES = _SECURITY_ATTRIBUTES;
using LPSECURITY_ATTRIBUTES = _SECURITY_ATTRIBUTES*;
