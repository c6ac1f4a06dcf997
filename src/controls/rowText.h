// The text that a row of a list has of its own. Most rows have none: it takes one pointer then.
#pragma once

#include <cstring>
#include <memory>

namespace vm {

class RowText {
public:
    RowText() = default;
    explicit RowText(const char* text) {
        if (!text || !*text) return;
        const std::size_t size = std::strlen(text) + 1;
        m_text = std::make_unique<char[]>(size);
        std::memcpy(m_text.get(), text, size);
    }

    const char* Get() const { return m_text ? m_text.get() : ""; }

private:
    std::unique_ptr<char[]> m_text;
};

} // namespace vm
