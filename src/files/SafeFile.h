// A file that is replaced as a whole or not at all. The new contents are written to a file without
// a name in the same folder, forced to the disk and put in the old one's place in one step: whoever
// reads, and whatever kills this process, finds the old contents or the new ones.
#pragma once

#include <string>
#include <string_view>

namespace vm {

class SafeFile {
public:
    /// Opens `path` for writing, as creating it afresh would, but leaves its contents alone. A
    /// symbolic link is followed to its target, whose permissions and owner are kept. Where
    /// the folder takes no new file, or the file is no ordinary one, it is written in place.
    explicit SafeFile(const std::string& path);
    /// Drops what was not committed.
    ~SafeFile();
    SafeFile(const SafeFile&) = delete;
    SafeFile& operator=(const SafeFile&) = delete;

    /// False when the file cannot be written at all. Nothing has changed then.
    bool IsOpen() const { return m_descriptor >= 0 || m_target >= 0; }
    void Write(std::string_view bytes);
    /// Puts the new contents in place. False when any write, or this, failed: the old contents are
    /// still there (except in a file written in place).
    bool Commit();

private:
    void OpenForOld();
    bool OpenBeside();
    bool OpenNamed();
    bool KeepOwner();
    void WriteInPlace();
    void Flush();
    static bool Finish(int descriptor);
    bool Replace();
    bool GiveName();
    bool CopyInPlace();
    void CloseBeside();
    void Close();

    std::string m_path; ///< without links
    std::string m_folder;
    std::string m_temporary; ///< the new file's name; empty while it has none
    std::string m_buffer;
    int m_target = -1;     ///< the old file, as long as it is not written itself
    int m_descriptor = -1; ///< what is written to
    bool m_inPlace = false;
    bool m_failed = false;
};

} // namespace vm
