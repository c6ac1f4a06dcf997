// Runs operations. Nothing that a server does may hold a host for ever, and nothing that a host's
// procedure throws may pass through libcurl.
#include "net/FtpTransfer.h"

#include <mutex>
#include <utility>

#include "core/log.h"
#include "net/FtpAccess.h"
#include "net/ftpAddress.h"
#include "net/ftpLimits.h"

namespace vm {
namespace {

// What is read or written at once. Measured over loopback, where larger uploads miss the caches.
constexpr long kDownloadBlock = 256 * 1024;
constexpr long kUploadBlock = 64 * 1024;
constexpr auto kProgressPause = std::chrono::milliseconds(20);

// Not every build of libcurl counts its users under a lock.
std::mutex& GlobalLock() {
    static std::mutex s_lock;
    return s_lock;
}

std::vector<std::string> Secrets(const FtpTexts& texts) {
    const std::string inServer(PasswordInServer(texts.server));
    return {std::string(texts.password), inServer, Unescaped(inServer)};
}

} // namespace

FtpTransfer::FtpTransfer(CFtpConnection& connection, const std::string& url)
    : m_connection(connection), m_curl(CurlLibrary::Get()),
      m_conversation(Secrets(FtpAccess::Texts(connection))) {
    FtpAccess::SetError(connection, m_curl ? "" : "libcurl cannot be loaded");
    if (!m_curl) return;
    {
        std::lock_guard guard(GlobalLock());
        m_curl->global_init(CURL_GLOBAL_ALL);
    }
    m_handle = m_curl->easy_init();
    if (m_handle) SetShared(url);
}

FtpTransfer::~FtpTransfer() {
    if (!m_curl) return;
    if (m_handle) m_curl->easy_cleanup(m_handle);
    std::lock_guard guard(GlobalLock());
    m_curl->global_cleanup();
}

void FtpTransfer::SetShared(const std::string& url) {
    const FtpLimits& limits = CurrentFtpLimits();
    Set(CURLOPT_URL, url.c_str());
    Set(CURLOPT_PATH_AS_IS, 1L); // ".." means what the server takes it for, as in a deletion
    Set(CURLOPT_PROXY, "");      // a proxy for web pages answers FTP with pages, failures too
    Set(CURLOPT_VERBOSE, 1L);
    Set(CURLOPT_DEBUGFUNCTION, &OnConversation); // else passwords go to standard error
    Set(CURLOPT_DEBUGDATA, this);
    Set(CURLOPT_NOSIGNAL, 1L);
    Set(CURLOPT_CONNECTTIMEOUT_MS, limits.connectMilliseconds);
    Set(CURLOPT_SERVER_RESPONSE_TIMEOUT, limits.answerSeconds);
    Set(CURLOPT_LOW_SPEED_LIMIT, 1L);
    Set(CURLOPT_LOW_SPEED_TIME, limits.slowSeconds);
    Set(CURLOPT_FORBID_REUSE, 1L); // else the farewell has limits of its own
    Set(CURLOPT_QUICK_EXIT, 1L);   // else the end waits for a name server that does not answer
    Set(CURLOPT_BUFFERSIZE, kDownloadBlock);
    Set(CURLOPT_UPLOAD_BUFFERSIZE, kUploadBlock);
    Set(CURLOPT_NOPROGRESS, FtpAccess::HasProgress(m_connection) ? 0L : 1L);
    Set(CURLOPT_XFERINFOFUNCTION, &OnProgress);
    Set(CURLOPT_XFERINFODATA, this);
}

void FtpTransfer::UseLogin() {
    const FtpTexts texts = FtpAccess::Texts(m_connection);
    if (texts.user.empty() || texts.password.empty()) return;
    Set(CURLOPT_USERPWD, std::string(texts.user).append(":").append(texts.password).c_str());
}

CURLcode FtpTransfer::Perform() {
    return Finish(m_curl->easy_perform(m_handle));
}

bool FtpTransfer::Delete(const std::string& path) {
    curl_slist* const commands = m_curl->slist_append(nullptr, ("DELE " + path).c_str());
    if (!commands) return false;
    Set(CURLOPT_NOBODY, 1L);
    Set(CURLOPT_QUOTE, commands);
    const CURLcode code = m_curl->easy_perform(m_handle);
    m_curl->slist_free_all(commands);
    return Finish(code) == CURLE_OK;
}

CURLcode FtpTransfer::Finish(CURLcode code) {
    if (code != CURLE_OK) NoteFailure(code);
    if (m_thrown) std::rethrow_exception(m_thrown);
    return code;
}

void FtpTransfer::NoteFailure(CURLcode code) {
    std::string text = Reason(code);
    if (!m_conversation.Refusal().empty()) text += " (" + m_conversation.Refusal() + ")";
    FtpAccess::SetError(m_connection, text);
}

// The result stands: there is little to wait for.
void FtpTransfer::HurryUp() {
    Set(CURLOPT_SERVER_RESPONSE_TIMEOUT, CurrentFtpLimits().farewellSeconds);
}

int FtpTransfer::OnConversation(CURL*, curl_infotype type, char* text, std::size_t size,
                                void* self) {
    using Speaker = Conversation::Speaker;
    FtpTransfer& transfer = *static_cast<FtpTransfer*>(self);
    Conversation& conversation = transfer.m_conversation;
    const std::string_view said(text, size);
    if (type == CURLINFO_HEADER_OUT && said.starts_with("QUIT")) transfer.HurryUp();
    if (type == CURLINFO_TEXT) conversation.Hear(Speaker::Library, said);
    if (type == CURLINFO_HEADER_OUT) conversation.Hear(Speaker::Client, said);
    if (type == CURLINFO_HEADER_IN) conversation.Hear(Speaker::Server, said);
    return 0;
}

int FtpTransfer::OnProgress(void* self, curl_off_t downTotal, curl_off_t down, curl_off_t upTotal,
                            curl_off_t up) {
    FtpTransfer& transfer = *static_cast<FtpTransfer*>(self);
    try {
        return transfer.GoOn(down + up, downTotal + upTotal) ? 0 : 1;
    } catch (...) {
        transfer.m_thrown = std::current_exception();
        return 1;
    }
}

bool FtpTransfer::GoOn(curl_off_t done, curl_off_t total) {
    const auto now = std::chrono::steady_clock::now();
    const bool isEnd = total > 0 && done >= total && done != m_lastDone; // which hosts wait for
    if (!isEnd && now - m_lastProgress < kProgressPause) return true;
    m_lastProgress = now;
    m_lastDone = done;
    return FtpAccess::Progress(m_connection, done, total > 0 ? total : -1);
}

} // namespace vm
