#include "BankFile.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include <windows.h>

#include "BankFolder.h"
#include "LocalFiles.h"

namespace {

constexpr DWORD kLargestFile = 64u << 20;
constexpr std::size_t kMostMessages = 1'000'000;

bool IsRealTime(BYTE byte) {
    return byte >= 0xF8;
}

std::string ByteAt(std::size_t offset, BYTE byte) {
    char digits[4];
    std::snprintf(digits, sizeof digits, "%02X", byte);
    return "byte " + std::to_string(offset) + " is " + digits;
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
            BreakOff(byte);
        ++m_offset;
    }

    Bank Finish() {
        NoteBreak("the file ends at byte " + std::to_string(m_offset));
        Close();
        return std::move(m_bank);
    }

private:
    void Begin() {
        if (!m_open.empty()) NoteBreak(ByteAt(m_offset, 0xF0));
        Close();
        m_begin = m_offset;
        m_open.push_back(0xF0);
    }

    void End() {
        if (m_open.empty()) {
            ++m_bank.junkBytes;
            return;
        }
        m_open.push_back(0xF7);
        Close();
    }

    void Data(BYTE byte) {
        if (m_open.empty())
            ++m_bank.junkBytes;
        else
            m_open.push_back(byte);
    }

    void BreakOff(BYTE byte) {
        if (!m_open.empty()) NoteBreak(ByteAt(m_offset, byte));
        Close();
        ++m_bank.junkBytes;
    }

    void NoteBreak(const std::string& where) {
        if (m_open.empty() || !m_bank.problem.empty()) return;
        m_bank.problem =
            where + ", inside the message that begins at byte " + std::to_string(m_begin);
    }

    void Close() {
        if (m_open.empty()) return;
        if (m_bank.messages.size() <= kMostMessages) { // one more tells that there are too many
            SysexInfo info = DescribeSysex(m_open);
            m_bank.messages.push_back({std::move(m_open), std::move(info), {}});
        }
        m_open.clear();
    }

    Bank m_bank;
    SysexBytes m_open;
    std::size_t m_begin = 0; // of the open message
    std::size_t m_offset = 0;
};

// Why the bytes are no bank; "" when they are one.
std::string WhyRefused(const SysexBytes& bytes, const Bank& bank) {
    if (bytes.empty()) return " is empty";
    if (bank.messages.empty())
        return " is no System Exclusive file: " + ByteAt(0, bytes.front()) + " instead of F0";
    if (bank.messages.size() > kMostMessages) return " holds more than 1,000,000 messages";
    return bank.problem.empty() ? "" : ": " + bank.problem;
}

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
    if (const std::string why = WhyRefused(bytes, split); !why.empty()) {
        error = name + why;
        return FALSE;
    }
    bank = std::move(split);
    bank.name = name;
    return TRUE;
}

void ReadBanks(std::vector<std::string>& paths, Bank& bank, std::string& error) {
    bank = {};
    error.clear();
    const auto isRefused = [&](const std::string& path) {
        Bank next;
        std::string why;
        if (ReadBank(path.c_str(), next, why) &&
            bank.messages.size() + next.messages.size() > kMostMessages)
            why = NameOf(path) + " has no room: there are 1,000,000 messages at most";
        if (error.empty()) error = why;
        if (!why.empty()) return true;
        std::move(next.messages.begin(), next.messages.end(), std::back_inserter(bank.messages));
        bank.junkBytes += next.junkBytes;
        return false;
    };
    std::vector<std::string> read;
    for (const std::string& path : paths)
        if (!isRefused(path)) read.push_back(path);
    paths = std::move(read);
}

BOOL WriteBank(const std::string& name, const Bank& bank, std::string& error) {
    error = NameOf(name) + " cannot be written";
    const std::string path = BehindLinks(name);         // a link stays one
    const std::string fresh = PathForJob(path, ".new"); // a full disk must not cost the old file
    const HANDLE file =
        CreateFile(fresh.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (!file) return FALSE;
    KeepAccess(StoredPath(path), StoredPath(fresh)); // from the first byte on
    BOOL written = TRUE;
    for (const BankMessage& message : bank.messages) {
        const auto size = static_cast<DWORD>(message.bytes.size());
        DWORD done = 0;
        written =
            written && WriteFile(file, message.bytes.data(), size, &done, nullptr) && done == size;
    }
    CloseHandle(file);
    if (!written) {
        RemoveFile(fresh);
        return FALSE;
    }
    error = PutInPlace(fresh, path, true);
    if (!error.empty()) RemoveFile(fresh);
    return error.empty();
}
