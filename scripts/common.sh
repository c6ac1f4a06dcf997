# Sourced by the other scripts: goes to the repository's folder; build() does all the set-up,
# sanitizers() tells sanitized programs what is known.
set -eu

cd "$(dirname "$0")/.."

# build PRESET [TARGET...]
build() {
    preset=$1
    shift
    scripts/setup
    mkdir -p build
    if ! cmake --preset "$preset" >"build/configure-$preset.log" 2>&1; then
        cat "build/configure-$preset.log" >&2
        return 1
    fi
    cmake --build "build/$preset" ${1+--target "$@"}
}

# What programs built with sanitizers are told.
sanitizers() {
    support=$PWD/tests/support
    export LSAN_OPTIONS="suppressions=$support/lsan.supp:print_suppressions=0"
    export ASAN_OPTIONS=detect_stack_use_after_return=1
    export UBSAN_OPTIONS=print_stacktrace=1
    # The toolkit is not instrumented: what its own threads do with its own memory is not ours to judge.
    export TSAN_OPTIONS="suppressions=$support/tsan.supp:ignore_noninstrumented_modules=1:second_deadlock_stack=1"
}
