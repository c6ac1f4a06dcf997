// min and max as <windows.h> brings them: of two values that may have different types. Not there when
// NOMINMAX is defined in front of the first header, or when macros of these names are.
//
// They are functions, not macros, so that std::min and members of these names work. The result has the
// type of `true ? a : b`, and the comparison is made in it: min(-1, 1u) is 1. The pack, which is always
// empty, makes them the worst match: std::min after `using namespace std`, and whatever a host declares
// itself, comes first.
#pragma once

#if !defined(NOMINMAX) && !defined(min) && !defined(max)

#include <type_traits>

template <class A, class B, class... None>
constexpr std::enable_if_t<sizeof...(None) == 0, std::common_type_t<A, B>> min(A a, B b, None...) {
    using Common = std::common_type_t<A, B>;
    return static_cast<Common>(a) < static_cast<Common>(b) ? static_cast<Common>(a)
                                                           : static_cast<Common>(b);
}

template <class A, class B, class... None>
constexpr std::enable_if_t<sizeof...(None) == 0, std::common_type_t<A, B>> max(A a, B b, None...) {
    using Common = std::common_type_t<A, B>;
    return static_cast<Common>(b) < static_cast<Common>(a) ? static_cast<Common>(a)
                                                           : static_cast<Common>(b);
}

#endif
