// The names in a remote folder.
//
//     CFtpFileFind find(connection);
//     BOOL more = find.FindFile("*.syx");
//     while (more) {
//         more = find.FindNextFile(); // 0 with the last name too
//         if (find.GetFileName() != previous) previous = Take(find.GetFileName());
//     }
//
// Names are what the server sends. One like "../../.profile" is possible: never make a local path of it
// unlooked at.
#pragma once

#include <vmcore/core/CString.h>
#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

class CFtpConnection;

namespace vm {
struct ListingWriter;
}

/// The order of the fields is part of the binary interface.
class VM_API CFtpFileFind {
public:
    explicit CFtpFileFind(
        CFtpConnection* connection); ///< which must outlive it; null finds nothing
    ~CFtpFileFind();
    CFtpFileFind(const CFtpFileFind&) = delete;
    CFtpFileFind& operator=(const CFtpFileFind&) = delete;

    /// Fetches the names in the connection's folder: 1 when there is any text to walk through, else
    /// 0. Without a folder set on the connection it is the server's root that is listed, while files
    /// come from the folder of the login; they are the same on most servers.
    ///
    /// `pattern` is a '*' and the end of the names to find, upper and lower case apart: its first
    /// character is taken for the '*' whatever it is. Null and "" find all names, "*.*" those that end
    /// in ".*". 255 characters count.
    ///
    /// A second call appends to the listing; the walk goes on where it was. The text kept is at
    /// most 64 MB; more ends the transfer with "FTP: listing cut at <n> bytes".
    BOOL FindFile(LPCSTR pattern = nullptr);

    /// Goes to the next name that matches. 1 when more text follows, which may hold no match; 0 for the
    /// last line of the listing, also when its name is a valid one: look at the name before
    /// the result. The name stays as it was when none is found. A name of more than 254 characters
    /// ends the walk, and a last line without a line end is not returned.
    BOOL FindNextFile();

    /// The name that FindNextFile came to; "" before. An addition of ours to the two above.
    LPCSTR GetFileName() const;

    /// "ftp://<host>/<folder>/<name>" in plain text, in the object's own buffer, valid until the next
    /// call. Of more than 255 characters: "", and a log line.
    LPCSTR GetFileURL();

    void CloseContext(); ///< nothing to do

private:
    friend struct vm::ListingWriter;

    CFtpConnection* m_connection;
    int m_position = 0;
    char m_pattern[256] = {};
    char m_name[256] = {};
    char m_url[256] = {};
    char* m_listing; // from malloc, ended by a zero
    int m_length = 0;
};
