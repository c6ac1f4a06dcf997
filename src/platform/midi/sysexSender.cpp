// Only the sender's thread reads the messages' data and reports their end, so that a message is
// never touched after its end was reported.
#include "platform/midi/sysexSender.h"

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

namespace vm {

namespace {

using Clock = std::chrono::steady_clock;
using Time = SysexSchedule::Time;

Time Now() {
    return std::chrono::duration_cast<Time>(Clock::now().time_since_epoch());
}

constexpr Time kRetryAfter = std::chrono::milliseconds(1);
constexpr Time kBusyLimit = std::chrono::seconds(10);

Clock::time_point AsTimePoint(Time time) {
    return Clock::time_point(std::chrono::duration_cast<Clock::duration>(time));
}

} // namespace

SysexSender::SysexSender(Write write, std::size_t largestPiece)
    : m_write(std::move(write)), m_largestPiece(largestPiece) {}

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
    lane.messages.push_back(send);
    if (!lane.schedule) BeginFirst(lane, Now());
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
        if (!lane.schedule) continue;
        if (!next || lane.NextTime() < next->NextTime()) next = &lane;
    }
    return next;
}

Time SysexSender::Lane::NextTime() const {
    if (ending > 0) return Time::zero();
    const bool isBehind = written < schedule->Sent();
    return isBehind ? retryAt : std::max(retryAt, schedule->NextTime());
}

void SysexSender::BeginFirst(Lane& lane, Time start) const {
    lane.schedule.emplace(lane.messages.front().byteCount, lane.speed, start, lane.gap);
    lane.written = 0;
    lane.retryAt = lane.lastProgress = start;
}

void SysexSender::Advance(Lock& lock, Lane& lane, Time now) {
    if (lane.ending > 0) return EndFirst(lock, lane, now);
    if (lane.written == lane.schedule->Sent()) lane.schedule->Take(now);
    const MidiSysexSend message = lane.messages.front();
    const std::size_t count = lane.schedule->Sent() - lane.written;
    const std::uint8_t* data = message.data + lane.written;
    lock.unlock();
    const auto [result, bytes] = WritePieces(message.destination, {data, count});
    lock.lock();
    lane.written += bytes;
    if (bytes > 0 || result != kMidiBusy) lane.lastProgress = now;
    if (result == kMidiBusy && now - lane.lastProgress < kBusyLimit)
        lane.retryAt = now + kRetryAfter;
    else if (result != kMidiOk)
        EndFirst(lock, lane, now);
    else if (count == 0)
        EndFirst(lock, lane, lane.schedule->NextTime());
}

// The message after it starts at `nextStart`, which keeps a row of messages at the exact speed.
void SysexSender::EndFirst(Lock& lock, Lane& lane, Time nextStart) {
    const MidiSysexSend ended = lane.messages.front();
    lane.messages.pop_front();
    if (lane.ending > 0) --lane.ending;
    lane.schedule.reset();
    if (!lane.messages.empty()) BeginFirst(lane, nextStart);
    if (!ended.done) return;
    lock.unlock();
    ended.done(ended.reference);
    lock.lock();
}

void SysexSender::EndAll(Lock& lock) {
    std::vector<MidiSysexSend> ended;
    for (auto& [destination, lane] : m_lanes) {
        ended.insert(ended.end(), lane.messages.begin(), lane.messages.end());
        lane.messages.clear();
        lane.schedule.reset();
        lane.ending = 0;
    }
    lock.unlock();
    for (const MidiSysexSend& message : ended)
        if (message.done) message.done(message.reference);
    lock.lock();
}

SysexSender::Written SysexSender::WritePieces(MidiId destination,
                                              std::span<const std::uint8_t> bytes) const {
    Written written{kMidiOk, 0};
    do {
        const auto piece = bytes.subspan(written.bytes)
                               .first(std::min(bytes.size() - written.bytes, m_largestPiece));
        written.result = m_write(destination, piece);
        if (written.result != kMidiOk) return written;
        written.bytes += piece.size();
    } while (written.bytes < bytes.size());
    return written;
}

} // namespace vm
