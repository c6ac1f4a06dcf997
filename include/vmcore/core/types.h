// The fixed-width types, handles and macros of the Win32 interfaces as this library defines them.
// Sizes are part of the binary interface between a host, its plug-ins and the library.
#pragma once

#include <cstddef>
#include <cstdint>

#include <vmcore/core/native.h>

struct AccelEntry;

using BOOL = signed char;
using BYTE = unsigned char;
using WORD = unsigned short;
using SHORT = short;
using USHORT = unsigned short;
using INT = int;
using UINT = unsigned int;
using LONG = int;
using ULONG = unsigned int;
using DWORD = unsigned int;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::uintptr_t;
using LRESULT = std::intptr_t;
using COLORREF = std::uint32_t; ///< 0x00BBGGRR
using HRESULT = int;            ///< negative for a failure

using CHAR = char;
using TCHAR = char;
using LPSTR = char*;
using LPCSTR = const char*;
using LPTSTR = char*;
using LPCTSTR = const char*;
using LPVOID = void*;
using LPCVOID = const void*;
using LPBYTE = BYTE*;
using LPWORD = WORD*;
using LPDWORD = DWORD*;
using LPLONG = LONG*;
using LPBOOL = BOOL*;

using HANDLE = void*;    ///< a file (its descriptor), an event, a find handle: see the function
using HINSTANCE = void*; ///< an instance record, or a loaded library
using HMODULE = void*;
using HWND = NSView*;             ///< the native view; of a top-level window, its content view
using HMENU = NSMenu*;            ///< the native menu
using HDC = vm::GraphicsContext*; ///< the graphics context that a CDC draws into
using HGDIOBJ = void*;            ///< pointer to a GDI object's record, as the five below
using HPEN = void*;
using HBRUSH = void*;
using HFONT = void*;
using HBITMAP = void*;
using HRGN = void*;
using HICON = void*;
using HCURSOR = void*;
using HACCEL = const AccelEntry*; ///< an accelerator table, see CMenu.h
using HDROP = NSArray*;           ///< the paths of WM_DROPFILES, see DragQueryFile

static_assert(sizeof(BOOL) == 1 && sizeof(WORD) == 2 && sizeof(DWORD) == 4 && sizeof(LONG) == 4);
static_assert(sizeof(WPARAM) == sizeof(void*) && sizeof(LRESULT) == sizeof(void*));

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif
#ifndef NULL
#define NULL 0
#endif

// Ported declarations carry these calling-convention words; they mean nothing here.
#define WINAPI
#define CALLBACK
#define APIENTRY
#define PASCAL
#define AFXAPI
#define afx_msg

#define MAKEINTRESOURCE(id) (reinterpret_cast<const char*>(static_cast<std::uintptr_t>(id)))

constexpr WORD LOWORD(std::uintptr_t value) {
    return static_cast<WORD>(value & 0xFFFF);
}
constexpr WORD HIWORD(std::uintptr_t value) {
    return static_cast<WORD>((value >> 16) & 0xFFFF);
}
constexpr BYTE LOBYTE(std::uintptr_t value) {
    return static_cast<BYTE>(value & 0xFF);
}
constexpr BYTE HIBYTE(std::uintptr_t value) {
    return static_cast<BYTE>((value >> 8) & 0xFF);
}

/// Two 16-bit halves in one word, `low` in the low bits; the upper 32 bits are 0.
constexpr std::uintptr_t MAKELONG(std::intptr_t low, std::intptr_t high) {
    return (static_cast<std::uintptr_t>(high) & 0xFFFF) << 16 |
           (static_cast<std::uintptr_t>(low) & 0xFFFF);
}
constexpr LPARAM MAKELPARAM(std::intptr_t low, std::intptr_t high) {
    return MAKELONG(low, high);
}
constexpr WPARAM MAKEWPARAM(std::intptr_t low, std::intptr_t high) {
    return MAKELONG(low, high);
}

constexpr COLORREF RGB(unsigned red, unsigned green, unsigned blue) {
    return (red & 0xFF) | (green & 0xFF) << 8 | (blue & 0xFF) << 16;
}
constexpr BYTE GetRValue(COLORREF color) {
    return static_cast<BYTE>(color);
}
constexpr BYTE GetGValue(COLORREF color) {
    return static_cast<BYTE>(color >> 8);
}
constexpr BYTE GetBValue(COLORREF color) {
    return static_cast<BYTE>(color >> 16);
}

constexpr HRESULT S_OK = 0;
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005);
constexpr bool SUCCEEDED(HRESULT result) {
    return result >= 0;
}
constexpr bool FAILED(HRESULT result) {
    return result < 0;
}

constexpr int MAX_PATH = 256; ///< bytes of every path buffer, the terminator included
