#include "app/WindowList.h"

namespace vm {
namespace {

constexpr std::size_t kFirstSlots = 256;

std::size_t HashOf(const void* pointer) {
    const auto bits = reinterpret_cast<std::uintptr_t>(pointer);
    return static_cast<std::size_t>((bits >> 4) * 0x9E3779B97F4A7C15ull >> 20);
}

} // namespace

WindowList::Table::Table(std::size_t count)
    : mask(count - 1), slots(std::make_unique<Slot[]>(count)) {}

WindowList::Slot& WindowList::Table::SlotOf(const void* pointer) const {
    for (std::size_t i = HashOf(pointer);; ++i) {
        Slot& slot = slots[i & mask];
        const void* found = slot.pointer.load(std::memory_order_acquire);
        if (found == pointer || !found) return slot;
    }
}

WindowList::WindowList() {
    StartTable(kFirstSlots);
}

bool WindowList::Contains(const void* pointer) const {
    if (!pointer) return false;
    const auto found = [&] {
        const Table& table = *m_table.load(std::memory_order_acquire);
        return table.SlotOf(pointer).count.load(std::memory_order_acquire) != 0;
    };
    const std::uint32_t before = m_cleanings.load(std::memory_order_acquire);
    const bool result = found();
    if (before % 2 == 0 && m_cleanings.load(std::memory_order_acquire) == before) return result;
    std::lock_guard guard(m_lock);
    return found();
}

void WindowList::Add(const void* pointer) {
    if (!pointer) return;
    std::lock_guard guard(m_lock);
    MakeRoom();
    Slot& slot = m_table.load()->SlotOf(pointer);
    if (!slot.pointer.load(std::memory_order_relaxed)) {
        slot.pointer.store(pointer, std::memory_order_release);
        ++m_used;
    }
    slot.count.fetch_add(1, std::memory_order_release);
    m_count.fetch_add(1, std::memory_order_relaxed);
}

bool WindowList::Remove(const void* pointer) {
    if (!pointer) return false;
    std::lock_guard guard(m_lock);
    Slot& slot = m_table.load()->SlotOf(pointer);
    if (slot.count.load(std::memory_order_relaxed) == 0) return false;
    slot.count.fetch_sub(1, std::memory_order_release);
    m_count.fetch_sub(1, std::memory_order_relaxed);
    return true;
}

// With m_lock held. A table full of live entries grows; one full of old addresses is cleaned.
void WindowList::MakeRoom() {
    const std::size_t slots = Slots();
    if ((m_used + 1) * 2 <= slots) return;
    const std::vector<Entry> entries = LiveEntries();
    if (entries.size() * 4 < slots) return Clean(entries);
    StartTable(slots * 2);
    Fill(*m_tables.back(), entries);
    m_table.store(m_tables.back().get(), std::memory_order_release);
}

std::vector<WindowList::Entry> WindowList::LiveEntries() const {
    std::vector<Entry> entries;
    const Table& table = *m_table.load();
    for (std::size_t i = 0; i <= table.mask; ++i)
        if (const std::uint32_t count = table.slots[i].count.load(std::memory_order_relaxed))
            entries.push_back({table.slots[i].pointer.load(std::memory_order_relaxed), count});
    return entries;
}

void WindowList::StartTable(std::size_t slots) {
    m_tables.push_back(std::make_unique<Table>(slots));
    if (!m_table.load()) m_table.store(m_tables.back().get());
}

void WindowList::Clean(const std::vector<Entry>& entries) {
    const Table& table = *m_table.load();
    m_cleanings.fetch_add(1, std::memory_order_acq_rel);
    for (std::size_t i = 0; i <= table.mask; ++i) {
        table.slots[i].count.store(0, std::memory_order_release);
        table.slots[i].pointer.store(nullptr, std::memory_order_release);
    }
    Fill(table, entries);
    m_cleanings.fetch_add(1, std::memory_order_acq_rel);
}

void WindowList::Fill(const Table& table, const std::vector<Entry>& entries) {
    m_used = entries.size();
    for (const Entry& entry : entries) {
        Slot& slot = table.SlotOf(entry.pointer);
        slot.count.store(entry.count, std::memory_order_release);
        slot.pointer.store(entry.pointer, std::memory_order_release);
    }
}

} // namespace vm
