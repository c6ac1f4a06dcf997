// What the toolkit's loader must not be given: it recurses, makes as many cells as a file
// says, and loses what has no place.
#pragma once

#include <string>

class QByteArray;

namespace vm {

struct InterfaceProblem {
    int line;        ///< from 1
    std::string why; ///< empty when there is none
};

/// Why an interface file with this content must not be loaded. Refused are malformed files, elements
/// more than 64 deep in each other, tables and grids of more than 1,000 rows or columns, and two layouts of
/// one widget.
InterfaceProblem ProblemOfInterface(const QByteArray& bytes);

} // namespace vm
