// A counted set of pointers that any thread may ask without a lock: the list of live window
// objects. Every message asks it first, so a look-up costs a few nanoseconds, however many windows
// live.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace vm {

class WindowList {
public:
    WindowList();

    void Add(const void* pointer);
    /// Takes away one entry; false when there is none.
    bool Remove(const void* pointer);
    bool Contains(const void* pointer) const;
    std::size_t Count() const { return m_count.load(std::memory_order_relaxed); }
    /// The size of the table, for whoever watches its growth.
    std::size_t Slots() const { return m_table.load()->mask + 1; }

private:
    // Open addressing, at least half of the slots free. A slot keeps its pointer when its count
    // falls to 0: no entry moves while a reader walks, and the next object at that address finds
    // its slot again.
    struct Slot {
        std::atomic<const void*> pointer{nullptr};
        std::atomic<std::uint32_t> count{0};
    };
    struct Table {
        explicit Table(std::size_t slots);
        Slot& SlotOf(const void* pointer) const; // the pointer's slot, or the free one to take
        std::size_t mask;
        std::unique_ptr<Slot[]> slots;
    };
    struct Entry {
        const void* pointer;
        std::uint32_t count;
    };

    void MakeRoom();
    std::vector<Entry> LiveEntries() const;
    void StartTable(std::size_t slots);
    void Clean(const std::vector<Entry>& entries);
    void Fill(const Table& table, const std::vector<Entry>& entries);

    mutable std::mutex m_lock; // writers, and readers that meet a clean-up
    std::atomic<const Table*> m_table{nullptr};
    std::atomic<std::uint32_t> m_cleanings{0}; // odd while the table is emptied and filled again
    std::size_t m_used = 0;                    // slots with a pointer; guarded by m_lock
    std::atomic<std::size_t> m_count{0};
    // All tables that were ever current, because a reader may still walk an old one. Each is twice
    // the one before, so the old ones together are smaller than the current one.
    std::vector<std::unique_ptr<Table>> m_tables; // guarded by m_lock
};

} // namespace vm
