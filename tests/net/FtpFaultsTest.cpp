// What servers do wrong, one row each: how the operation ends, what is left, and which limit ends it.
// VMCORE_FTP_FAULTS=full runs the rows at the limits that hosts get, which takes minutes, and prints
// the table of docs/ftp.md.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <string_view>

#include "FtpTest.h"
#include "ScriptedFtpServer.h"
#include "net/CurlLibrary.h"

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

enum class Task { Get, Put, List, Remove };
enum class Ends { AtOnce, Connect, Answer, Slow };

struct Fault {
    const char* name;
    Task task;
    FtpScript script;
    BOOL result;
    CURLcode code;     // which makes the log line and the beginning of the error text
    const char* words; // the server's, in the error text
    long left;         // bytes of the local file or on the server, or names; -1 without a file
    Ends ends = Ends::AtOnce;
    std::string listing = {};
    std::string address = {}; // instead of the script's server
};

struct Outcome {
    BOOL result = FALSE;
    Lines log;
    std::string error;
    long left = -1;
    double seconds = 0;
};

constexpr long kFile = 1 << 20;
constexpr long kPart = 500'000;
constexpr long kUpload = 16 << 20; // more than the system's buffers hold
constexpr long kNames = 200'000;

thread_local Lines* t_log = nullptr;

bool IsFull() {
    const char* const mode = std::getenv("VMCORE_FTP_FAULTS");
    return mode && std::string_view(mode) == "full";
}

std::string FileBytes() {
    std::string bytes(kFile, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7 / 5);
    return bytes;
}

// Of 16 bytes on the way, and 15 when libcurl has made one line end of two.
std::string ManyNames() {
    std::string names;
    for (long i = 0; i < kNames; ++i) names += std::to_string(i + 1'000'000) + "abc.syx\r\n";
    return names;
}

std::string Repeated(std::string_view text, int count) {
    std::string all;
    while (count-- > 0) all += text;
    return all;
}

std::string PassiveReply(const char* host, int port) {
    return std::string("227 Go on (") + host + "," + std::to_string(port / 256) + "," +
           std::to_string(port % 256) + ")";
}

void PassiveElsewhere(FtpSession& session) {
    Say(PassiveReply("192,0,2,1", session.Listen()))(session);
}

// Names one data port in both ways of asking.
FtpScript DataPort(int port) {
    return {{"EPSV", Say("229 Go on (|||" + std::to_string(port) + "|)")},
            {"PASV", Say(PassiveReply("127,0,0,1", port))}};
}

void Begin(FtpSession& session) {
    session.OpenData();
    session.Write("150 Go on.\r\n");
}

void CloseData(FtpSession& session) {
    session.CloseData();
}

FtpAnswer SendFile(std::size_t bytes) {
    return [bytes](FtpSession& session) {
        session.WriteData(std::string_view(session.File()).substr(0, bytes));
    };
}

FtpAnswer Half(FtpAnswer end) {
    return InTurn({Begin, SendFile(kPart), std::move(end)});
}

FtpAnswer CutHalf(const char* reply) {
    return Half(InTurn({CloseData, Say(reply)}));
}

// Keeps so much of an upload.
FtpAnswer Keep(std::size_t bytes, FtpAnswer end) {
    return InTurn({Begin, [bytes](FtpSession& s) { s.ReadData(bytes); }, std::move(end)});
}

FtpAnswer EndlessData(const std::string& text) {
    return InTurn({Begin, [text](FtpSession& s) {
                       for (;;) s.WriteData(text);
                   }});
}

FtpAnswer Endless(const std::string& text, std::chrono::milliseconds pause = 0ms) {
    return [=](FtpSession& session) {
        for (;; session.Wait(pause)) session.Write(text);
    };
}

