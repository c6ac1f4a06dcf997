// A hash over the keys of one section: which line holds the first entry of a key. Small on purpose,
// because a file may have tens of thousands of sections: 2 bytes a slot (4 in sections of more than
// 65,000 lines), one and a half slots a line. It knows positions only; the caller compares texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace vm {

class SectionKeys {
public:
    static constexpr std::uint32_t kNone = 0; ///< line 0 is a header, never an entry

    bool IsBuilt() const { return m_count != 0; }
    void Clear() {
        m_slots.reset();
        m_count = 0;
        m_room = 0;
    }

    /// An empty table for the entries of a section of `lines` lines.
    void Build(std::uint32_t lines) {
        m_room = lines + lines / 4;
        m_count = m_room + m_room / 4 + 8;
        m_wide = m_room > 0xFFFF;
        m_slots = std::make_unique<std::uint16_t[]>(std::size_t{m_count} << m_wide);
    }

    /// True while another line at this position can be added without a new table.
    bool HasRoomFor(std::uint32_t line) const { return line <= m_room; }

    /// The line of the first entry that `matches(line)` says yes to, or kNone; `slot` is then where
    /// it belongs.
    template <class Matches>
    std::uint32_t Find(std::uint64_t hash, Matches&& matches, std::uint32_t* slot = nullptr) const {
        std::uint32_t at = static_cast<std::uint32_t>((hash >> 32) * m_count >> 32);
        for (;;) {
            const std::uint32_t line = Get(at);
            if (line == kNone || matches(line)) {
                if (slot) *slot = at;
                return line;
            }
            if (++at == m_count) at = 0;
        }
    }

    void Put(std::uint32_t slot, std::uint32_t line) {
        if (!m_wide) {
            m_slots[slot] = static_cast<std::uint16_t>(line);
            return;
        }
        m_slots[slot * 2] = static_cast<std::uint16_t>(line);
        m_slots[slot * 2 + 1] = static_cast<std::uint16_t>(line >> 16);
    }

private:
    std::uint32_t Get(std::uint32_t slot) const {
        if (!m_wide) return m_slots[slot];
        return m_slots[std::size_t{slot} * 2] | std::uint32_t{m_slots[std::size_t{slot} * 2 + 1]}
                                                    << 16;
    }

    std::unique_ptr<std::uint16_t[]> m_slots;
    std::uint32_t m_count = 0; ///< slots; 0 before Build
    std::uint32_t m_room = 0;  ///< the highest line number that may be put in
    bool m_wide = false;
};

} // namespace vm
