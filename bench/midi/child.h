// The processes of this benchmark. Each library is measured in one of its own, so that the threads
// of the others, and what they do to the MIDI system, are not counted with it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

#include "figures.h"

namespace bench {

/// A running program, whose output is read. It ends with this object, and with this process.
class Child {
public:
    explicit Child(std::vector<std::string> command); ///< finds the program as a shell does
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    std::optional<std::string> ReadLine(); ///< nothing when it has ended
    bool Succeeded();                      ///< waits for its end

private:
    pid_t m_process = -1;
    int m_output = -1;
};

std::vector<std::string> OwnProgram(const std::vector<std::string>& arguments);

/// What this program tells when it is started with these arguments. Throws NotMeasured.
Figures Measure(const std::vector<std::string>& arguments);
void Tell(const Figures& figures);
void Tell(const NotMeasured& reason);

} // namespace bench
