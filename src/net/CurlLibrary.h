// The functions of libcurl, found at run time: loading it takes longer than the rest of a program's
// start, and most runs transfer nothing. Nothing is linked; the headers give the types.
#pragma once

#include <curl/curl.h>

namespace vm {

#define VM_CURL_FUNCTIONS(X)                                                                       \
    X(easy_cleanup)                                                                                \
    X(easy_init)                                                                                   \
    X(easy_perform)                                                                                \
    X(easy_setopt)                                                                                 \
    X(easy_strerror)                                                                               \
    X(global_cleanup)                                                                              \
    X(global_init)                                                                                 \
    X(slist_append)                                                                                \
    X(slist_free_all)

struct CurlLibrary {
#define VM_CURL_MEMBER(name) decltype(&curl_##name) name = nullptr;
    VM_CURL_FUNCTIONS(VM_CURL_MEMBER)
#undef VM_CURL_MEMBER

    /// Loads it with the first call, from any thread. Null when it is missing or lacks a function.
    static const CurlLibrary* Get();
};

} // namespace vm
