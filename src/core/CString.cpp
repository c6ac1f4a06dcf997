// CString. Edits compute the new text and take over one new buffer; arguments may point into the
// old one, which is freed last.
#include <vmcore/core/CString.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "core/ascii.h"

static_assert(sizeof(CString) == 16, "part of the binary interface");
static_assert(sizeof(BOOL) == 1, "operator!= returns strcmp's result in 8 bits");

namespace {

// What strings without a buffer show. Read-only, so that writing through it is found at once.
const char s_empty[1] = "";

// Backspace, line feed, carriage return, space: the order decides what is left.
constexpr char s_blanks[] = {8, 10, 13, 32};

// Room for `length` characters, the terminator, and a second NUL that keeps the text terminated
// when SetAt overwrites the first.
char* NewBuffer(std::size_t length) {
    char* const buffer = new char[length + 2];
    buffer[length] = buffer[length + 1] = '\0';
    return buffer;
}

char* Join(std::string_view head, std::string_view middle = {}, std::string_view tail = {}) {
    char* const buffer = NewBuffer(head.size() + middle.size() + tail.size());
    char* end = std::copy(head.begin(), head.end(), buffer);
    end = std::copy(middle.begin(), middle.end(), end);
    std::copy(tail.begin(), tail.end(), end);
    return buffer;
}

std::string_view TextOf(const CString& string) {
    return static_cast<const char*>(string);
}

} // namespace

CString::CString(const char* s) {
    static_assert(offsetof(CString, data) == 0 && offsetof(CString, size) == sizeof(char*));
    if (s && *s) SetString(s);
}

CString::CString(const CString& s) {
    if (s.GetLength() >= 1) CopyBytes(s);
}

CString::CString(CString&& s) noexcept : data(s.data), size(s.size) {
    s.data = nullptr;
    s.size = 0;
}

CString::~CString() {
    delete[] data;
}

void CString::Take(char* buffer, std::size_t length) {
    delete[] data;
    data = buffer;
    size = static_cast<int>(length + 1);
}

void CString::Clear() {
    delete[] data;
    data = nullptr;
    size = 0;
}

// Copies the bytes in use, not the text: the copy's GetLength() is that of the original.
void CString::CopyBytes(const CString& s) {
    const std::size_t length = static_cast<std::size_t>(s.GetLength());
    char* const buffer = NewBuffer(length);
    std::memcpy(buffer, s.data, length + 1);
    Take(buffer, length);
}

CString& CString::operator=(const char* s) {
    if (s)
        SetString(s);
    else
        Clear();
    return *this;
}

CString& CString::operator=(CString& s) {
    if (s.GetLength() >= 1)
        CopyBytes(s);
    else
        Clear();
    return *this;
}

void CString::SetString(const char* s) {
    const std::string_view text(s);
    Take(Join(text), text.size());
}

CString::operator const char*() const {
    return data ? data : s_empty;
}

char* CString::GetBuffer(int) {
    return data ? data : const_cast<char*>(s_empty);
}

BOOL CString::IsEmpty() const {
    return !data || data[0] == '\0';
}

// Unsigned, so that one comparison also keeps negative indices out.
char CString::operator[](int i) const {
    return static_cast<unsigned>(i) < static_cast<unsigned>(GetLength()) ? data[i] : '\0';
}

void CString::SetAt(int i, char c) {
    if (static_cast<unsigned>(i) < static_cast<unsigned>(size)) data[i] = c;
}

BOOL CString::LoadString(unsigned int) {
    return FALSE;
}

BOOL CString::operator==(const char* s) const {
    if (!data || !s) return !data && !s;
    return std::strcmp(data, s) == 0;
}

BOOL CString::operator!=(const char* s) const {
    if (!data || !s) return data || s;
    return static_cast<BOOL>(std::strcmp(data, s));
}

void CString::Append(const char* s) {
    if (!s) return;
    const std::string_view text = TextOf(*this);
    const std::string_view added(s);
    Take(Join(text, added), text.size() + added.size());
}

CString& CString::operator+=(const char* s) {
    Append(s);
    return *this;
}

void CString::AppendChar(char c) {
    const char text[2] = {c, '\0'};
    Append(text);
}

int CString::Insert(int index, const char* s) {
    if (!s) return GetLength();
    const std::string_view text = TextOf(*this);
    const std::string_view added(s);
    // A negative index becomes a very large one here and appends.
    const std::size_t at = std::min(static_cast<std::size_t>(index), text.size());
    Take(Join(text.substr(0, at), added, text.substr(at)), text.size() + added.size());
    return GetLength();
}

