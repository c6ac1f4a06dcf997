// bench_ftp [MEGABYTES]
// Files over loopback against the programs curl and lftp: one large one (1,024 megabytes without an
// argument), and 1,000 of 4 KiB. Every competitor is a program of its own; the files are in memory.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "harness.h"
#include "servers.h"

namespace fs = std::filesystem;
using bench::Competitor;
using bench::Run;

namespace {

constexpr int kLargeRounds = 7;
constexpr int kSmallRounds = 3;
constexpr int kSmallFiles = 1000;
constexpr int kSmallSize = 4096;

struct Place {
    const bench::Folder& folder;
    std::string host;

    std::string Served(const std::string& name) const { return folder / ("served/Banks/" + name); }
    std::string Local(const std::string& name) const { return folder / ("local/" + name); }
    std::string Url(const std::string& name) const { return "ftp://" + host + "/Banks/" + name; }
};

void WriteFile(const std::string& path, int megabytes) {
    std::vector<char> block(1 << 20);
    std::ofstream file(path, std::ios::binary);
    for (int i = 0; i < megabytes; ++i) {
        for (std::size_t k = 0; k < block.size(); ++k)
            block[k] = static_cast<char>(k * 7 + k / 256 + i);
        file.write(block.data(), static_cast<std::streamsize>(block.size()));
    }
}

double SecondsOf(const std::function<void()>& body) {
    const auto start = std::chrono::steady_clock::now();
    body();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Megabytes a second; the target is made anew, and must be whole.
Competitor Large(const std::string& name, const std::string& target, int megabytes,
                 std::vector<std::string> words) {
    return {name, [=] {
                fs::remove(target);
                const double seconds = SecondsOf([&] { Run(words); });
                if (fs::file_size(target) != std::uintmax_t(megabytes) << 20)
                    throw std::runtime_error(name + " transferred something else");
                return megabytes / seconds;
            }};
}

void MeasureLarge(const std::string& server, const Place& place, int megabytes) {
    const std::string size = std::to_string(megabytes) + " MiB, " + server;
    const std::string down = place.Local("down");
    bench::ReportBest(
        "download of " + size,
        bench::CompareAll(
            kLargeRounds,
            {Large("ours", down, megabytes, {FTP_OURS, "get", place.host, "Banks", "large", down}),
             Large("curl", down, megabytes, {"curl", "-s", "-o", down, place.Url("large")}),
             Large("lftp", down, megabytes,
                   {"lftp", "-c", "get " + place.Url("large") + " -o " + down})}),
        "MiB/s", bench::Better::Higher);
    const std::string up = place.Served("up");
    const std::string source = place.Local("large");
    bench::ReportBest(
        "upload of " + size,
        bench::CompareAll(
            kLargeRounds,
            {Large("ours", up, megabytes, {FTP_OURS, "put", place.host, "Banks", "up", source}),
             Large("curl", up, megabytes, {"curl", "-s", "-T", source, place.Url("up")}),
             Large("lftp", up, megabytes,
                   {"lftp", "-c", "put " + source + " -o " + place.Url("up")})}),
        "MiB/s", bench::Better::Higher);
}

// Files a second.
Competitor Small(const std::string& name, const Place& place, const std::function<void()>& fetch) {
    return {name, [=, &place] {
                fs::remove_all(place.Local("small"));
                fs::create_directory(place.Local("small"));
                const double seconds = SecondsOf(fetch);
                for (int i = 0; i < kSmallFiles; ++i)
                    if (fs::file_size(place.Local("small/s" + std::to_string(i))) != kSmallSize)
                        throw std::runtime_error(name + " missed a file");
                return kSmallFiles / seconds;
            }};
}

void FetchByCurl(const Place& place) {
    for (int i = 0; i < kSmallFiles; ++i) {
        const std::string name = "s" + std::to_string(i);
        Run({"curl", "-s", "-o", place.Local("small/" + name), place.Url(name)});
    }
}

void MeasureSmall(const std::string& server, const Place& place) {
    const std::string name = "download of 1,000 files of 4 KiB, " + server;
    const auto figures = bench::CompareAll(
        kSmallRounds,
        {Small("ours", place,
               [&] {
                   Run({FTP_OURS, "get", place.host, "Banks", "s", place.Local("small/s"),
                        std::to_string(kSmallFiles)});
               }),
         Small("one curl a file", place, [&] { FetchByCurl(place); }),
         Small("one lftp", place, [&] {
             Run({"lftp", "-c",
                  "open " + place.host + "; mget -O " + place.Local("small") + " Banks/s*"});
         })});
    for (std::size_t peer : {1u, 2u})
        bench::Report(name, figures[0].value, "files/s", figures[peer].name, figures[peer].value,
                      bench::Better::Higher);
}

void Measure(bench::ServerKind kind, const std::string& name, int megabytes) {
    const bench::Folder folder;
    fs::create_directories(folder / "served/Banks");
    fs::create_directory(folder / "local");
    const bench::Server server(kind, folder / "served", folder / "server.conf");
    const Place place{folder, server.Host()};
    WriteFile(place.Served("large"), megabytes);
    WriteFile(place.Local("large"), megabytes);
    for (int i = 0; i < kSmallFiles; ++i)
        std::ofstream(place.Served("s" + std::to_string(i))) << std::string(kSmallSize, 's');
    MeasureLarge(name, place, megabytes);
    MeasureSmall(name, place);
}

} // namespace

int main(int count, char** words) {
    try {
        const int megabytes = count > 1 ? std::atoi(words[1]) : 1024;
        Measure(bench::ServerKind::Vsftpd, "vsftpd", megabytes);
        Measure(bench::ServerKind::Pyftpdlib, "pyftpdlib", megabytes);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_ftp: %s\n", error.what());
        return 1;
    }
}
