// Every operation on servers that other people wrote.
#include <cstring>
#include <filesystem>
#include <thread>

#include <gmock/gmock.h>

#include <vmcore/net/CInternetSession.h>

#include "FtpTest.h"

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

class FtpServers : public FtpTest, public ::testing::WithParamInterface<const char*> {
protected:
    CFtpConnection Connection() { return ConnectionTo(m_server.Address()); }

    RealFtpServer m_server{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Of, FtpServers, ::testing::Values("pyftpdlib", "vsftpd"),
                         [](const auto& server) { return std::string(server.param); });

TEST_P(FtpServers, SendsListsFetchesAndDeletes) {
    const std::string bytes = std::string("\xF0\0\r\n\n\xF7", 6) + std::string(3'000'000, 'x');
    CInternetSession session("Librarian");
    const std::unique_ptr<CFtpConnection> ftp(session.GetFtpConnection(m_server.Address().c_str()));
    ftp->SetCurrentDirectory("Banks");
    ftp->SetCurrentDirectory("Old");
    EXPECT_TRUE(ftp->PutFile(NewFile(bytes).c_str(), "Strings.syx"));
    EXPECT_EQ(m_server.Read("Banks/Old/Strings.syx"), bytes);
    m_server.Write("Banks/Old/notes.txt", "");

    CFtpFileFind syx(ftp.get()), all(ftp.get());
    EXPECT_TRUE(syx.FindFile("*.syx"));
    EXPECT_THAT(NamesIn(syx), ElementsAre("Strings.syx"));
    EXPECT_EQ(syx.GetFileURL(), "ftp://" + m_server.Address() + "/Banks/Old/Strings.syx");
    EXPECT_TRUE(all.FindFile());
    EXPECT_THAT(NamesIn(all), UnorderedElementsAre("Strings.syx", "notes.txt"));

    const std::string local = NewFile("older and longer by far");
    ftp->SetCurrentDirectory(nullptr);
    EXPECT_TRUE(ftp->GetFile("Banks/Old/Strings.syx", local.c_str()));
    EXPECT_EQ(BytesIn(local), bytes);
    EXPECT_TRUE(ftp->Remove("Banks/Old/Strings.syx"));
    EXPECT_FALSE(m_server.Has("Banks/Old/Strings.syx"));
    EXPECT_FALSE(ftp->Remove("Banks/Old/Strings.syx"));
    EXPECT_THAT(ftp->GetLastErrorText(), testing::HasSubstr("(550 "));
}

TEST_P(FtpServers, AnEmptyFileArrivesAsNone) {
    m_server.Write("empty.syx", "");
    const std::string local = NewPath();
    CFtpConnection ftp = Connection();
    EXPECT_TRUE(ftp.GetFile("empty.syx", local.c_str()));
    EXPECT_FALSE(fs::exists(local));
    EXPECT_STREQ(ftp.GetLastErrorText(), "");
}

TEST_P(FtpServers, RefuseWhatIsNotThereAndWhoIsNotKnown) {
    const std::string local = NewPath();
    CFtpConnection ftp = Connection();
    EXPECT_FALSE(ftp.GetFile("missing.syx", local.c_str()));
    EXPECT_THAT(TakeLog(), ElementsAre("curl error #: 78"));
    EXPECT_FALSE(ftp.GetFile("missing/a.syx", local.c_str()));
    EXPECT_THAT(TakeLog(), ElementsAre("curl error #: 9"));
    ftp.SetCurrentDirectory("missing");
    CFtpFileFind find(&ftp);
    EXPECT_FALSE(find.FindFile());
    EXPECT_STRNE(ftp.GetLastErrorText(), "");

    CFtpConnection stranger = ConnectionTo(m_server.Address(), "anna", "wrong");
    EXPECT_FALSE(stranger.GetFile("a.syx", local.c_str()));
    EXPECT_THAT(TakeLog(), ElementsAre("curl error #: 67"));
    EXPECT_FALSE(stranger.PutFile(NewFile("x").c_str(), "a.syx"));
    EXPECT_THAT(TakeLog(), ElementsAre(testing::StartsWith("curl_easy_perform() failed: Login")));
    EXPECT_THAT(stranger.GetLastErrorText(), testing::HasSubstr("(530 "));
    EXPECT_FALSE(fs::exists(local));
}

TEST_P(FtpServers, KeepAnyName) {
    const char* const names[] = {"a b.syx",       "hash#tag.syx", "50%41.syx",
                                 "100%.syx",      "q?x=1.syx",    "x.syx;type=a",
                                 "\xC3\xA4.syx",  "-l.syx",       "back\\slash.syx",
                                 "*[?]{'\"}.syx", "~user@h:1",    "latin\xE4.syx"};
    CFtpConnection ftp = Connection();
    ftp.SetCurrentDirectory("50%41 #1");
    for (const char* name : names) {
        SCOPED_TRACE(name);
        // This server's names are Unicode, whatever else it is sent.
        const bool isReplaced = GetParam() == std::string("pyftpdlib") && strchr(name, '\xE4');
        const std::string kept = isReplaced ? "latin\xEF\xBF\xBD.syx" : name;
        const std::string local = NewPath();
        EXPECT_TRUE(ftp.PutFile(NewFile(name).c_str(), name));
        EXPECT_EQ(m_server.Read("50%41 #1/" + kept), name);
        EXPECT_TRUE(ftp.GetFile(name, local.c_str()));
        EXPECT_EQ(BytesIn(local), name);
        CFtpFileFind find(&ftp);
        EXPECT_TRUE(find.FindFile());
        EXPECT_THAT(NamesIn(find), ElementsAre(kept));
        EXPECT_TRUE(ftp.Remove(name));
        EXPECT_FALSE(m_server.Has("50%41 #1/" + kept));
    }
}

TEST_P(FtpServers, ServeTwoThreadsAtOnce) {
    m_server.Write("a.syx", std::string(1 << 20, 'x'));
    const auto work = [&](const std::string& name, const std::string& local) {
        CFtpConnection ftp = Connection();
        for (int round = 0; round < 5; ++round) {
            EXPECT_TRUE(ftp.GetFile("a.syx", local.c_str()));
            EXPECT_TRUE(ftp.PutFile(local.c_str(), name.c_str()));
        }
    };
    std::thread other(work, "Other/b.syx", NewPath());
    work("c.syx", NewPath());
    other.join();
    EXPECT_EQ(m_server.Read("Other/b.syx"), m_server.Read("a.syx"));
    EXPECT_EQ(m_server.Read("c.syx"), m_server.Read("a.syx"));
}

TEST_F(FtpTest, LogsInWithWhatTheHostGives) {
    const RealFtpServer server("pyftpdlib");
    server.Write("anna/a.syx", "hers");
    server.Write("a.syx", "everybody's");
    const std::string local = NewPath();
    CFtpConnection fields = ConnectionTo(server.Address(), "anna", "s3 cret:x");
    EXPECT_TRUE(fields.GetFile("a.syx", local.c_str()));
    EXPECT_EQ(BytesIn(local), "hers");
    EXPECT_TRUE(fields.Remove("a.syx")); // without the login
    EXPECT_FALSE(server.Has("a.syx"));

    CFtpConnection host = ConnectionTo("anna:s3%20cret%3Ax@" + server.Address());
    EXPECT_TRUE(host.PutFile(local.c_str(), "b.syx"));
    EXPECT_EQ(server.Read("anna/b.syx"), "hers");
    EXPECT_TRUE(host.Remove("a.syx"));
    EXPECT_FALSE(server.Has("anna/a.syx"));
}

} // namespace
