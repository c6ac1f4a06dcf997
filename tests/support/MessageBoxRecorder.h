// Answers message boxes and records them. Boxes that the test did not take fail it at the end.
#pragma once

#include <string>
#include <vector>

#include "platform/messagebox.h"

struct ShownBox {
    std::string text;
    std::string caption;
    unsigned style;
    bool operator==(const ShownBox&) const = default;
};
void PrintTo(const ShownBox& box, std::ostream* out);

class MessageBoxRecorder {
public:
    explicit MessageBoxRecorder(int answer = 1);
    ~MessageBoxRecorder();
    MessageBoxRecorder(const MessageBoxRecorder&) = delete;
    MessageBoxRecorder& operator=(const MessageBoxRecorder&) = delete;

    std::vector<ShownBox> Take(); ///< the boxes so far, in order; forgets them

private:
    std::vector<ShownBox> m_boxes;
    vm::MessageBoxHandler m_before;
};
