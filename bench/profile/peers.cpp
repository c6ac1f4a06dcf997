// The peers. Like the library, GKeyFile and SimpleIni keep comments and order in memory or on disk as
// far as they can; QSettings does not. Only SimpleIni compares without regard to case when asked to,
// as the library always does; GKeyFile and QSettings compare exactly on this system.
#include "store.h"

#include <QtCore/QSettings>

#include <glib.h>

#define SI_NO_CONVERSION // bytes as they are, which is the fastest
#define SI_IMPLEMENTATION
#include <SimpleIni.h>

namespace bench {
namespace {

/// Values as they stand, as the library has them: the calls that unescape are slower.
class GKeyFileStore : public Store {
public:
    ~GKeyFileStore() override { Close(); }
    const char* Name() const override { return "GKeyFile"; }
    bool Open(const std::string& path) override {
        m_path = path;
        m_file = g_key_file_new();
        return g_key_file_load_from_file(m_file, path.c_str(), G_KEY_FILE_NONE, nullptr) != 0;
    }
    std::size_t Get(const Batch& batch, std::size_t i) override {
        const Query& query = batch[i];
        char* value =
            g_key_file_get_value(m_file, query.section.c_str(), query.key.c_str(), nullptr);
        const std::size_t length = value != nullptr ? std::strlen(value) : 0;
        g_free(value);
        return length;
    }
    void Set(const Batch& batch, std::size_t i) override {
        const Query& query = batch[i];
        g_key_file_set_value(m_file, query.section.c_str(), query.key.c_str(), query.value.c_str());
    }
    void Save() override { g_key_file_save_to_file(m_file, m_path.c_str(), nullptr); }
    void Close() override { g_clear_pointer(&m_file, g_key_file_free); }

private:
    GKeyFile* m_file = nullptr;
    std::string m_path;
};

/// Parses a section when it is first asked for one of its keys.
class QSettingsStore : public Store {
public:
    const char* Name() const override { return "QSettings"; }
    bool Open(const std::string& path) override {
        m_settings =
            std::make_unique<QSettings>(QString::fromStdString(path), QSettings::IniFormat);
        return m_settings->status() == QSettings::NoError;
    }
    std::size_t Get(const Batch& batch, std::size_t i) override {
        return static_cast<std::size_t>(m_settings->value(batch.Path(i)).toString().size());
    }
    void Set(const Batch& batch, std::size_t i) override {
        m_settings->setValue(batch.Path(i), batch.Text(i));
    }
    void Save() override { m_settings->sync(); }
    void Close() override { m_settings.reset(); }

private:
    std::unique_ptr<QSettings> m_settings;
};

/// Its look-up copies nothing: the value is a pointer into the file's text.
template <class Ini>
class SimpleIniStore : public Store {
public:
    explicit SimpleIniStore(const char* name) : m_name(name) {}
    const char* Name() const override { return m_name; }
    bool Open(const std::string& path) override {
        m_path = path;
        m_ini = std::make_unique<Ini>();
        m_ini->SetSpaces(false);
        return m_ini->LoadFile(path.c_str()) >= 0;
    }
    std::size_t Get(const Batch& batch, std::size_t i) override {
        const Query& query = batch[i];
        const char* value = m_ini->GetValue(query.section.c_str(), query.key.c_str());
        return value != nullptr ? std::strlen(value) : 0;
    }
    void Set(const Batch& batch, std::size_t i) override {
        const Query& query = batch[i];
        m_ini->SetValue(query.section.c_str(), query.key.c_str(), query.value.c_str());
    }
    void Save() override { m_ini->SaveFile(m_path.c_str(), false); }
    void Close() override { m_ini.reset(); }

private:
    const char* m_name;
    std::unique_ptr<Ini> m_ini;
    std::string m_path;
};

} // namespace

std::vector<std::unique_ptr<Store>> MakePeers() {
    std::vector<std::unique_ptr<Store>> peers;
    peers.push_back(std::make_unique<GKeyFileStore>());
    peers.push_back(std::make_unique<QSettingsStore>());
    peers.push_back(std::make_unique<SimpleIniStore<CSimpleIniCaseA>>("SimpleIni"));
    peers.push_back(std::make_unique<SimpleIniStore<CSimpleIniA>>("SimpleIni-nocase"));
    return peers;
}

} // namespace bench
