// The lines of one file of a script as UTF-8, each decoded with the code page that holds where it
// stands, and put together where a backslash ends a line.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "rc/codePages.h"

namespace vm::rc {

struct SourceLine {
    /// Where a line of the file begins in the text.
    struct Part {
        std::size_t offset;
        int line;
    };
    std::string text;
    std::vector<Part> parts;
};

class SourceLines {
public:
    /// Told of each line with bytes that cannot be read.
    using Lacking = std::function<void(int line, const std::vector<unsigned char>& bytes)>;

    /// `codePage` holds for files without a byte-order mark, until UseCodePage.
    SourceLines(std::string bytes, int codePage, Lacking lacking);

    bool Next(SourceLine& line);
    int CodePage() const { return m_codePage; }
    /// False for a file whose mark says what it is: that counts.
    bool UseCodePage(int codePage);

private:
    bool Append(SourceLine& line);

    std::string m_bytes;
    std::size_t m_at = 0;
    int m_line = 0;
    int m_codePage;
    bool m_marked = false;
    Lacking m_lacking;
};

} // namespace vm::rc
