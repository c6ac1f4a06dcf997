// What is sent, refused, reported and logged, seen from a server that does as it should.
#include <algorithm>
#include <cstring>
#include <filesystem>
#include <functional>
#include <stdexcept>

#include <sys/stat.h>

#include <QtCore/QLoggingCategory>

#include <gmock/gmock.h>

#include "FtpTest.h"
#include "ScriptedFtpServer.h"
#include "ftpScripts.h"

namespace fs = std::filesystem;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

class FtpRules : public FtpTest {};

// The commands that a folder, a file or a user stands in.
Lines Requests(ScriptedFtpServer& server) {
    Lines requests;
    for (const std::string& command : server.Commands())
        for (const char* verb : {"USER", "CWD", "RETR", "STOR", "NLST", "LIST", "DELE"})
            if (command.starts_with(verb)) requests.push_back(command);
    return requests;
}

TEST_F(FtpRules, FoldersAndLoginsReachTheServer) {
    struct Row {
        const char* user;
        const char* password;
        std::vector<const char*> folders;
        Lines logIn, enter;
    };
    const Row rows[] = {
        {"anna", "pw", {}, {"USER anna"}, {}},
        {"anna", "", {"Banks"}, {"USER anonymous"}, {"CWD Banks"}},
        {nullptr, "pw", {"A B", ".", "Old"}, {"USER anonymous"}, {"CWD A B", "CWD Old"}},
        {nullptr, nullptr, {"./.", ".."}, {"USER anonymous"}, {"CWD .", "CWD .", "CWD .."}},
        {nullptr, nullptr, {"Banks", nullptr, "New", ""}, {"USER anonymous"}, {"CWD New"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.enter));
        const auto requests = [&](const std::function<void(CFtpConnection&)>& operation) {
            ScriptedFtpServer server({}, "file", "a\r\n");
            CFtpConnection ftp = ConnectionTo(server.Address(), row.user, row.password);
            for (const char* folder : row.folders) EXPECT_TRUE(ftp.SetCurrentDirectory(folder));
            operation(ftp);
            return Requests(server);
        };
        Lines expected = row.logIn;
        expected.insert(expected.end(), row.enter.begin(), row.enter.end());
        expected.push_back("RETR a b");
        EXPECT_EQ(requests([&](auto& ftp) { ftp.GetFile("a b", NewPath().c_str()); }), expected);
        expected.back() = "STOR a b";
        const std::string local = NewFile("x");
        EXPECT_EQ(requests([&](auto& ftp) { ftp.PutFile(local.c_str(), "a b"); }), expected);
        expected.back() = "NLST";
        if (row.enter.empty()) expected.insert(expected.end() - 1, "CWD /");
        EXPECT_EQ(requests([](auto& ftp) { CFtpFileFind(&ftp).FindFile(); }), expected);
    }
}

TEST_F(FtpRules, DeletionIsOneCommandWithoutLogin) {
    ScriptedFtpServer server;
    CFtpConnection ftp = ConnectionTo(server.Address(), "anna", "pw");
    ftp.SetCurrentDirectory("A B");
    EXPECT_TRUE(ftp.Remove("50%41;type=a"));
    EXPECT_THAT(Requests(server), ElementsAre("USER anonymous", "DELE A B/50%41;type=a"));
    EXPECT_TRUE(ftp.CreateDirectory("unused"));
    EXPECT_EQ(Requests(server).size(), 2u);
}

TEST_F(FtpRules, ASecondListingIsAppendedAndTheWalkGoesOn) {
    ScriptedFtpServer server({}, {}, "a\r\nb\r\n");
    CFtpConnection ftp = ConnectionTo(server.Address());
    CFtpFileFind find(&ftp);
    EXPECT_TRUE(find.FindFile());
    EXPECT_TRUE(find.FindNextFile());
    EXPECT_TRUE(find.FindFile("*b"));
    EXPECT_TRUE(find.FindNextFile());
    EXPECT_STREQ(find.GetFileName(), "b");
    EXPECT_FALSE(find.FindNextFile());
    EXPECT_STREQ(find.GetFileName(), "b");
    EXPECT_FALSE(CFtpFileFind(nullptr).FindFile());
}