FtpAnswer Drip(int bytes, std::chrono::milliseconds pause) {
    return [=](FtpSession& session) {
        for (int i = 0; i < bytes; ++i) {
            session.Wait(pause);
            session.WriteData(session.File().substr(i, 1));
        }
    };
}

std::vector<Fault> ConnectionFaults(int silentPort) {
    const Task get = Task::Get;
    const std::string refusing = "127.0.0.1:1";
    const std::string silent = "127.0.0.1:" + std::to_string(silentPort);
    const FtpAnswer what = Say("500 What?"), many = Endless("220-Welcome.\r\n");
    const FtpAnswer slowly = Endless("220-Welcome.\r\n", 100ms);
    const FtpAnswer oneLine = Endless(std::string(4096, 'x'));
    const CURLcode late = CURLE_OPERATION_TIMEDOUT, unread = CURLE_RECV_ERROR;
    return {
        {"server: port closed", get, {}, 0, CURLE_COULDNT_CONNECT, "", -1, {}, {}, refusing},
        {"server: no answer", get, {}, 0, late, "", -1, Ends::Connect, {}, silent},
        {"greeting: 421", get, {{"", Say("421 Full.")}}, 0, late, "421 Full.", -1},
        {"greeting: connection dropped", get, {{"", Drop}}, 0, unread, "", -1},
        {"greeting: none", get, {{"", Hang}}, 0, late, "", -1, Ends::Connect},
        {"greeting: lines without end", get, {{"", many}}, 0, unread, "", -1},
        {"greeting: lines without end, slowly",
         get,
         {{"", slowly}},
         0,
         late,
         "",
         -1,
         Ends::Connect},
        {"greeting: one line without end", get, {{"", oneLine}}, 0, unread, "", -1},
        {"login: 530", get, {{"PASS", Say("530 No.")}}, 0, CURLE_LOGIN_DENIED, "530 No.", -1},
        {"login: no answer", get, {{"PASS", Hang}}, 0, late, "", -1, Ends::Connect},
        {"no answer to CWD", get, {{"CWD", Hang}}, 0, late, "", -1, Ends::Answer},
        {"CWD: lines without end, slowly", get, {{"CWD", slowly}}, 0, late, "", -1, Ends::Answer},
        {"no answer to EPSV", get, {{"EPSV", Hang}}, 0, late, "", -1, Ends::Answer},
        {"EPSV: 500", get, {{"EPSV", what}}, 1, CURLE_OK, "", kFile},
        {"EPSV: a port that is closed",
         get,
         {{"EPSV", Say("229 (|||1|)")}},
         1,
         CURLE_OK,
         "",
         kFile},
        {"EPSV: 500, PASV: a foreign address",
         get,
         {{"EPSV", what}, {"PASV", PassiveElsewhere}},
         1,
         CURLE_OK,
         "",
         kFile},
        {"EPSV and PASV: 500",
         get,
         {{"EPSV", what}, {"PASV", what}},
         0,
         CURLE_FTP_WEIRD_PASV_REPLY,
         "500 What?",
         -1},
        {"data port closed", get, DataPort(1), 0, CURLE_COULDNT_CONNECT, "", -1},
        {"data port: no answer", get, DataPort(silentPort), 0, late, "", -1, Ends::Connect},
        {"no answer to QUIT", get, {{"QUIT", Hang}}, 1, CURLE_OK, "", kFile, Ends::Answer},
    };
}

