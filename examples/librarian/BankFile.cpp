#include "BankFile.h"

#include <algorithm>

#include <windows.h>

#include "BankFolder.h"

namespace {

constexpr DWORD kLargestFile = 64u << 20;

bool IsRealTime(BYTE byte) {
    return byte >= 0xF8;
}

// Takes one byte at a time and knows the message that is open.
class Splitter {
public:
    void Take(BYTE byte) {
        if (IsRealTime(byte))
            ++m_bank.junkBytes;
        else if (byte == 0xF0)
            Begin();
        else if (byte == 0xF7)
            End();
        else if (byte < 0x80)
            Data(byte);
        else
            Cut();
    }

    Bank Finish() {
        Close(false);
        return std::move(m_bank);
    }

private:
    void Begin() {
        Close(false);
        m_open.push_back(0xF0);
    }

    void End() {
        if (m_open.empty()) {
            ++m_bank.junkBytes;
            return;
        }
        m_open.push_back(0xF7);
        Close(true);
    }

    void Data(BYTE byte) {
        if (m_open.empty())
            ++m_bank.junkBytes;
        else
            m_open.push_back(byte);
    }

    void Cut() {
        Close(false);
        ++m_bank.junkBytes;
    }

    void Close(bool complete) {
        if (m_open.empty()) return;
        if (!complete) ++m_bank.cutMessages;
        SysexInfo info = DescribeSysex(m_open);
        m_bank.messages.push_back({std::move(m_open), std::move(info), {}});
        m_open.clear();
    }

    Bank m_bank;
    SysexBytes m_open;
};

// Reads the whole file; FALSE when that fails or the file is larger than any bank.
BOOL ReadBytes(HANDLE file, SysexBytes& bytes) {
    const DWORD size = GetFileSize(file, nullptr);
    if (size > kLargestFile) return FALSE;
    bytes.resize(size);
    DWORD done = 0;
    return size == 0 || (ReadFile(file, bytes.data(), size, &done, nullptr) && done == size);
}

} // namespace

std::size_t Bank::BadChecksums() const {
    return static_cast<std::size_t>(
        std::count_if(messages.begin(), messages.end(), [](const BankMessage& message) {
            return message.info.checksum == ChecksumState::Wrong;
        }));
}

Bank SplitBank(const SysexBytes& file) {
    Splitter splitter;
    for (const BYTE byte : file) splitter.Take(byte);
    return splitter.Finish();
}

BOOL ReadBank(const char* path, Bank& bank, std::string& error) {
    const std::string name = NameOf(path);
    const HANDLE file = CreateFile(path, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (!file) {
        error = name + " cannot be opened";
        return FALSE;
    }
    SysexBytes bytes;
    const BOOL read = ReadBytes(file, bytes);
    CloseHandle(file);
    if (!read) {
        error = name + " cannot be read";
        return FALSE;
    }
    Bank split = SplitBank(bytes);
    if (split.messages.empty()) {
        error = name + " holds no System Exclusive message";
        return FALSE;
    }
    bank = std::move(split);
    bank.name = name;
    return TRUE;
}

BOOL WriteBank(const std::string& path, const Bank& bank, std::string& error) {
    error = NameOf(path) + " cannot be written";
    const std::string fresh = path + ".new"; // a full disk must not cost the old file
    const HANDLE file =
        CreateFile(fresh.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (!file) return FALSE;
    BOOL written = TRUE;
    for (const BankMessage& message : bank.messages) {
        const auto size = static_cast<DWORD>(message.bytes.size());
        DWORD done = 0;
        written =
            written && WriteFile(file, message.bytes.data(), size, &done, nullptr) && done == size;
    }
    CloseHandle(file);
    if (!written) {
        DeleteFile(fresh.c_str());
        return FALSE;
    }
    DeleteFile(path.c_str());
    written = MoveFile(fresh.c_str(), path.c_str());
    if (written) error.clear();
    return written;
}
