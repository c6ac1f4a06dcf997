// What the stores are asked about a file: random, but the same for all stores and in every run.
#pragma once

#include <cstddef>
#include <random>
#include <string>

#include "files.h"
#include "store.h"

namespace bench {

constexpr std::size_t kQuestions = 50000; ///< of a batch

class Questions {
public:
    explicit Questions(const IniFile& file) : m_file(file) {}

    Batch First() const; ///< one look-up in the middle of the file
    Batch OneInEachSection() const;
    Batch Hits() { return HitsAmong(0, m_file.entries.size(), 1); }
    Batch HitsInOneSection();
    /// Hits of the entries 0, step, 2 * step and so on, `count` of them.
    Batch HitsAmong(std::size_t first, std::size_t count, std::size_t step);
    /// Names with one letter more than those of the file: a tree of names has to compare to the end.
    Batch MissingKeys();
    Batch MissingSections();
    /// New values for random entries; each value is unique.
    Batch Changes(std::size_t count);
    /// New keys for random sections, at most half as many as the file has entries.
    Batch Additions();

private:
    std::size_t Random(std::size_t count) { return m_random() % count; }
    std::size_t RandomEntry() { return Random(m_file.entries.size()); }
    const std::string& RandomSection() { return m_file.sections[Random(m_file.sections.size())]; }
    Query Ask(std::size_t entry, const std::string& value = "") const;

    const IniFile& m_file;
    std::mt19937 m_random{1};
    std::size_t m_values = 0;
};

/// How many of the questions `store` answers.
std::size_t CountFound(Store& store, const Batch& batch);

} // namespace bench