int CString::Insert(int index, char c) {
    const char text[2] = {c, '\0'};
    return Insert(std::max(index, 0), text);
}

int CString::Delete(int index, int count) {
    const std::string_view text = TextOf(*this);
    const int length = static_cast<int>(text.size());
    if (length == 0) return 0;
    if (index == 0 && count >= length) {
        Clear();
        return 0;
    }
    if (index < 0 || index > length || count < 0) return length;
    const std::size_t from = static_cast<std::size_t>(index);
    const std::size_t to = from + static_cast<std::size_t>(std::min(count, length - index));
    Take(Join(text.substr(0, from), text.substr(to)), text.size() - (to - from));
    return GetLength();
}

int CString::Remove(char c) {
    const std::string_view text = TextOf(*this);
    const std::size_t removed = static_cast<std::size_t>(std::count(text.begin(), text.end(), c));
    if (removed == text.size()) {
        Clear();
        return static_cast<int>(removed);
    }
    const std::size_t kept = text.size() - removed;
    char* const buffer = NewBuffer(kept);
    std::remove_copy(text.begin(), text.end(), buffer, c);
    Take(buffer, kept);
    size = static_cast<int>(kept); // without the terminator: hosts know and correct GetLength()
    return static_cast<int>(removed);
}

int CString::Replace(char oldChar, char newChar) {
    int replaced = 0;
    for (std::size_t i = TextOf(*this).size(); i-- > 0;) {
        if (data[i] != oldChar) continue;
        data[i] = newChar;
        ++replaced;
    }
    return replaced;
}

int CString::Replace(const char* oldText, const char* newText) {
    if (IsEmpty() || !oldText || !newText || !*oldText) return 0;
    const std::string oldCopy(oldText); // either may point into this string
    const std::string newCopy(newText);
    int replaced = 0;
    for (int at = static_cast<int>(TextOf(*this).size()) - 1; at >= 0; --at) {
        const std::string_view text = TextOf(*this);
        if (text.compare(static_cast<std::size_t>(at), oldCopy.size(), oldCopy) != 0) continue;
        Delete(at, static_cast<int>(oldCopy.size()));
        Insert(at, newCopy.c_str());
        ++replaced;
    }
    return replaced;
}

CString CString::Left(int n) const {
    CString result;
    const std::string_view head = TextOf(*this).substr(0, static_cast<std::size_t>(std::max(n, 0)));
    if (!head.empty()) result.Take(Join(head), head.size());
    return result;
}

const char* CString::Right(int n) const {
    const std::string_view text = TextOf(*this);
    const std::size_t wanted = static_cast<std::size_t>(std::max(n, 0));
    return text.data() + (text.size() - std::min(wanted, text.size()));
}

int CString::Find(const char* s) const {
    return Find(s, 0);
}

int CString::Find(const char* s, int start) const {
    // data[size] is readable, so this much checking is free.
    if (IsEmpty() || !s || start < 0 || start > size) return -1;
    const char* const found = std::strstr(data + start, s);
    return found ? static_cast<int>(found - data) : -1;
}

int CString::FindOneOf(const char* set) const {
    if (IsEmpty() || !set) return -1;
    const std::size_t index = std::strcspn(data, set);
    return data[index] ? static_cast<int>(index) : -1;
}

void CString::MakeUpper() {
    for (char* c = data; c && *c; ++c) *c = vm::AsciiUpper(*c);
}

void CString::MakeLower() {
    for (char* c = data; c && *c; ++c) *c = vm::AsciiLower(*c);
}

const char* CString::TrimLeft(char c) {
    const std::string_view text = TextOf(*this);
    const std::size_t run = std::min(text.find_first_not_of(c), text.size());
    if (run > 0) Take(Join(text.substr(run)), text.size() - run);
    return *this;
}

const char* CString::TrimRight(char c) {
    const std::string_view text = TextOf(*this);
    const std::size_t kept = text.find_last_not_of(c) + 1; // 0 when nothing else is there
    if (kept < text.size()) Take(Join(text.substr(0, kept)), kept);
    return *this;
}

const char* CString::Trim(char c) {
    TrimLeft(c);
    return TrimRight(c);
}

const char* CString::TrimLeft() {
    for (const char blank : s_blanks) TrimLeft(blank);
    return *this;
}

const char* CString::TrimRight() {
    for (const char blank : s_blanks) TrimRight(blank);
    return *this;
}

const char* CString::Trim() {
    for (const char blank : s_blanks) Trim(blank);
    return *this;
}
