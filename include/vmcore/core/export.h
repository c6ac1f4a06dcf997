// The mark of everything that the shared library exports.
#pragma once

#if defined(VMCORE_STATIC)
#define VM_API
#else
#define VM_API __attribute__((visibility("default")))
#endif
