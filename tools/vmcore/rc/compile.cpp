// The steps of the compiler in their order.
#include "rc/compile.h"

#include "rc/dialogInit.h"
#include "rc/parser.h"
#include "rc/selectLanguage.h"

namespace vm::rc {

Compiled CompileScript(const std::string& path, const std::string& bytes, const SourceFiles& files,
                       const CompileSettings& settings) {
    Compiled compiled;
    Preprocessor preprocessor(files, settings.preprocessor, compiled.report);
    const TokenList tokens = preprocessor.Run(path, bytes);
    compiled.filesRead = preprocessor.FilesRead();
    Script script = ParseScript(tokens, files, compiled.report);
    compiled.resources =
        SelectLanguage(std::move(script.resources), settings.language, compiled.report);
    GiveTexts(compiled.resources, compiled.report);
    return compiled;
}

} // namespace vm::rc
