// What the toolkit's loader must not be given: it recurses, and makes as many cells as a file says.
#pragma once

#include <string>

class QByteArray;

namespace vm {

struct InterfaceProblem {
    int line;        ///< from 1
    std::string why; ///< empty when there is none
};

/// Why an interface file with this content must not be loaded. Refused are malformed files, elements
/// more than 64 deep in each other, tables and grids of more than 1,000 rows or columns.
InterfaceProblem ProblemOfInterface(const QByteArray& bytes);

} // namespace vm