TEST_F(FtpRules, NothingIsSentForTextsThatAreRefused) {
    ScriptedFtpServer server;
    const std::string address = server.Address(), huge(10'000, 'x'), local = NewFile("x");
    const auto host = [&](const std::string& before) { return before + address; };
    struct Row {
        const char* name;
        std::string server;
        const char* user;
        const char* password;
        const char* folder;
        const char* file;
        std::string local;
        bool refusesListing;
    };
    const char* const file = "a.syx";
    const Row rows[] = {
        {"server: line", host("x\r\n@"), "", "", "", file, local, true},
        {"server: long", host(huge + "@"), "", "", "", file, local, true},
        {"user", address, "u\nPASS x\r\nDELE y", "pw", "", file, local, true},
        {"user: long", address, huge.c_str(), "pw", "", file, local, true},
        {"password", address, "u", "pw\rDELE y", "", file, local, true},
        {"password: long", address, "u", huge.c_str(), "", file, local, true},
        {"folder", address, "", "", "d\nDELE y", file, local, true},
        {"folder: long", address, "", "", huge.c_str(), file, local, true},
        {"file: line", address, "", "", "", "a\r\nDELE y", local, false},
        {"file: tab", address, "", "", "", "a\t", local, false},
        {"file: long", address, "", "", "", huge.c_str(), local, false},
        {"file: none", address, "", "", "", "", local, false},
        {"file: null", address, "", "", "", nullptr, local, false},
        {"file: folder", address, "", "", "", "sub/", local, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        CFtpConnection ftp = ConnectionTo(row.server, row.user, row.password);
        ftp.SetCurrentDirectory(row.folder);
        EXPECT_FALSE(ftp.GetFile(row.file, row.local.c_str()));
        EXPECT_FALSE(ftp.PutFile(row.local.c_str(), row.file));
        EXPECT_FALSE(ftp.Remove(row.file));
        if (row.refusesListing) {
            EXPECT_FALSE(CFtpFileFind(&ftp).FindFile());
        }
        const Lines log = TakeLog();
        EXPECT_EQ(log.size(), row.refusesListing ? 4u : 3u);
        EXPECT_THAT(log, Each("FTP: " + std::string(ftp.GetLastErrorText())));
    }
    CFtpConnection ftp = ConnectionTo(address);
    for (const char* name : {static_cast<const char*>(nullptr), "", huge.c_str()}) {
        EXPECT_FALSE(ftp.GetFile(file, name));
        EXPECT_FALSE(ftp.PutFile(name, file));
        EXPECT_THAT(TakeLog(), ElementsAre(StartsWith("FTP: the local"), StartsWith("FTP: the l")));
    }
    EXPECT_THAT(server.Commands(), IsEmpty());
}

TEST_F(FtpRules, WhatIsNoFileHereIsNamed) {
    ScriptedFtpServer server({}, "file");
    CFtpConnection ftp = ConnectionTo(server.Address());
    const std::string fifo = NewPath(), none = NewPath(), folder = m_home.Path();
    mkfifo(fifo.c_str(), 0600);
    const std::pair<std::string, const char*> downloads[] = {
        {folder, "Couldnt open '%s': Is a directory"},
        {none + "/a.syx", "Couldnt open '%s': No such file or directory"},
        {fifo, "Couldnt open '%s': No such device or address"}, // nobody reads it
        {"/dev/full", "Couldnt write '%s': No space left on device"},
    };
    for (const auto& [path, line] : downloads) {
        const std::string expected = std::string(line).replace(strcspn(line, "%"), 2, path);
        EXPECT_FALSE(ftp.GetFile("a.syx", path.c_str()));
        EXPECT_THAT(TakeLog(), ElementsAre("curl error #: 23", expected));
        EXPECT_EQ(ftp.GetLastErrorText(), expected);
    }
    const std::size_t before = server.Commands().size();
    EXPECT_FALSE(ftp.PutFile(none.c_str(), "a.syx"));
    EXPECT_THAT(TakeLog(), ElementsAre("Couldnt open '" + none + "': No such file or directory"));
    for (const std::string& path : {fifo, folder}) {
        EXPECT_FALSE(ftp.PutFile(path.c_str(), "a.syx"));
        const std::string line = "Internal Error: Failed to open file " + path + " for upload!";
        EXPECT_THAT(TakeLog(), ElementsAre(line));
    }
    EXPECT_EQ(server.Commands().size(), before);
}

struct Progress {
    std::vector<std::pair<long long, long long>> steps;
    long long stopAt = -1; // so many bytes
    bool isThrown = false;

    static BOOL CALLBACK Take(void* self, long long done, long long total) {
        Progress& progress = *static_cast<Progress*>(self);
        progress.steps.emplace_back(done, total);
        if (progress.stopAt < 0 || done < progress.stopAt) return TRUE;
        if (progress.isThrown) throw std::runtime_error("enough");
        return FALSE;
    }
};

TEST_F(FtpRules, ProgressCountsBytesAndCanEndTheTransfer) {
    const long long size = 8 << 20;
    const std::string bytes(size, 'x'), local = NewFile(bytes);
    const FtpAnswer drip = InTurn({Begin, Drip(100, std::chrono::milliseconds(30)), CloseData});
    ScriptedFtpServer server({}, bytes, "a\r\n"), silent({{"SIZE", Say("500 What?")}}, bytes);
    ScriptedFtpServer slow({{"RETR", drip}, {"NLST", drip}}, bytes);
    const auto get = [&](CFtpConnection& ftp) { return ftp.GetFile("a", NewPath().c_str()); };
    const auto put = [&](CFtpConnection& ftp) { return ftp.PutFile(local.c_str(), "a"); };
    const auto list = [&](CFtpConnection& ftp) { return CFtpFileFind(&ftp).FindFile(); };
    struct Row {
        const char* name;
        ScriptedFtpServer& server;
        std::function<BOOL(CFtpConnection&)> operation;
        long long total;
        Lines logWhenEnded;
        BOOL resultWhenEnded;
    };
    const char* const putFailed =
        "curl_easy_perform() failed: Operation was aborted by an application callback";
    const Row rows[] = {
        {"get", server, get, size, {"curl error #: 42"}, FALSE},
        {"get without size", silent, get, -1, {"curl error #: 42"}, FALSE},
        {"put", server, put, size, {putFailed}, FALSE},
        {"list", server, list, -1, {}, TRUE},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        CFtpConnection ftp = ConnectionTo(row.server.Address());
        Progress all, ended{{}, 1, false}, thrown{{}, 1, true};
        ftp.SetProgressProc(Progress::Take, &all);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_TRUE(row.operation(ftp));
        const auto time = std::chrono::steady_clock::now() - start;
        EXPECT_LE(static_cast<long>(all.steps.size()), time / std::chrono::milliseconds(20) + 2);
        EXPECT_TRUE(std::is_sorted(all.steps.begin(), all.steps.end()));
        if (row.total >= 0) {
            EXPECT_EQ(all.steps.back(), std::make_pair(size, size));
        }
        for (const auto& [done, total] : all.steps)
            EXPECT_TRUE(total == -1 || total == row.total) << total;

        ftp.SetProgressProc(nullptr, nullptr);
        EXPECT_TRUE(row.operation(ftp));

        CFtpConnection slowly = ConnectionTo(slow.Address());
        slowly.SetProgressProc(Progress::Take, &ended);
        EXPECT_EQ(row.operation(slowly), row.resultWhenEnded);
        EXPECT_EQ(TakeLog(), row.logWhenEnded);
        slowly.SetProgressProc(Progress::Take, &thrown);
        EXPECT_THROW(row.operation(slowly), std::runtime_error);
        TakeLog();
    }
}

TEST_F(FtpRules, PasswordsAreNotLogged) {
    QLoggingCategory::setFilterRules("vmcore.net.ftp=true");
    testing::internal::CaptureStderr();
    const FtpAnswer tell = [](FtpSession& session) {
        Say("530-No " + session.Argument() + "!\r\n530 s3 cret:x")(session);
    };
    for (const FtpScript& script : {FtpScript{}, FtpScript{{"PASS", tell}}}) {
        ScriptedFtpServer server(script, "file", "a\r\n");
        CFtpConnection inFields = ConnectionTo(server.Address(), "anna", "s3 cret:x");
        CFtpConnection inHost = ConnectionTo("anna:s3%20cret%3Ax@" + server.Address());
        for (CFtpConnection* ftp : {&inFields, &inHost}) {
            Lines texts;
            ftp->GetFile("a", NewPath().c_str());
            texts.push_back(ftp->GetLastErrorText());
            ftp->PutFile(NewFile("x").c_str(), "a");
            texts.push_back(ftp->GetLastErrorText());
            CFtpFileFind(ftp).FindFile();
            texts.push_back(ftp->GetLastErrorText());
            if (ftp == &inHost) ftp->Remove("a");
            texts.push_back(ftp->GetLastErrorText());
            EXPECT_THAT(texts, Each(Not(HasSubstr("cret"))));
        }
        EXPECT_THAT(server.Commands(), Contains("PASS s3 cret:x").Times(7));
        const Lines log = TakeLog();
        EXPECT_THAT(log, Contains("FTP > PASS ****").Times(7));
        EXPECT_THAT(log, Each(Not(HasSubstr("cret"))));
        if (!script.empty()) {
            EXPECT_THAT(log, Contains("FTP < 530-No ****!"));
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    QLoggingCategory::setFilterRules("");
}

} // namespace
