// The integer expressions of #if and #elif, with every operator and the arithmetic of C.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "rc/token.h"

namespace vm::rc {

struct ConditionError {
    const Token* at; ///< null: at the end
    std::string text;
};

/// `words` have no macros left in them. Names are worth what `valueOf` says, 0 if nothing. Throws
/// ConditionError.
using NameValue = std::function<long long(const std::string& name)>;
bool IsTrue(const std::vector<Token>& words, const NameValue& valueOf);

} // namespace vm::rc
