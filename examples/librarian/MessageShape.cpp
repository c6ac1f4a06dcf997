#include "MessageShape.h"

#include <algorithm>

namespace {

std::size_t HeadLength(const SysexBytes& message) {
    const bool isLong = message.size() > 1 && message[1] == 0; // a maker's number of three bytes
    return std::min(message.size(), std::size_t{isLong ? 4u : 2u});
}

} // namespace

SysexBytes ShapeOf(const SysexBytes& message, std::size_t columns) {
    const std::size_t begin = HeadLength(message);
    const std::size_t end = message.size() - (!message.empty() && message.back() == 0xF7);
    if (columns == 0 || end <= begin) return {};
    const std::size_t count = end - begin;
    SysexBytes shape(std::min(columns, count));
    for (std::size_t i = 0; i < count; ++i) {
        BYTE& column = shape[i * shape.size() / count];
        column = std::max(column, message[begin + i]);
    }
    return shape;
}

std::string CountOfBytes(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}
