// The constants that scripts take from the interfaces' own headers, which are built in: names and
// documented numbers. A script may define any of them itself.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vm::rc {

struct Constant {
    std::string_view name;
    std::uint32_t value;
};

std::optional<std::uint32_t> ConstantValue(std::string_view name);
/// The class names of common controls: "SysListView32" of WC_LISTVIEW.
std::optional<std::string_view> ConstantText(std::string_view name);
/// Whether the file is one of the interfaces' own, so that it need not be there.
bool IsBuiltInHeader(std::string_view path);
/// Like afxres.rc: resources of the framework, which the library does not need.
bool IsBuiltInScript(std::string_view path);

// By topic; `ConstantValue` looks through all of them.
std::span<const Constant> WindowConstants();
std::span<const Constant> ControlConstants();
std::span<const Constant> CommonControlConstants();
std::span<const Constant> KeyConstants();
std::span<const Constant> LanguageConstants();
std::span<const Constant> CommandConstants();

} // namespace vm::rc
