// A host's own hold on the library: what it writes into the library's variables counts, and what its
// static objects write at the very end reaches the disk. Runs itself, then reads what was left.
#include <afxwin.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string s_file;

struct LastWord {
    ~LastWord() {
        if (!s_file.empty()) WritePrivateProfileString("End", "Key", "last", s_file.c_str());
    }
} s_lastWord; // made before anything of the library is called

int Write(const std::string& folder) {
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    VMCore_Initialize();
    s_file = folder + "/end.ini";
    VelmoraPreferences = "/Moved.ini";
    HKEY key = nullptr;
    RegCreateKey(HKEY_CURRENT_USER, "K", &key);
    const DWORD value = 7;
    RegSetValueEx(key, "V", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
    RegCloseKey(key);
    std::strcpy(CurrentDirectory, folder.c_str());
    WritePrivateProfileString("Bare", "Key", "here", "bare.ini");
    FlushProfile("bare.ini");
    return profileCS.lock ? 0 : 1;
}

bool Holds(const std::string& path, const std::string& text) {
    std::ifstream file(path, std::ios::binary);
    const std::string found{std::istreambuf_iterator<char>(file), {}};
    if (found == text) return true;
    std::fprintf(stderr, "%s holds \"%s\"\n", path.c_str(), found.c_str());
    return false;
}

int RunAndCheck(const char* program) {
    char folder[] = "/tmp/vmcore-test-XXXXXX";
    if (!mkdtemp(folder)) return 1;
    const std::string path = folder;
    const pid_t child = fork();
    if (child == 0) execl(program, program, folder, nullptr);
    int status = -1;
    waitpid(child, &status, 0);
    const bool moved = Holds(path + "/Moved.ini", "\r\n[K]\r\nV=7\r\nVType=1\r\n");
    const bool bare = Holds(path + "/bare.ini", "\r\n[Bare]\r\nKey=here\r\n");
    const bool end = Holds(path + "/end.ini", "\r\n[End]\r\nKey=last\r\n");
    for (const char* name : {"/Moved.ini", "/bare.ini", "/end.ini"}) unlink((path + name).c_str());
    rmdir(folder);
    return status == 0 && moved && bare && end ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    return argc > 1 ? Write(argv[1]) : RunAndCheck(argv[0]);
}
