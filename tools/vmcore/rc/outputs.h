// The files that a script becomes, put into their folder; and what they are made from, for builds.
#pragma once

#include <string>
#include <vector>

#include "rc/script.h"
#include "rc/writers.h"

namespace vm::rc {

/// Each file is replaced as a whole, or left alone with its time when it has these bytes already. The
/// folder is made. Throws tool::Exit (1) for what cannot be written.
void PutFiles(const std::string& folder, const std::vector<OutputFile>& files);

/// The paths of pictures and other files that the resources name, as far as they are there.
std::vector<std::string> FilesNamed(const std::vector<Resource>& resources);

/// A rule for make: the outputs depend on the inputs, each of which may go away.
std::string DependencyRule(const std::vector<std::string>& outputs,
                           const std::vector<std::string>& inputs);

} // namespace vm::rc
