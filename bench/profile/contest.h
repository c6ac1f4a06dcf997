// One file and the stores that can read it: what is measured of each, a column at a time.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "../harness.h"
#include "files.h"
#include "questions.h"
#include "store.h"

namespace bench {

/// True when `store` opens the file and finds nine in ten of its entries; the rest is said on
/// standard error.
bool CanRead(Store& store, const IniFile& file, const std::string& path);

class Contest {
public:
    Contest(const IniFile& file, Folder& folder);
    ~Contest();
    Contest(const Contest&) = delete;
    Contest& operator=(const Contest&) = delete;
    /// Prints every column but the heap. The library's random hit, for who compares sizes.
    double Run();

private:
    struct Seat {
        std::unique_ptr<Store> store;
        std::string path; ///< the store's own copy of the file
    };
    using Measure = std::function<double(Seat&)>;

    void Admit(std::unique_ptr<Store> store);
    void Drop(Seat& seat);
    double OpenNanoseconds(Seat& seat, const Batch& first);
    /// What the library has in the column.
    double Column(const std::string& name, const std::string& unit, const Measure& measure);
    void TimeColumn(const std::string& name, const Measure& nanoseconds);
    double LookUps(const std::string& name, const Batch& batch);
    void Loads();
    void Sets();
    void SetAndSave();
    void SetNew();

    const IniFile& m_file;
    Folder& m_folder;
    Questions m_questions;
    std::vector<Seat> m_seats; ///< the library first
};

/// What every store that can read the file holds on the heap after a look-up in each section. To be
/// called before anything else has opened a file in this process.
void ReportHeap(const IniFile& file, Folder& folder);

/// Random hits of the library among as many entries, spread over `file`, as `small` has, against
/// those in `small`: the cost of a look-up in a large file apart from its cache misses.
void ReportFlatness(const IniFile& file, const IniFile& small, Folder& folder);

} // namespace bench
