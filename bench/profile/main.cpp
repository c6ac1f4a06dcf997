// Settings in ini files: the library's profile functions against GLib, Qt and SimpleIni, on generated
// files of three sizes and on files of the shapes that programs really have. Names of files as
// arguments limit it to these.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include <QtCore/QCoreApplication>

#include "contest.h"

using bench::IniFile;

namespace {

std::vector<IniFile> MakeFiles() {
    return {bench::GridFile(10, 20), bench::GridFile(1000, 100), bench::GridFile(10000, 100),
            bench::BrowsersFile(),   bench::DataFile("server"),  bench::DataFile("theme")};
}

void KeepNamed(std::vector<IniFile>& files, const std::vector<std::string>& names) {
    std::erase_if(files, [&](const IniFile& file) {
        return std::find(names.begin(), names.end(), file.name) == names.end();
    });
}

// Random hits in the larger generated files against those in the smallest.
void ReportGrowth(const std::vector<IniFile>& files, const std::map<std::string, double>& hits,
                  bench::Folder& folder) {
    const IniFile& small = files.front();
    if (small.name != "10x20") return;
    for (const IniFile& file : files) {
        if (&file == &small || std::isdigit(file.name[0]) == 0) continue;
        bench::Report("flat-hit-" + file.name, hits.at(file.name), "ns", "VMCore at " + small.name,
                      hits.at(small.name));
        bench::ReportFlatness(file, small, folder);
    }
}

} // namespace

int main(int argc, char** argv) {
    std::vector<IniFile> files = MakeFiles();
    if (argc > 1) KeepNamed(files, {argv + 1, argv + argc});
    if (files.empty()) {
        std::fprintf(stderr, "bench_profile: no such file\n");
        return 1;
    }
    bench::Folder folder;
    for (const IniFile& file : files) bench::ReportHeap(file, folder);
    QCoreApplication application(argc, argv); // for QSettings
    std::map<std::string, double> hits;
    for (const IniFile& file : files) hits[file.name] = bench::Contest(file, folder).Run();
    ReportGrowth(files, hits, folder);
    return 0;
}