std::vector<Fault> DownloadFaults() {
    const Task get = Task::Get;
    const FtpAnswer what = Say("500 What?"), none = Say("550 None.");
    const FtpAnswer sendAll = InTurn({Begin, SendFile(kFile), CloseData});
    const FtpAnswer drip = Drip(IsFull() ? 65 : 8, IsFull() ? 1000ms : 300ms);
    const CURLcode late = CURLE_OPERATION_TIMEDOUT, part = CURLE_PARTIAL_FILE;
    const CURLcode missing = CURLE_REMOTE_FILE_NOT_FOUND;
    return {
        {"no answer to SIZE", get, {{"SIZE", Hang}}, 0, late, "", -1, Ends::Answer},
        {"SIZE: 550", get, {{"SIZE", none}}, 0, missing, "550 None.", -1},
        {"SIZE: larger than the file", get, {{"SIZE", Say("213 2000000")}}, 0, part, "", kFile},
        {"SIZE: smaller than the file", get, {{"SIZE", Say("213 500000")}}, 1, CURLE_OK, "", kPart},
        {"no answer to RETR", get, {{"RETR", Hang}}, 0, late, "", -1, Ends::Answer},
        {"RETR: 550", get, {{"RETR", none}}, 0, missing, "550 None.", -1},
        {"data: none", get, {{"RETR", InTurn({Begin, Hang})}}, 0, late, "", -1, Ends::Slow},
        {"data: stalls half-way", get, {{"RETR", Half(Hang)}}, 0, late, "", kPart, Ends::Slow},
        {"data: a byte a second",
         get,
         {{"SIZE", what}, {"RETR", InTurn({Begin, drip, CloseData, Say("226 Done.")})}},
         1,
         CURLE_OK,
         "",
         IsFull() ? 65 : 8,
         Ends::Slow},
        {"data: half, then 226", get, {{"RETR", CutHalf("226 Done.")}}, 0, part, "", kPart},
        {"data: half, then 426", get, {{"RETR", CutHalf("426 Cut.")}}, 0, part, "", kPart},
        {"data: half, then all dropped", get, {{"RETR", Half(Drop)}}, 0, part, "", kPart},
        {"no size, data: half, then 226",
         get,
         {{"SIZE", what}, {"RETR", CutHalf("226 Done.")}},
         1,
         CURLE_OK,
         "",
         kPart},
        {"no size, data: half, then 426",
         get,
         {{"SIZE", what}, {"RETR", CutHalf("426 Cut.")}},
         0,
         part,
         "426 Cut.",
         kPart},
        {"no size, data: half, then all dropped",
         get,
         {{"SIZE", what}, {"RETR", Half(Drop)}},
         0,
         CURLE_RECV_ERROR,
         "",
         kPart},
        {"data: no 226 after it",
         get,
         {{"RETR", InTurn({sendAll, Hang})}},
         0,
         late,
         "",
         kFile,
         Ends::Answer},
    };
}

