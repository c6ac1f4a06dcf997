// Sends the messages of a bank one after the other, and knows how far it is. It is moved on by a timer.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "SysexInfo.h"

struct Bank;
class MidiLink;

class BankSender {
public:
    explicit BankSender(const Bank& bank); ///< copies the messages

    enum class State { Sending, Done, Failed };
    /// Begins the next message when the last one has left. Once it is not Sending any more it stays so.
    State Step(MidiLink& link);

    std::size_t Messages() const { return m_messages.size(); }
    std::size_t MessagesSent() const { return m_next - (m_isUnderWay ? 1 : 0); }
    /// Of the bytes that have left, from 0 to 100.
    int PerCent() const;
    /// "Sent 12 of 64 messages".
    std::string Words() const;

private:
    std::vector<SysexBytes> m_messages;
    std::size_t m_next = 0; // the message to begin next
    bool m_isUnderWay = false;
    std::size_t m_bytes = 0;
    std::size_t m_bytesSent = 0;
    State m_state = State::Sending;
};
