// replay FOLDER...
// Runs a fuzz target once over every file of its corpus, in a build without libFuzzer.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "target.h"

namespace fs = std::filesystem;

namespace {

int Replay(const fs::path& folder) {
    int count = 0;
    for (const auto& entry : fs::directory_iterator(folder)) {
        std::fprintf(stderr, "%s\n", entry.path().c_str()); // the last one is the culprit
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        ++count;
    }
    return count;
}

} // namespace

int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i < argc; ++i) count += Replay(argv[i]);
    std::printf("%d inputs\n", count);
    return count > 0 ? 0 : 1;
}
