// Only the sender's thread reads the messages' data and reports their end, so that a message is
// never touched after its end was reported.
#include "platform/midi/sysexSender.h"

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

#include "core/log.h"

namespace vm {

namespace {

using Clock = std::chrono::steady_clock;
using Time = SysexSchedule::Time;

Time Now() {
    return std::chrono::duration_cast<Time>(Clock::now().time_since_epoch());
}

constexpr Time kRetryAfter = std::chrono::milliseconds(1);
constexpr Time kBusyLimit = std::chrono::seconds(10);
constexpr std::size_t kMostLeaving = 64 * 1024;

Clock::time_point AsTimePoint(Time time) {
    return Clock::time_point(std::chrono::duration_cast<Clock::duration>(time));
}

const char* Reason(int result) {
    switch (result) {
    case kMidiUnknownEndpoint:
        return "its destination has gone";
    case kMidiNotRunning:
        return "the MIDI system was stopped";
    case kMidiBusy:
        return "nothing has moved for ten seconds";
    default:
        return "the system refused it";
    }
}

void Finish(const MidiSysexSend& message, int result) {
    if (result != kMidiOk)
        Log(LogModule::Midi,
            "Error! A System Exclusive message of %zu bytes was not sent whole: %s",
            message.byteCount, Reason(result));
    if (message.done) message.done(message.reference);
}

} // namespace

SysexSender::SysexSender(SysexOutlet outlet, std::size_t largestPiece)
    : m_outlet(std::move(outlet)), m_largestPiece(largestPiece) {}

SysexSender::~SysexSender() {
    Stop();
}

int SysexSender::Send(const MidiSysexSend& send) {
    if (!send.data && send.byteCount > 0) return kMidiBadArgument;
    std::lock_guard guard(m_lock);
    if (m_stopping) return kMidiNotRunning;
    try {
        if (!m_thread.joinable()) m_thread = std::thread([this] { Run(); });
    } catch (const std::system_error&) {
        return kMidiSendFailed;
    }
    Lane& lane = m_lanes[send.destination];
    lane.messages.push_back({send});
    if (!lane.schedule) lane.BeginWriting(Now());
    m_changed.notify_all();
    return kMidiOk;
}

int SysexSender::SetSpeed(MidiId destination, std::uint32_t bytesPerSecond) {
    if (bytesPerSecond == 0) return kMidiBadArgument;
    std::lock_guard guard(m_lock);
    Lane& lane = m_lanes[destination];
    lane.speed = bytesPerSecond;
    if (lane.schedule) lane.schedule->SetSpeed(bytesPerSecond);
    m_changed.notify_all();
    return kMidiOk;
}

std::uint32_t SysexSender::Speed(MidiId destination) {
    std::lock_guard guard(m_lock);
    const auto found = m_lanes.find(destination);
    return found == m_lanes.end() ? kMidiWireSpeed : found->second.speed;
}

int SysexSender::SetGap(MidiId destination, SysexGap gap) {
    std::lock_guard guard(m_lock);
    m_lanes[destination].gap = gap;
    return kMidiOk;
}

void SysexSender::End(MidiId destination) {
    std::lock_guard guard(m_lock);
    const auto found = m_lanes.find(destination);
    if (found == m_lanes.end()) return;
    found->second.ending = found->second.messages.size();
    m_changed.notify_all();
}

void SysexSender::Stop() {
    std::thread thread;
    {
        std::lock_guard guard(m_lock);
        m_stopping = true;
        thread = std::move(m_thread);
    }
    m_changed.notify_all();
    if (thread.joinable()) thread.join();
}

void SysexSender::Run() {
    Lock lock(m_lock);
    while (!m_stopping) {
        Lane* lane = NextLane();
        const Time now = Now();
        if (!lane)
            m_changed.wait(lock);
        else if (lane->NextTime() > now)
            m_changed.wait_until(lock, AsTimePoint(lane->NextTime()));
        else
            Advance(lock, *lane, now);
    }
    EndAll(lock);
}

// The lane that has something to do first, or null.
SysexSender::Lane* SysexSender::NextLane() {
    Lane* next = nullptr;
    for (auto& [destination, lane] : m_lanes) {
        if (lane.messages.empty()) continue;
        if (!next || lane.NextTime() < next->NextTime()) next = &lane;
    }
    return next;
}

bool SysexSender::Lane::MayWrite() const {
    return schedule && (leaving == 0 || leavingBytes < kMostLeaving);
}

Time SysexSender::Lane::WriteTime() const {
    const bool isBehind = written < schedule->Sent();
    return isBehind ? retryAt : std::max(retryAt, schedule->NextTime());
}

Time SysexSender::Lane::NextTime() const {
    if (ending > 0) return Time::zero();
    if (!MayWrite()) return askAt;
    return leaving > 0 ? std::min(askAt, WriteTime()) : WriteTime();
}

void SysexSender::Lane::BeginWriting(Time start) {
    schedule.emplace(messages[leaving].send.byteCount, speed, start, gap);
    written = 0;
    retryAt = start;
}

// The message after it starts at `nextStart`, which keeps a row of messages at the exact speed.
void SysexSender::Lane::EndWriting(int result, Time nextStart) {
    messages[leaving].result = result;
    leavingBytes += messages[leaving].send.byteCount;
    if (++leaving == 1) askAt = Time::zero();
    schedule.reset();
    if (leaving < messages.size()) BeginWriting(nextStart);
}

MidiSysexSend SysexSender::Lane::TakeFirst() {
    const MidiSysexSend first = messages.front().send;
    messages.pop_front();
    --leaving;
    leavingBytes -= first.byteCount;
    if (ending > 0) --ending;
    return first;
}

bool SysexSender::Lane::MayWait(int result, Time now) {
    if (result != kMidiBusy) return false;
    if (!busySince) busySince = now;
    return now - *busySince < kBusyLimit;
}

void SysexSender::Advance(Lock& lock, Lane& lane, Time now) {
    if (lane.ending > 0) return EndFirst(lock, lane, kMidiUnknownEndpoint);
    if (lane.leaving > 0 && lane.askAt <= now) return AskFirst(lock, lane, now);
    WriteDue(lock, lane, now);
}

// Nobody but this thread takes messages out, so that the one being written stays where it is.
void SysexSender::WriteDue(Lock& lock, Lane& lane, Time now) {
    if (lane.written == lane.schedule->Sent()) lane.schedule->Take(now);
    Message& message = lane.messages[lane.leaving];
    const std::size_t due = lane.schedule->Sent() - lane.written;
    if (due == 0) return lane.EndWriting(kMidiOk, lane.schedule->NextTime());
    const std::span bytes(message.send.data + lane.written, due);
    std::size_t written = 0;
    lock.unlock();
    const int result = WritePieces(message, bytes, written);
    lock.lock();
    lane.written += written;
    if (written > 0) lane.busySince.reset();
    if (lane.MayWait(result, now))
        lane.retryAt = now + kRetryAfter;
    else if (result != kMidiOk)
        lane.EndWriting(result, now);
}

void SysexSender::AskFirst(Lock& lock, Lane& lane, Time now) {
    const Message& first = lane.messages.front();
    lock.unlock();
    const int result = HasLeft(first);
    lock.lock();
    if (lane.MayWait(result, now)) {
        lane.askAt = now + kRetryAfter;
        return;
    }
    lane.busySince.reset();
    EndFirst(lock, lane, result);
}

void SysexSender::EndFirst(Lock& lock, Lane& lane, int result) {
    if (lane.leaving == 0) lane.EndWriting(result, Now());
    const MidiSysexSend ended = lane.TakeFirst();
    lock.unlock();
    Finish(ended, result);
    lock.lock();
}

void SysexSender::EndAll(Lock& lock) {
    std::vector<Message> messages;
    for (auto& [destination, lane] : m_lanes) {
        for (std::size_t i = lane.leaving; i < lane.messages.size(); ++i)
            lane.messages[i].result = kMidiNotRunning;
        messages.insert(messages.end(), lane.messages.begin(), lane.messages.end());
        lane.messages.clear();
        lane.schedule.reset();
        lane.leaving = lane.leavingBytes = lane.ending = 0;
    }
    lock.unlock();
    for (const Message& message : messages) {
        const int result = HasLeft(message);
        Finish(message.send, result == kMidiBusy ? kMidiNotRunning : result);
    }
    lock.lock();
}

int SysexSender::HasLeft(const Message& message) const {
    if (message.result != kMidiOk) return message.result;
    return m_outlet.hasLeft ? m_outlet.hasLeft(message.send.destination, message.end) : kMidiOk;
}

int SysexSender::WritePieces(Message& message, std::span<const std::uint8_t> bytes,
                             std::size_t& written) const {
    while (written < bytes.size()) {
        const auto piece =
            bytes.subspan(written).first(std::min(bytes.size() - written, m_largestPiece));
        const int result = m_outlet.write(message.send.destination, piece, message.end);
        if (result != kMidiOk) return result;
        written += piece.size();
    }
    return kMidiOk;
}

} // namespace vm
