// Folder searches and reading by handle, against what a program would write without the library.
#include <vmcore/files/fileapi.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "harness.h"

namespace fs = std::filesystem;
using bench::Compare;
using bench::NanosecondsPer;
using bench::Pair;
using bench::Report;

namespace {

constexpr int kRounds = 11;

void Demand(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
}

// Removed with its contents, whatever happens.
class TemporaryFolder {
public:
    explicit TemporaryFolder(const fs::path& parent) {
        std::string pattern = (parent / "vmcore-bench-XXXXXX").string();
        Demand(mkdtemp(pattern.data()) != nullptr, "no temporary folder");
        m_path = pattern;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string Path() const { return m_path.string(); }

private:
    fs::path m_path;
};

// Each tenth entry is a folder.
void Fill(const std::string& folder, int count) {
    for (int i = 0; i < count; ++i) {
        const std::string path = folder + "/Patch bank " + std::to_string(i) + ".syx";
        if (i % 10 == 0) {
            Demand(mkdir(path.c_str(), 0700) == 0, "cannot create a folder");
            continue;
        }
        const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        Demand(file >= 0, "cannot create a file");
        close(file);
    }
}

int FoldersFound(const std::string& pattern) {
    int folders = 0;
    WIN32_FIND_DATA data;
    HANDLE find = FindFirstFile(pattern.c_str(), &data);
    for (BOOL more = find != nullptr; more; more = FindNextFile(find, &data))
        folders += data.dwFileAttributes == FILE_ATTRIBUTE_DIRECTORY;
    FindClose(find);
    return folders;
}

int FoldersIterated(const std::string& folder) {
    int folders = 0;
    for (const auto& entry : fs::directory_iterator(folder)) {
        struct stat status;
        folders += stat(entry.path().c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    }
    return folders;
}

void BenchFind() {
    constexpr int kEntries = 100000;
    const TemporaryFolder folder(fs::temp_directory_path());
    Fill(folder.Path(), kEntries);
    const auto time = [](const std::string& path, int (*count)(const std::string&)) {
        return NanosecondsPer(kEntries,
                              [&] { Demand(count(path) == kEntries / 10, "entries are missing"); });
    };
    const Pair pair = Compare(
        kRounds, [&] { return time(folder.Path() + "/*.*", FoldersFound); },
        [&] { return time(folder.Path(), FoldersIterated); });
    Report("find-among-100000", pair.ours, "ns/entry", "directory_iterator and stat", pair.peer);
    Report("find-among-100000-peer-spread", pair.peerSpread * 100, "% of its median");
}

// Where a file of this size stays in memory.
fs::path FolderInMemory(std::uintmax_t size) {
    std::error_code error;
    const fs::space_info space = fs::space("/dev/shm", error);
    const bool fits = !error && space.available / 2 > size && access("/dev/shm", W_OK) == 0;
    return fits ? fs::path("/dev/shm") : fs::temp_directory_path();
}

constexpr DWORD kPiece = 64 * 1024;
constexpr int kPieces = 1024 * 1024 * 1024 / kPiece;

void WritePieces(const std::string& name, std::vector<char>& piece) {
    const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    Demand(file >= 0, "cannot create a file");
    int written = 0;
    for (; written < kPieces; ++written) {
        std::fill(piece.begin(), piece.end(), static_cast<char>(written));
        if (write(file, piece.data(), kPiece) != kPiece) break;
    }
    close(file);
    Demand(written == kPieces, "no room for 1 GiB");
}

void BenchRead() {
    std::vector<char> piece(kPiece);
    const TemporaryFolder folder(FolderInMemory(std::uintmax_t{kPiece} * kPieces));
    const std::string name = folder.Path() + "/1GiB";
    WritePieces(name, piece);
    HANDLE handle = CreateFile(name.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    const int descriptor = open(name.c_str(), O_RDONLY | O_CLOEXEC);
    Demand(handle && descriptor >= 0, "cannot open the file");
    fs::remove(name); // the space is free again when this process ends, however it does

    const auto rate = [](double nanosecondsPerPiece) { return kPiece / nanosecondsPerPiece; };
    const auto ours = [&] {
        SetFilePointer(handle, 0, nullptr, FILE_BEGIN);
        return rate(NanosecondsPer(kPieces, [&] {
            DWORD done = 0;
            for (int i = 0; i < kPieces; ++i)
                Demand(ReadFile(handle, piece.data(), kPiece, &done, nullptr) && done == kPiece,
                       "ReadFile failed");
        }));
    };
    const auto peer = [&] {
        lseek(descriptor, 0, SEEK_SET);
        return rate(NanosecondsPer(kPieces, [&] {
            for (int i = 0; i < kPieces; ++i)
                Demand(read(descriptor, piece.data(), kPiece) == kPiece, "read failed");
        }));
    };
    const Pair pair = Compare(kRounds, ours, peer);
    Report("read-1GiB", pair.ours, "GB/s", "read", pair.peer, bench::Better::Higher);
    Report("read-1GiB-peer-spread", pair.peerSpread * 100, "% of its median");
    CloseHandle(handle);
    close(descriptor);
}

} // namespace

int main() try {
    BenchFind();
    BenchRead();
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "files: %s\n", error.what());
    return 1;
}
