# Sourced by the other scripts: goes to the repository's folder; build() does all the set-up.
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