std::vector<Fault> OtherFaults() {
    const Task put = Task::Put, list = Task::List, del = Task::Remove;
    const FtpAnswer full = InTurn({CloseData, Say("552 Full.")});
    const CURLcode late = CURLE_OPERATION_TIMEDOUT, part = CURLE_PARTIAL_FILE;
    const CURLcode unsent = CURLE_SEND_ERROR;
    const long most = vm::CurrentFtpLimits().listingBytes / 6;
    return {
        {"upload: 553", put, {{"STOR", Say("553 No.")}}, 0, CURLE_UPLOAD_FAILED, "553 No.", 0},
        {"upload: half, then 552", put, {{"STOR", Keep(kPart, full)}}, 0, unsent, "", kPart},
        {"upload: half, then all dropped",
         put,
         {{"STOR", Keep(kPart, Drop)}},
         0,
         unsent,
         "",
         kPart},
        {"upload: not read", put, {{"STOR", InTurn({Begin, Hang})}}, 0, late, "", 0, Ends::Slow},
        {"upload: 451 at the end",
         put,
         {{"STOR", Keep(-1, Say("451 Lost."))}},
         0,
         part,
         "451 Lost.",
         kUpload},
        {"upload: no 226 at the end",
         put,
         {{"STOR", Keep(-1, Hang)}},
         0,
         late,
         "",
         kUpload,
         Ends::Answer},
        {"listing: 550",
         list,
         {{"NLST", Say("550 None.")}},
         0,
         CURLE_FTP_COULDNT_RETR_FILE,
         "550 None.",
         0},
        {"listing: a part, then 426",
         list,
         {{"NLST", CutHalf("426 Cut.")}},
         1,
         part,
         "426 Cut.",
         kPart / 16},
        {"listing: stalls", list, {{"NLST", Half(Hang)}}, 1, late, "", kPart / 16, Ends::Slow},
        {"listing: lines without end",
         list,
         {{"NLST", EndlessData(Repeated("a.syx\r\n", 8192))}},
         1,
         CURLE_WRITE_ERROR,
         "",
         most},
        {"listing: one line without end",
         list,
         {{"NLST", EndlessData(std::string(65536, 'x'))}},
         1,
         CURLE_WRITE_ERROR,
         "",
         0},
        {"listing: 200,000 names", list, {}, 1, CURLE_OK, "", kNames, {}, ManyNames()},
        {"listing: binary", list, {}, 1, CURLE_OK, "", 0, {}, FileBytes()},
        {"listing: names that lead elsewhere",
         list,
         {},
         1,
         CURLE_OK,
         "",
         2,
         {},
         "../.profile\r\n/etc/passwd\r\n"},
        {"listing: no last line end", list, {}, 1, CURLE_OK, "", 1, {}, "a.syx\r\nb.syx"},
        {"deletion: 550", del, {{"DELE", Say("550 None.")}}, 0, CURLE_QUOTE_ERROR, "550 None.", -1},
        {"no answer to DELE", del, {{"DELE", Hang}}, 0, late, "", -1, Ends::Answer},
    };
}

long CountNames(CFtpFileFind& find) {
    long count = 0;
    for (BOOL more = TRUE; more;) {
        const std::string before = find.GetFileName();
        more = find.FindNextFile();
        if (more || find.GetFileName() != before) ++count;
    }
    return count;
}

Outcome Attempt(const Fault& fault, ScriptedFtpServer& server, const std::string& path) {
    Outcome outcome;
    t_log = &outcome.log;
    CFtpConnection ftp = ConnectionTo(fault.address.empty() ? server.Address() : fault.address);
    ftp.SetCurrentDirectory("Banks");
    CFtpFileFind find(&ftp);
    const auto start = Clock::now();
    if (fault.task == Task::Get) outcome.result = ftp.GetFile("a.syx", path.c_str());
    if (fault.task == Task::Put) outcome.result = ftp.PutFile(path.c_str(), "a.syx");
    if (fault.task == Task::List) outcome.result = find.FindFile();
    if (fault.task == Task::Remove) outcome.result = ftp.Remove("a.syx");
    outcome.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    outcome.error = ftp.GetLastErrorText();
    if (fault.task == Task::Get && fs::exists(path)) outcome.left = fs::file_size(path);
    if (fault.task == Task::Put) outcome.left = static_cast<long>(server.Received());
    if (fault.task == Task::List) outcome.left = CountNames(find);
    return outcome;
}

std::string Reason(const Fault& fault) {
    return fault.code == CURLE_OK ? "" : vm::CurlLibrary::Get()->easy_strerror(fault.code);
}

Lines ExpectedLog(const Fault& fault) {
    if (fault.task == Task::List && fault.code == CURLE_WRITE_ERROR)
        return {vm::Format("FTP: listing cut at %d bytes", vm::CurrentFtpLimits().listingBytes)};
    if (fault.code == CURLE_OK) return {};
    if (fault.task == Task::Get) return {vm::Format("curl error #: %d", fault.code)};
    if (fault.task == Task::Put) return {"curl_easy_perform() failed: " + Reason(fault)};
    return {};
}

double ExpectedSeconds(Ends ends) {
    const vm::FtpLimits& limits = vm::CurrentFtpLimits();
    if (ends == Ends::Connect) return limits.connectMilliseconds / 1000.0;
    if (ends == Ends::Answer) return limits.answerSeconds;
    return ends == Ends::Slow ? limits.slowSeconds : 0;
}

