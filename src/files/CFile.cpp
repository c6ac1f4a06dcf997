// The file object, over the functions that take a handle.
#include <vmcore/files/CFile.h>

#include <iterator>

#include <vmcore/files/fileapi.h>

#include "files/descriptor.h"

namespace {

constexpr DWORD kClosed = 0xFFFFFFFF;

DWORD AccessOfMode(UINT mode) {
    constexpr DWORD kAccess[] = {GENERIC_READ, GENERIC_WRITE, GENERIC_READ | GENERIC_WRITE};
    const UINT index = mode & 0xF;
    return index < std::size(kAccess) ? kAccess[index] : 0;
}

} // namespace

static_assert(sizeof(CFile) == 2 * sizeof(void*));

CFile::CFile() : m_hFile(0) {}
CFile::CFile(int) : m_hFile(0) {}
CFile::CFile(LPCSTR, UINT) : m_hFile(0) {}

CFile::~CFile() {
    if (m_hFile) CloseHandle(vm::HandleOf(m_hFile));
}

BOOL CFile::Open(LPCSTR name, UINT mode, CFileException*) {
    if (m_hFile) return FALSE;
    const DWORD disposition = (mode & modeCreate) >> 12;
    const HANDLE file = CreateFile(name, AccessOfMode(mode), 0, nullptr, disposition, 0, nullptr);
    if (!file) return FALSE;
    m_hFile = vm::DescriptorOf(file);
    return TRUE;
}

void CFile::Close() {
    if (m_hFile) CloseHandle(vm::HandleOf(m_hFile));
    m_hFile = 0;
}

UINT CFile::Read(void* buffer, UINT count) {
    if (!m_hFile) return kClosed;
    DWORD done = 0;
    return ReadFile(vm::HandleOf(m_hFile), buffer, count, &done, nullptr) ? done : 0;
}

void CFile::Write(const void* buffer, UINT count) {
    if (m_hFile) WriteFile(vm::HandleOf(m_hFile), buffer, count, nullptr, nullptr);
}

DWORD CFile::GetLength() {
    const DWORD position = Seek(0, current);
    const DWORD length = Seek(0, end);
    Seek(static_cast<int>(position), begin);
    return length;
}

DWORD CFile::Seek(int offset, UINT from) {
    return m_hFile ? SetFilePointer(vm::HandleOf(m_hFile), offset, nullptr, from) : kClosed;
}

DWORD CFile::GetPosition() const {
    return m_hFile ? SetFilePointer(vm::HandleOf(m_hFile), 0, nullptr, FILE_CURRENT) : kClosed;
}
