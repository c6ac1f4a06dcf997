#include "BankSender.h"

#include "BankFile.h"
#include "MidiLink.h"

BankSender::BankSender(const Bank& bank) {
    for (const BankMessage& message : bank.messages) {
        m_bytes += message.bytes.size();
        m_messages.push_back(message.bytes);
    }
}

BankSender::State BankSender::Step(MidiLink& link) {
    if (m_state != State::Sending || link.IsSending()) return m_state;
    if (m_isUnderWay) m_bytesSent += m_messages[m_next - 1].size();
    m_isUnderWay = false;
    if (m_next == m_messages.size()) {
        m_state = State::Done;
    } else if (link.Send(m_messages[m_next])) {
        ++m_next;
        m_isUnderWay = true;
    } else {
        m_state = State::Failed;
    }
    return m_state;
}

int BankSender::PerCent() const {
    return m_bytes == 0 ? 100 : static_cast<int>(m_bytesSent * 100 / m_bytes);
}

std::string BankSender::Words() const {
    return "Sent " + std::to_string(MessagesSent()) + " of " + std::to_string(Messages()) +
           (Messages() == 1 ? " message" : " messages");
}
