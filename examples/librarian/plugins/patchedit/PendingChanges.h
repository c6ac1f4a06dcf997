// Changes of parameters that were not sent yet: each parameter once, with its last value. A knob
// that is dragged so gives one message for each time the editor comes to send. Pure.
#pragma once

#include <algorithm>
#include <deque>

class PendingChanges {
public:
    struct Change {
        int parameter;
        int value;
    };

    /// A parameter that is waiting already keeps its place in the line.
    void Set(int parameter, int value) {
        const auto waiting =
            std::find_if(m_changes.begin(), m_changes.end(),
                         [=](const Change& change) { return change.parameter == parameter; });
        if (waiting == m_changes.end())
            m_changes.push_back({parameter, value});
        else
            waiting->value = value;
    }
    bool IsEmpty() const { return m_changes.empty(); }
    const Change& First() const { return m_changes.front(); }
    void RemoveFirst() { m_changes.pop_front(); }
    void Clear() { m_changes.clear(); }

private:
    std::deque<Change> m_changes;
};
