// CString, the one owned string of the interfaces: 8-bit characters, NUL-terminated, on the heap.
// The free string functions are in <vmcore/core/strings.h>.
//
//     CString name("  Lead 1\r\n");
//     name.Trim();                       // "Lead 1"
//     name.Replace("Lead", "Pad");       // "Pad 1"
//     if (name.Right(1)[0] == '1') ...   // Right points into name, Left makes a new string
//
// It is smaller than the class that MFC programmers know: no Format, Mid, ReverseFind, Compare,
// concatenation operator or reference counting. Every edit makes a new buffer of the exact length.
// Characters are single bytes everywhere; nothing here knows UTF-8.
//
// Two empty strings exist: one without a buffer, and one that holds "". IsEmpty and GetLength treat
// them alike, the comparisons do not: CString() == "" is false. Test for emptiness with IsEmpty.
//
// GetLength, the const operator[], SetAt and copies go by the recorded size; everything else goes
// by the text up to its NUL. The two disagree only after Remove and after writing a NUL or over it.
//
// A CString belongs to one thread at a time. Null pointers and indices out of range are the
// caller's fault unless a function says what it does with them.
#pragma once

#include <cstddef>

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

class VM_API CString {
public:
    CString() noexcept = default;
    CString(const char* s);        ///< null and "" leave it without a buffer
    CString(const CString& s);     ///< a string of GetLength() 0 leaves it without a buffer
    CString(CString&& s) noexcept; ///< takes the buffer over
    ~CString();

    /// Null leaves it without a buffer; "" gives the empty string that holds "".
    CString& operator=(const char* s);
    /// An empty `s` leaves it without a buffer. The parameter is not const on purpose: a const or
    /// temporary string is assigned as a const char*, so an empty one gives the form that holds "".
    CString& operator=(CString& s);
    void SetString(const char* s); ///< `s` must not be null

    int GetLength() const { return size == 0 ? 0 : size - 1; }
    operator const char*() const; ///< never null
    /// The string's own buffer; never null. `n` is ignored: the buffer does not grow, so write only
    /// within the present length, and never into an empty string. There is no ReleaseBuffer.
    char* GetBuffer(int n);
    BOOL IsEmpty() const;
    /// The same question as IsEmpty. Unlike MFC's it does not clear the string; hosts call it as a
    /// test.
    BOOL Empty() const { return IsEmpty(); }
    char operator[](int i) const;               ///< 0 from GetLength() on
    char& operator[](int i) { return data[i]; } ///< not checked
    /// Ignored beyond GetLength(). At GetLength() it overwrites the terminator, which hosts do to
    /// grow a text in place: the text is one character longer, GetLength() stays.
    void SetAt(int i, char c);
    BOOL LoadString(unsigned int id); ///< always FALSE: there are no string resources

    /// Byte for byte. A string without a buffer equals the null pointer only, not "".
    BOOL operator==(const char* s) const;
    /// Non-zero when different: the result of strcmp in 8 bits, 1 when only one of them is null.
    BOOL operator!=(const char* s) const;
    /// As with `s` converted to a const char*, so two strings without a buffer are not equal.
    BOOL operator==(const CString& s) const { return *this == static_cast<const char*>(s); }
    BOOL operator!=(const CString& s) const { return *this != static_cast<const char*>(s); }

    void Append(const char* s); ///< null is ignored; `s` may point into this string
    CString& operator+=(const char* s);
    void AppendChar(char c); ///< NUL appends nothing
    /// Returns the new length. An index beyond the end, and also a negative one, appends; null
    /// changes nothing.
    int Insert(int index, const char* s);
    int Insert(int index, char c); ///< the same, but a negative index inserts in front
    /// Returns the new length; deletes at most up to the end. All of it leaves no buffer.
    int Delete(int index, int count = 1);
    /// Removes every `c` and returns their number. With nothing left there is no buffer; otherwise
    /// GetLength() is one less than the length of the text until the next edit. Hosts correct for
    /// that themselves, so it stays, also when no `c` was found.
    int Remove(char c);
    /// In place; returns the number. A NUL for `newChar` cuts the text, GetLength() stays.
    int Replace(char oldChar, char newChar);
    /// Works from the right end to the left, on the text as edited so far: "aa" by "b" makes "ab"
    /// of "aaa". Returns the number; 0 for an empty string, a null argument or an empty `oldText`.
    int Replace(const char* oldText, const char* newText);

    CString Left(int n) const; ///< the first `n` characters, or all there are
    /// The last `n` characters, or all there are, as a pointer into this string: valid until its
    /// next change. Never null.
    const char* Right(int n) const;
    int Find(const char* s) const; ///< the first index, or -1
    /// The first index from `start` on, counted from the front, or -1. `start` must be in the text.
    int Find(const char* s, int start) const;
    int FindOneOf(const char* set) const; ///< the first index of any character of `set`, or -1

    void MakeUpper(); ///< ASCII letters only, whatever the locale
    void MakeLower();

    /// Remove the run of `c` at the left, right, both ends; 0 removes nothing. They return the
    /// text, never null. A string trimmed to nothing holds "".
    const char* TrimLeft(char c);
    const char* TrimRight(char c);
    const char* Trim(char c);
    /// The same for backspace, line feed, carriage return and space: each once, in this order. So a
    /// tab stays, and so does what a character of a later turn protects: trimming " \nx" leaves
    /// "\nx". Settings files in use were written by this rule.
    const char* TrimLeft();
    const char* TrimRight();
    const char* Trim();

private:
    void Take(char* buffer, std::size_t length);
    void Clear();
    void CopyBytes(const CString& s);

    // Order and sizes are part of the binary interface.
    char* data = nullptr; // from array-new; one byte more than `size`, which is always NUL
    int size = 0;         // bytes in use with the terminator; 0 without a buffer
};

/// With the text on the left; without these the two pointers would be compared.
inline BOOL operator==(const char* s, const CString& string) {
    return string == s;
}
inline BOOL operator!=(const char* s, const CString& string) {
    return string != s;
}
