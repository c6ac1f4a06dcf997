// Fetches the listing of a folder and walks through it; the rules of the walk are in listing.h.
#include <vmcore/net/CFtpFileFind.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <vmcore/net/CFtpConnection.h>

#include "core/log.h"
#include "net/FtpAccess.h"
#include "net/FtpTransfer.h"
#include "net/ftpAddress.h"
#include "net/ftpLimits.h"
#include "net/listing.h"

using vm::FtpAccess;

namespace vm {

// Appends what arrives to the listing of a find object.
struct ListingWriter {
    static std::size_t Write(char* data, std::size_t size, std::size_t count, void* self);

private:
    static bool Append(CFtpFileFind& find, const char* data, std::size_t length);
};

std::size_t ListingWriter::Write(char* data, std::size_t size, std::size_t count, void* self) {
    CFtpFileFind& find = *static_cast<CFtpFileFind*>(self);
    const std::size_t limit = static_cast<std::size_t>(CurrentFtpLimits().listingBytes);
    const std::size_t room = limit - std::min(limit, static_cast<std::size_t>(find.m_length));
    const std::size_t length = std::min(size * count, room);
    if (!Append(find, data, length)) return 0;
    if (length < size * count) Log(LogModule::Net, "FTP: listing cut at %d bytes", find.m_length);
    return length;
}

bool ListingWriter::Append(CFtpFileFind& find, const char* data, std::size_t length) {
    const std::size_t before = static_cast<std::size_t>(find.m_length);
    char* const grown = static_cast<char*>(std::realloc(find.m_listing, before + length + 1));
    if (!grown) {
        LogText(LogModule::Net, "not enough memory (realloc returned NULL)");
        return false;
    }
    std::memcpy(grown + before, data, length);
    grown[before + length] = '\0';
    find.m_listing = grown;
    find.m_length = static_cast<int>(before + length);
    return true;
}

} // namespace vm

CFtpFileFind::CFtpFileFind(CFtpConnection* connection)
    : m_connection(connection), m_listing(static_cast<char*>(std::calloc(1, 1))) {}

CFtpFileFind::~CFtpFileFind() {
    std::free(m_listing);
}

BOOL CFtpFileFind::FindFile(LPCSTR pattern) {
    if (!m_connection || !m_listing) return FALSE;
    std::snprintf(m_pattern, sizeof m_pattern, "%s", pattern ? pattern : "");
    const vm::FtpTexts texts = FtpAccess::Texts(*m_connection);
    if (const std::string why = vm::WhyRefused(texts); !why.empty()) {
        FtpAccess::Refuse(*m_connection, why);
        return FALSE;
    }
    const std::string folder = vm::EscapedPath(texts.directory) + "/";
    vm::FtpTransfer transfer(*m_connection, vm::FtpUrl(texts.server, folder));
    if (!transfer.IsReady()) return FALSE;
    transfer.Set(CURLOPT_WRITEFUNCTION, &vm::ListingWriter::Write);
    transfer.Set(CURLOPT_WRITEDATA, this);
    transfer.Set(CURLOPT_DIRLISTONLY, 1L);
    transfer.UseLogin();
    transfer.Perform();
    return m_length > 0;
}

BOOL CFtpFileFind::FindNextFile() {
    if (!m_listing) return FALSE;
    const std::string_view listing(m_listing, static_cast<std::size_t>(m_length));
    const vm::ListingName next =
        vm::NextListingName(listing, static_cast<std::size_t>(m_position), m_pattern);
    m_position = static_cast<int>(next.position);
    if (next.found) std::memcpy(m_name, next.name, sizeof next.name);
    return next.found && next.more;
}

LPCSTR CFtpFileFind::GetFileName() const {
    return m_name;
}

LPCSTR CFtpFileFind::GetFileURL() {
    m_url[0] = '\0';
    if (!m_connection) return m_url;
    const vm::FtpTexts texts = FtpAccess::Texts(*m_connection);
    const std::string url =
        vm::FtpUrl(texts.server, std::string(texts.directory).append("/").append(m_name));
    if (url.size() > vm::kFtpTextLimit)
        FtpAccess::Refuse(*m_connection, "the address is longer than 255 characters");
    else
        std::memcpy(m_url, url.c_str(), url.size() + 1);
    return m_url;
}

void CFtpFileFind::CloseContext() {}
