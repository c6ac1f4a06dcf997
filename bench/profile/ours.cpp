// The library's profile functions, called as a host calls them: through the shared library, with the
// absolute name of the file on every call.
#include "store.h"

#include <vmcore/files/profile.h>

namespace bench {
namespace {

class ProfileStore : public Store {
public:
    ProfileStore() { InitProfileManager(); }
    const char* Name() const override { return "VMCore"; }
    bool Open(const std::string& path) override {
        m_path = path; // the first look-up reads it
        return true;
    }
    std::size_t Get(const Batch& batch, std::size_t i) override {
        char buffer[256];
        const Query& query = batch[i];
        return GetPrivateProfileString(query.section.c_str(), query.spelled.c_str(), "", buffer,
                                       sizeof(buffer), m_path.c_str());
    }
    void Set(const Batch& batch, std::size_t i) override {
        const Query& query = batch[i];
        WritePrivateProfileString(query.section.c_str(), query.spelled.c_str(), query.value.c_str(),
                                  m_path.c_str());
    }
    void Save() override { ServiceProfile(); }
    void Close() override { FlushProfile(m_path.c_str()); }

private:
    std::string m_path;
};

} // namespace

std::unique_ptr<Store> MakeOurStore() {
    return std::make_unique<ProfileStore>();
}

} // namespace bench
