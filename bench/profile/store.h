// What the profile benchmark asks of the library and of every peer alike, and the prepared questions.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <QtCore/QString>

namespace bench {

struct Query {
    std::string section;
    std::string key;
    std::string
        spelled;       ///< the key with the blanks before '=': the library takes keys as they stand
    std::string value; ///< for setting
};

/// Questions prepared before the clock starts. What QSettings needs of them is converted here too,
/// so that it does not pay for it.
class Batch {
public:
    void Add(const Query& query) {
        m_queries.push_back(query);
        m_paths.push_back(QString::fromStdString(query.section + '/' + query.key));
        m_texts.push_back(QString::fromStdString(query.value));
    }
    std::size_t size() const { return m_queries.size(); }
    const Query& operator[](std::size_t i) const { return m_queries[i]; }
    const QString& Path(std::size_t i) const { return m_paths[i]; }
    const QString& Text(std::size_t i) const { return m_texts[i]; }

private:
    std::vector<Query> m_queries;
    std::vector<QString> m_paths;
    std::vector<QString> m_texts;
};

/// One way to keep settings in ini files; holds one file at a time.
class Store {
public:
    virtual ~Store() = default;
    virtual const char* Name() const = 0;
    /// May leave the reading to the first look-up. False when it refuses the file.
    virtual bool Open(const std::string& path) = 0;
    /// Produces the value as the caller of such a store gets it; its length, 0 for a missing one.
    virtual std::size_t Get(const Batch& batch, std::size_t i) = 0;
    virtual void Set(const Batch& batch, std::size_t i) = 0;
    virtual void Save() = 0; ///< writes the file, which stays open
    /// Forgets the file; changes may be written or dropped.
    virtual void Close() = 0;
};

std::unique_ptr<Store> MakeOurStore();
std::vector<std::unique_ptr<Store>> MakePeers();

} // namespace bench