void Check(const Fault& fault, const Outcome& outcome) {
    SCOPED_TRACE(fault.name);
    EXPECT_EQ(outcome.result, fault.result);
    EXPECT_EQ(outcome.log, ExpectedLog(fault));
    const std::string words = *fault.words ? std::string(" (") + fault.words + ")" : "";
    EXPECT_EQ(outcome.error, Reason(fault) + words);
    EXPECT_EQ(outcome.left, fault.left);
    // libcurl looks at a speed that it averages over some seconds.
    const double expected = ExpectedSeconds(fault.ends);
    EXPECT_GT(outcome.seconds, expected - 0.1);
    EXPECT_LT(outcome.seconds, expected + 12);
}

std::string Left(const Fault& fault, long left) {
    if (fault.task == Task::Remove) return "the file";
    if (fault.task == Task::List) return std::to_string(left) + " names";
    if (left < 0) return "no file";
    const bool isWhole = left == (fault.task == Task::Get ? kFile : kUpload);
    return isWhole ? "the whole file" : std::to_string(left) + " bytes";
}

void PrintRow(const Fault& fault, const Outcome& outcome) {
    std::string texts = outcome.log.empty() ? "" : "`" + outcome.log.front() + "`";
    if (texts.find(Reason(fault)) == std::string::npos || *fault.words)
        texts += (texts.empty() ? "" : "; ") + outcome.error;
    std::printf("| %s | %d | %s | %s | %.0f s |\n", fault.name, outcome.result, texts.c_str(),
                Left(fault, outcome.left).c_str(), outcome.seconds);
}

class FtpFaults : public FtpTest {
protected:
    struct Running {
        Fault fault;
        std::unique_ptr<ScriptedFtpServer> server;
        std::string path;
        std::future<Outcome> outcome;
    };

    FtpFaults() : FtpTest(300s) {
        if (IsFull()) vm::CurrentFtpLimits() = vm::FtpLimits();
        m_before = vm::SetLineSink([](vm::Outlet, const std::string& text) {
            if (t_log) t_log->push_back(text);
        });
    }
    ~FtpFaults() override { vm::SetLineSink(m_before); }

    void Start(const std::vector<Fault>& faults);

    std::vector<Running> m_all;
    const std::string m_file = FileBytes(), m_names = ManyNames();
    vm::LineSink m_before;
};

void FtpFaults::Start(const std::vector<Fault>& faults) {
    for (const Fault& fault : faults) {
        const bool isPut = fault.task == Task::Put;
        const std::string path = isPut ? NewFile("") : NewPath();
        if (isPut) fs::resize_file(path, kUpload);
        m_all.push_back(
            {fault,
             std::make_unique<ScriptedFtpServer>(
                 fault.script, fault.task == Task::List ? m_names : m_file, fault.listing),
             path,
             {}});
        m_all.back().outcome =
            std::async(std::launch::async, Attempt, fault, std::ref(*m_all.back().server), path);
    }
}

TEST_F(FtpFaults, EndWithinTheLimits) {
    const SilentPort silent;
    Start(ConnectionFaults(silent.Number()));
    Start(DownloadFaults());
    Start(OtherFaults());
    const auto deadline = Clock::now() + (IsFull() ? 200s : 40s);
    for (Running& running : m_all) {
        if (running.outcome.wait_until(deadline) != std::future_status::ready) {
            ADD_FAILURE() << running.fault.name << ": does not end";
            running.server->Stop();
        }
        const Outcome outcome = running.outcome.get();
        Check(running.fault, outcome);
        if (running.fault.task == Task::Get && outcome.left >= 0) {
            EXPECT_TRUE(m_file.starts_with(BytesIn(running.path))) << running.fault.name;
        }
        if (IsFull()) PrintRow(running.fault, outcome);
    }
}

} // namespace
