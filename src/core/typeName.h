// The name of a type as it is written in a program.
#pragma once

#include <cstdlib>
#include <memory>
#include <string>
#include <typeinfo>

#include <cxxabi.h>

namespace vm {

inline std::string TypeName(const std::type_info& type) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> text(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), std::free);
    return text ? text.get() : type.name();
}

} // namespace vm
