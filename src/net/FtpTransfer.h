// One operation on a server: a libcurl handle with everything that all operations share, which are
// the time-outs, the conversation, and the host's progress procedure.
#pragma once

#include <chrono>
#include <exception>
#include <string>
#include <string_view>

#include "net/CurlLibrary.h"
#include "net/conversation.h"

class CFtpConnection;

namespace vm {

class FtpTransfer {
public:
    /// `url` is escaped. Sets the connection's error text to "".
    FtpTransfer(CFtpConnection& connection, const std::string& url);
    ~FtpTransfer();
    FtpTransfer(const FtpTransfer&) = delete;
    FtpTransfer& operator=(const FtpTransfer&) = delete;

    /// False when there is no handle: nothing else may be called then.
    bool IsReady() const { return m_handle != nullptr; }

    template <class T>
    void Set(CURLoption option, T value) {
        m_curl->easy_setopt(m_handle, option, value);
    }
    void UseLogin(); ///< the connection's, when it has both a user and a password

    /// Passes on what the progress procedure throws. After a failure the connection has the reason
    /// as its error text.
    CURLcode Perform();
    /// Deletes a file without transferring anything, under the login of the address.
    bool Delete(const std::string& path);
    const char* Reason(CURLcode code) const { return m_curl->easy_strerror(code); }

private:
    void SetShared(const std::string& url);
    CURLcode Finish(CURLcode code);
    void HurryUp();
    void NoteFailure(CURLcode code);
    bool GoOn(curl_off_t done, curl_off_t total);
    static int OnConversation(CURL*, curl_infotype type, char* text, std::size_t size, void* self);
    static int OnProgress(void* self, curl_off_t downTotal, curl_off_t down, curl_off_t upTotal,
                          curl_off_t up);

    CFtpConnection& m_connection;
    const CurlLibrary* m_curl;
    CURL* m_handle = nullptr;
    Conversation m_conversation;
    std::chrono::steady_clock::time_point m_lastProgress;
    curl_off_t m_lastDone = -1;
    std::exception_ptr m_thrown;
};

} // namespace vm
