// A file as an object. No constructor opens it; Open does.
//
//     CFile file;
//     if (!file.Open("Song.syx", CFile::modeRead)) return false;
//     UINT got = file.Read(buffer, sizeof buffer);
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

/// Accepted by CFile::Open and never filled.
class CFileException {
public:
    int m_cause = 0;
    LONG m_lOsError = 0;
};

/// The order of the virtual operations is part of the binary interface.
class VM_API CFile {
public:
    enum OpenFlags : unsigned {
        modeRead = 0,
        modeWrite = 1,
        modeReadWrite = 2,
        modeCreate = 0x1000,
        // Accepted and not used:
        shareCompat = 0,
        shareExclusive = 0x10,
        shareDenyWrite = 0x20,
        shareDenyRead = 0x30,
        shareDenyNone = 0x40,
        typeText = 0x4000,
        typeBinary = 0x8000,
    };
    enum SeekPosition : unsigned { begin = 0, current = 1, end = 2 };

    /// All three make a closed object, whatever they are given.
    CFile();
    explicit CFile(int file);
    CFile(LPCSTR name, UINT mode);
    /// Closes an open file.
    virtual ~CFile();
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    /// Opens through CreateFile, which logs a failure: 1, or 0, also when the object is open
    /// already. modeCreate empties an existing file and always opens for writing only, with
    /// modeReadWrite too.
    virtual BOOL Open(LPCSTR name, UINT mode, CFileException* exception = nullptr);
    virtual void Close();
    /// The count read; 0 after an error; 0xFFFFFFFF while closed.
    virtual UINT Read(void* buffer, UINT count);
    /// Writes and reports nothing.
    virtual void Write(const void* buffer, UINT count);
    /// The length in 32 bits, found with three calls of Seek, which restore the position.
    virtual DWORD GetLength();
    /// Moves by the signed offset and returns the new position; 0xFFFFFFFF while closed.
    virtual DWORD Seek(int offset, UINT from);
    virtual DWORD GetPosition() const; ///< 0xFFFFFFFF while closed

private:
    int m_hFile; ///< the descriptor; 0 while closed
};
