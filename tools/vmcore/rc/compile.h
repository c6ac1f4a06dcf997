// A script's way from its bytes to the resources that are written: preprocessor, parser, languages,
// texts of DLGINIT.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "rc/SourceFiles.h"
#include "rc/preprocessor.h"
#include "rc/report.h"
#include "rc/script.h"

namespace vm::rc {

struct CompileSettings {
    PreprocessorSettings preprocessor;
    std::optional<Language> language;
};

struct Compiled {
    std::vector<Resource> resources;
    std::vector<std::string> filesRead; ///< scripts and headers
    Report report;
};

/// Throws SyntaxError.
Compiled CompileScript(const std::string& path, const std::string& bytes, const SourceFiles& files,
                       const CompileSettings& settings);

} // namespace vm::rc
