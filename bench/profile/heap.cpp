// Memory that the stores hold, each measured in a process of its own: memory that one has freed and
// keeps for itself would hide what the next file takes.
#include "contest.h"

#include <cstdio>

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {
namespace {

// Large blocks are mapped one by one, and counted apart.
double BytesInUse() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

// -1 when it cannot read the file.
double HeapBytes(Store& store, const IniFile& file, const std::string& tiny,
                 const std::string& path) {
    const Batch each = Questions(file).OneInEachSection();
    store.Open(tiny); // what a store makes once for all files is not this file's
    CountFound(store, Questions(file).First());
    store.Close();
    malloc_trim(0);
    const double before = BytesInUse();
    const bool opened = store.Open(path);
    if (opened) CountFound(store, each);
    const double bytes = BytesInUse() - before;
    return opened && CountFound(store, each) * 10 >= each.size() * 9 ? bytes : -1;
}

double InChild(const std::function<double()>& measure) {
    int ends[2];
    if (pipe(ends) != 0) return -1;
    const pid_t child = fork();
    if (child == 0) {
        const double value = measure();
        _exit(write(ends[1], &value, sizeof(value)) == sizeof(value) ? 0 : 1);
    }
    close(ends[1]);
    double value = -1;
    if (read(ends[0], &value, sizeof(value)) != sizeof(value)) std::perror("bench_profile: heap");
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return value;
}

} // namespace

void ReportHeap(const IniFile& file, Folder& folder) {
    const std::string tiny = folder.NewName();
    const std::string path = folder.NewName();
    WriteText(tiny, "[a]\nb=c\n");
    WriteText(path, file.text);
    std::vector<std::unique_ptr<Store>> stores = MakePeers();
    stores.insert(stores.begin(), MakeOurStore());
    const double unit = IsLarge(file) ? 1 << 20 : 1 << 10;
    std::vector<Figure> figures;
    for (const std::unique_ptr<Store>& store : stores) {
        const double bytes = InChild([&] { return HeapBytes(*store, file, tiny, path); });
        if (bytes >= 0) figures.push_back({store->Name(), bytes / unit, bytes / unit});
    }
    ReportBest("heap-" + file.name, figures, IsLarge(file) ? "MB" : "KB");
}

} // namespace bench
