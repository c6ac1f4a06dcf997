// What the measuring processes tell the one that started them: values with names, and failure.
#pragma once

#include <map>
#include <stdexcept>
#include <string>

namespace bench {

using Figures = std::map<std::string, double>;

/// Why something is not measured.
class NotMeasured : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace bench
