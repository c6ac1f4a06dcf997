// Where messages begin and end.
#include "SyxFile.h"

#include "command.h"
#include "iniFile.h"
#include "midiText.h"

namespace vm::tool {
namespace {

std::uint8_t At(std::string_view bytes, std::size_t position) {
    return static_cast<std::uint8_t>(bytes[position]);
}

SyxMessages Problem(std::string_view bytes, std::size_t position, const std::string& what) {
    const std::uint8_t byte = At(bytes, position);
    return {{}, "byte " + std::to_string(position) + " is " + Hex({&byte, 1}) + ", " + what};
}

// The position behind the data bytes that begin at `position`.
std::size_t EndOfData(std::string_view bytes, std::size_t position) {
    while (position < bytes.size() && At(bytes, position) < 0x80) ++position;
    return position;
}

} // namespace

SyxMessages SplitSyx(std::string_view bytes) {
    if (bytes.empty()) return {{}, "it is empty"};
    SyxMessages result;
    for (std::size_t begin = 0; begin < bytes.size();) {
        if (At(bytes, begin) != 0xF0)
            return Problem(bytes, begin, "where a SysEx message should begin with F0");
        const std::size_t end = EndOfData(bytes, begin + 1);
        const std::string place = "the SysEx message that begins at byte " + std::to_string(begin);
        if (end == bytes.size()) return {{}, place + " has no end (F7)"};
        if (At(bytes, end) != 0xF7) return Problem(bytes, end, "inside " + place);
        result.messages.push_back(bytes.substr(begin, end + 1 - begin));
        begin = end + 1;
    }
    return result;
}

SyxFile::SyxFile(const std::string& file) : m_bytes(ReadBytes(file)) {
    SyxMessages split = SplitSyx(m_bytes);
    if (!split.problem.empty())
        throw Exit{kTrouble, file + " is no file of SysEx messages: " + split.problem};
    m_messages = std::move(split.messages);
}

} // namespace vm::tool
