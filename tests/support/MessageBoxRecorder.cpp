#include "support/MessageBoxRecorder.h"

#include <ostream>
#include <utility>

#include <gtest/gtest.h>

void PrintTo(const ShownBox& box, std::ostream* out) {
    *out << '"' << box.text << "\" titled \"" << box.caption << "\" style " << box.style;
}

MessageBoxRecorder::MessageBoxRecorder(int answer) {
    m_before =
        vm::SetMessageBoxHandler([this, answer](const char* text, const char* caption, UINT style) {
            m_boxes.push_back({text ? text : "", caption ? caption : "", style});
            return answer;
        });
}

MessageBoxRecorder::~MessageBoxRecorder() {
    vm::SetMessageBoxHandler(std::move(m_before));
    for (const ShownBox& box : m_boxes)
        ADD_FAILURE() << "unexpected message box: " << testing::PrintToString(box);
}

std::vector<ShownBox> MessageBoxRecorder::Take() {
    return std::exchange(m_boxes, {});
}
