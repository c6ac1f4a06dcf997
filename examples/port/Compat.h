// What ported sources need and the library leaves to the standard library: copy this file into a port, take out
// what the program does not use, and include it at the end of stdafx.h. `vmcore port scan` says what is missed;
// docs/porting.md has the rest. Nothing here needs more than the public headers.
#pragma once

#include <afxwin.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>
#include <type_traits>
#include <vector>

// Words of the old compiler and of its run-time library.
#define __cdecl
#define __stdcall
#define DEBUG_NEW new
#define _stricmp macstricmp
#define _tcsicmp macstricmp
#define _tcslen strlen
#define _tcscpy strcpy
#define _ttoi atoi
#define _stprintf sprintf

inline void MessageBeep(UINT) {}

/// Taken and given where the library has a plain SIZE.
class CSize : public tagSIZE {
public:
    CSize() : tagSIZE{0, 0} {}
    CSize(int width, int height) : tagSIZE{width, height} {}
    CSize(tagSIZE size) : tagSIZE(size) {}

    bool operator==(tagSIZE size) const { return cx == size.cx && cy == size.cy; }
    bool operator!=(tagSIZE size) const { return !(*this == size); }
};

/// There are no cursor shapes: work that takes long belongs into a thread.
class CWaitCursor {
public:
    CWaitCursor() {} // not a declaration without use
    void Restore() {}
};

/// text.Format(...) becomes Format(text, ...). CString arguments need a cast: (LPCTSTR)name. Arguments may
/// be pieces of `text` itself.
[[gnu::format(printf, 2, 3)]] inline void Format(CString& text, LPCTSTR format, ...) {
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string made(length > 0 ? static_cast<std::size_t>(length) : 0, ' ');
    if (length > 0) std::vsnprintf(made.data(), made.size() + 1, format, again);
    va_end(again);
    text = made.c_str();
}

/// text.Mid(first, count) becomes Mid(text, first, count); without a count all from `first` on.
inline CString Mid(const CString& text, int first, int count = -1) {
    const int length = text.GetLength();
    if (first < 0) first = 0;
    if (first >= length) return {};
    const CString rest(static_cast<LPCTSTR>(text) + first);
    return count < 0 ? rest : rest.Left(count);
}

/// text.ReverseFind(c) becomes ReverseFind(text, c): the last index, or -1.
inline int ReverseFind(const CString& text, char c) {
    const LPCTSTR begin = text;
    const LPCTSTR found = std::strrchr(begin, c);
    return found ? static_cast<int>(found - begin) : -1;
}

inline CString operator+(const CString& a, LPCTSTR b) {
    CString sum(a);
    sum += b;
    return sum;
}
inline CString operator+(const CString& a, const CString& b) {
    return a + static_cast<LPCTSTR>(b);
}
inline CString operator+(LPCTSTR a, const CString& b) {
    return CString(a) + b;
}
/// Of characters only: without it text + 'c' would be a pointer far behind the text.
template <class Char, class = std::enable_if_t<std::is_same_v<Char, char>>>
CString operator+(const CString& a, Char b) {
    const char text[] = {b, 0};
    return a + text;
}

/// The text of this number with %1 replaced.
inline void AfxFormatString1(CString& text, UINT id, LPCTSTR first) {
    AfxLoadString(id, text);
    text.Replace("%1", first);
}

/// A std::vector with the old names. Indices are not checked.
template <class Type, class Argument = const Type&>
class CArray : public std::vector<Type> {
public:
    int GetSize() const { return static_cast<int>(this->size()); }
    int GetUpperBound() const { return GetSize() - 1; }
    Type& GetAt(int index) { return (*this)[At(index)]; }
    const Type& GetAt(int index) const { return (*this)[At(index)]; }
    void SetAt(int index, Argument value) { (*this)[At(index)] = value; }
    Type* GetData() { return this->data(); }
    void SetSize(int size) { this->resize(At(size)); }
    void RemoveAll() { this->clear(); }
    int Add(Argument value) {
        this->push_back(value);
        return GetUpperBound();
    }
    void InsertAt(int index, Argument value) { this->insert(this->begin() + index, value); }
    void RemoveAt(int index, int count = 1) {
        this->erase(this->begin() + index, this->begin() + index + count);
    }

private:
    static std::size_t At(int index) { return static_cast<std::size_t>(index); }
};

class CCriticalSection {
public:
    void Lock() { m_mutex.lock(); }
    void Unlock() { m_mutex.unlock(); }

private:
    std::recursive_mutex m_mutex; // one thread may lock it several times
};

class CSingleLock {
public:
    explicit CSingleLock(CCriticalSection* section, BOOL locks = FALSE) : m_section(section) {
        if (locks) Lock();
    }
    ~CSingleLock() { Unlock(); }
    CSingleLock(const CSingleLock&) = delete;
    CSingleLock& operator=(const CSingleLock&) = delete;

    void Lock() {
        m_section->Lock();
        ++m_locks;
    }
    void Unlock() {
        for (; m_locks > 0; --m_locks) m_section->Unlock();
    }

private:
    CCriticalSection* m_section;
    int m_locks = 0;
};

/// In place of OpenClipboard, EmptyClipboard and SetClipboardData(CF_TEXT, ...): a text field copies it.
/// `parent` is any window of the program that is open.
inline void CopyTextToClipboard(CWnd* parent, LPCTSTR text) {
    CEdit field;
    if (!field.Create(ES_MULTILINE, CRect(0, 0, 1, 1), parent, 0xFFFF)) return;
    field.SetWindowText(text);
    field.SetSel(0, -1);
    field.Copy();
    field.DestroyWindow();
}

/// In place of SetRegistryKey: the program's own ini file, in the user's folder for settings. The members of
/// CWinApp know one file for all programs, and no defaults.
///
///     const CString ini = SettingsFile("PatchKeeper");
///     m_channel = GetPrivateProfileInt("Settings", "Channel", 1, ini);
inline CString SettingsFile(LPCTSTR program) {
    char folder[MAX_PATH];
    CString path(GetUserPreferencesPath(folder, sizeof folder));
    path += "/";
    path += program;
    path += ".ini";
    return path;
}

inline void WriteSettingsInt(LPCTSTR section, LPCTSTR key, int value, LPCTSTR file) {
    char text[16];
    std::snprintf(text, sizeof text, "%d", value);
    WritePrivateProfileString(section, key, text, file);
}
