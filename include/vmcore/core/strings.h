// The free string functions: the character functions of Win32 and its C run-time library that are
// missing here, and the conversions between 8-bit text, UTF-16 and platform strings. All of them
// work on single bytes, keep no state (macctime apart) and may be called on any thread.
//
// Null pointers are the caller's fault unless a function says what it does with them.
#pragma once

#include <cstddef>
#include <ctime>

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

VM_API char* lstrcpy(char* dst, const char* src); ///< strcpy

/// Compares without regard to the case of ASCII letters: -1, 0 or 1. Null comes before every string
/// and equals null. Bytes are signed, so those from 0x80 on come before ASCII, and before the end
/// of the shorter string; sorted lists that hosts have saved depend on that order.
VM_API int macstricmp(const char* a, const char* b);
VM_API int macstricmp(const char* a, char* b);
VM_API int macstricmp(char* a, char* b);

/// The same for at most `n` characters. Null pointers decide first; then 0 for no characters.
VM_API int strnicmp(const char* a, const char* b, std::size_t n);

/// Compares bytes exactly, in spite of the name: -1 when the first differing byte of `a` is lower
/// (unsigned), otherwise 1. 0 only for a null pointer or `n` = 0, never for equal blocks: the
/// search goes on behind `n` until a byte differs, and hosts use the answer only to order blocks
/// that are known to differ. The caller answers for there being such a byte in both buffers.
VM_API int macmemicmp(const void* a, const void* b, unsigned int n);

VM_API char* macstrupr(char* s); ///< ASCII letters to upper case in place; returns `s`

/// The first `c`, or null; null for a null `s`. Unlike strchr it does not find the terminator:
/// hosts pass a separator that may be 0 for "none".
VM_API char* _tcschr(const char* s, char c);

VM_API char* CharNext(const char* p); ///< `p` + 1, also at the terminator; null stays null
inline char* AnsiNext(const char* p) {
    return CharNext(p);
}

/// Writes `value` in hexadecimal when `radix` is 16, in decimal for every other radix. Returns
/// `buf`, which needs 12 bytes.
VM_API char* itoa(int value, char* buf, int radix);

/// `a` * `b` / `c`, the product wrapping in 32 bits and the quotient truncated: unlike in Win32 no
/// wider product, no rounding, and `c` = 0 is a fault. Scaled layouts of hosts were drawn with it.
VM_API int MulDiv(int a, int b, int c);

VM_API char* macctime(const std::time_t* t); ///< ctime, in its one static buffer

/// Writes `src` as UTF-16 in host byte order, as far as whole characters fit, and fills the rest of
/// the `dstBytes` bytes with 0: the result is terminated only if there is room. FALSE when `src` is
/// null or not ASCII; `dst` is then untouched.
VM_API BOOL ASCIIToUniCode(const char* src, unsigned char* dst, int dstBytes);

/// Writes `src` (to its first 0) as ASCII, any other character as `\uXXXX` per UTF-16 unit with
/// lower-case digits. What does not fit in `dstSize` bytes with the terminator is left out, never
/// half an escape. Always returns 0.
VM_API int UniCodeToASCII(const unsigned short* src, char* dst, int dstSize);

/// UniCodeToASCII for `src` read as UTF-16 up to its first 0; every other argument is ignored,
/// `usedDefault` too. Always returns 0, not the count of Win32.
VM_API int WideCharToMultiByte(unsigned int codePage, unsigned int flags, const char* src,
                               int srcCount, char* dst, int dstSize, const char* defaultChar,
                               signed char* usedDefault);

/// A copy in the system encoding, UTF-8, to be released with free(). Null for a null `s`, without
/// memory, and for text that is no Unicode (half a surrogate pair).
VM_API char* SafeCFStringCopyToCString(CFStringRef s);
