// A bank: the System Exclusive messages of one file. Splitting is pure; reading goes through the
// library's file functions.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "SysexInfo.h"

struct BankMessage {
    SysexBytes bytes; ///< from 0xF0; ends with 0xF7 unless the message was cut short
    SysexInfo info;
    std::string patch; ///< the patch it holds, as a plug-in says; "" when none knows it
    std::vector<std::string> voices =
        {}; ///< the names inside of a bank of several, as a plug-in says
};

struct Bank {
    std::string name; ///< the file's name without folders
    std::vector<BankMessage> messages;
    std::size_t junkBytes = 0; ///< bytes outside messages
    /// Where the first message without its closing 0xF7 breaks off, for the user; "" when all are whole.
    std::string problem = {};

    std::size_t BadChecksums() const;
};

/// The messages of a file's bytes, in order. Whatever stands between messages is counted and passed
/// over, and so are real-time bytes inside one; any other status byte breaks the message off.
Bank SplitBank(const SysexBytes& file);

/// Reads and splits a file. FALSE, and `error` for the user with the byte's place, when it cannot be
/// read, holds no message or one that breaks off; `bank` is then unchanged.
BOOL ReadBank(const char* path, Bank& bank, std::string& error);

/// Reads several files as one bank: the messages of one file after the other. `paths` keeps those that
/// were read; why the first of the others was not is in `error`.
void ReadBanks(std::vector<std::string>& paths, Bank& bank, std::string& error);

/// Writes the messages, one after the other. FALSE, and `error`, when that fails; the file that was
/// there is then as before.
BOOL WriteBank(const std::string& name, const Bank& bank, std::string& error);
