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
#include "ftpScripts.h"
#include "net/CurlLibrary.h"

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

enum class Task { Get, Put, List, Remove };
enum class Limit { None, Connect, Answer, Farewell, Slow };

// How an operation ends. The code makes the log line and the beginning of the error text, in which
// the server's words follow.
struct End {
    BOOL result = FALSE;
    CURLcode code = CURLE_OK;
    std::string words = {};
    long left = -1; // bytes of the local file or on the server, or names; -1 without a file
    Limit limit = Limit::None;

    End Leaves(long count) const { return {result, code, words, count, limit}; }
    End After(Limit reached) const { return {result, code, words, left, reached}; }
};

End Works(long left) {
    return {TRUE, CURLE_OK, "", left};
}

End Lists(long names, CURLcode code = CURLE_OK, const char* words = "") {
    return {TRUE, code, words, names};
}

End Fails(CURLcode code, const char* words = "") {
    return {FALSE, code, words};
}

struct Fault {
    std::string name;
    Task task;
    End end;
    std::string address;
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

// Of 16 bytes on the way.
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

// Only a part of the file comes.
FtpAnswer Part(FtpAnswer end) {
    return InTurn({Begin, SendFile(kPart), std::move(end)});
}

FtpAnswer CutPart(const char* reply) {
    return Part(InTurn({CloseData, Say(reply)}));
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
    if (fault.task == Task::Get && fs::exists(path))
        outcome.left = static_cast<long>(fs::file_size(path));
    if (fault.task == Task::Put) outcome.left = static_cast<long>(server.Received());
    if (fault.task == Task::List) outcome.left = CountNames(find);
    return outcome;
}

std::string Reason(CURLcode code) {
    return code == CURLE_OK ? "" : vm::CurlLibrary::Get()->easy_strerror(code);
}

Lines ExpectedLog(const Fault& fault) {
    const CURLcode code = fault.end.code;
    if (fault.task == Task::List && code == CURLE_WRITE_ERROR)
        return {vm::Format("FTP: listing cut at %d bytes", vm::CurrentFtpLimits().listingBytes)};
    if (code == CURLE_OK) return {};
    if (fault.task == Task::Get) return {vm::Format("curl error #: %d", code)};
    if (fault.task == Task::Put) return {"curl_easy_perform() failed: " + Reason(code)};
    return {};
}

double Seconds(Limit limit) {
    const vm::FtpLimits& limits = vm::CurrentFtpLimits();
    if (limit == Limit::Connect) return static_cast<double>(limits.connectMilliseconds) / 1000;
    if (limit == Limit::Answer) return static_cast<double>(limits.answerSeconds);
    if (limit == Limit::Farewell) return static_cast<double>(limits.farewellSeconds);
    return limit == Limit::Slow ? static_cast<double>(limits.slowSeconds) : 0;
}

void Check(const Fault& fault, const Outcome& outcome) {
    SCOPED_TRACE(fault.name);
    const End& end = fault.end;
    EXPECT_EQ(outcome.result, end.result);
    EXPECT_EQ(outcome.log, ExpectedLog(fault));
    EXPECT_EQ(outcome.error, Reason(end.code) + (end.words.empty() ? "" : " (" + end.words + ")"));
    EXPECT_EQ(outcome.left, end.left);
    EXPECT_GT(outcome.seconds, Seconds(end.limit) - 0.1);
    // libcurl looks at a speed that it averages over some seconds.
    const double most =
        end.limit == Limit::Farewell ? Seconds(Limit::Answer) : Seconds(end.limit) + 12;
    EXPECT_LT(outcome.seconds, most);
}

std::string Left(Task task, long left) {
    if (task == Task::Remove) return "the file";
    if (task == Task::List) return std::to_string(left) + " names";
    if (left < 0) return "no file";
    const bool isWhole = left == (task == Task::Get ? kFile : kUpload);
    return isWhole ? "the whole file" : std::to_string(left) + " bytes";
}

void PrintRow(const Fault& fault, const Outcome& outcome) {
    std::string log;
    for (const std::string& line : outcome.log) log += "`" + line + "`";
    std::printf("| %s | %d | %s | %s | %s | %.0f |\n", fault.name.c_str(), outcome.result,
                log.c_str(), outcome.error.c_str(), Left(fault.task, outcome.left).c_str(),
                outcome.seconds);
}

class FtpFaults : public FtpTest {
protected:
    FtpFaults();
    ~FtpFaults() override { vm::SetLineSink(m_before); }

    void StartConnectionFaults();
    void StartDownloadFaults();
    void StartOtherFaults();
    void Finish(std::chrono::seconds limit);

private:
    struct Running {
        Fault fault;
        std::unique_ptr<ScriptedFtpServer> server;
        std::string path;
        std::future<Outcome> outcome;
    };

    void Get(const char* name, FtpScript script, const End& end, const std::string& address = {}) {
        Start({name, Task::Get, end, address}, std::move(script), m_file, {});
    }
    void Put(const char* name, FtpAnswer store, const End& end) {
        Start({name, Task::Put, end, {}}, {{"STOR", std::move(store)}}, {}, {});
    }
    void List(const char* name, FtpScript script, const End& end, const std::string& listing = {}) {
        Start({name, Task::List, end, {}}, std::move(script), m_names, listing);
    }
    void Remove(const char* name, FtpAnswer answer, const End& end) {
        Start({name, Task::Remove, end, {}}, {{"DELE", std::move(answer)}}, {}, {});
    }
    void Start(const Fault& fault, FtpScript script, const std::string& file,
               const std::string& listing);

    std::vector<Running> m_all;
    const SilentPort m_silent;
    const std::string m_file = FileBytes(), m_names = ManyNames();
    vm::LineSink m_before;
};

FtpFaults::FtpFaults() : FtpTest(IsFull() ? 300s : 100s) {
    if (IsFull()) vm::CurrentFtpLimits() = vm::FtpLimits();
    m_before = vm::SetLineSink([](vm::Outlet, const std::string& text) {
        if (t_log) t_log->push_back(text);
    });
}

void FtpFaults::Start(const Fault& fault, FtpScript script, const std::string& file,
                      const std::string& listing) {
    Running& running = m_all.emplace_back();
    running.fault = fault;
    running.server = std::make_unique<ScriptedFtpServer>(std::move(script), file, listing);
    running.path = fault.task == Task::Put ? NewFile("") : NewPath();
    if (fault.task == Task::Put) fs::resize_file(running.path, kUpload);
    running.outcome =
        std::async(std::launch::async, Attempt, fault, std::ref(*running.server), running.path);
}

void FtpFaults::Finish(std::chrono::seconds limit) {
    const auto deadline = Clock::now() + limit;
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

constexpr CURLcode kLate = CURLE_OPERATION_TIMEDOUT;
constexpr CURLcode kPartial = CURLE_PARTIAL_FILE;

void FtpFaults::StartConnectionFaults() {
    const std::string address = "127.0.0.1:";
    const FtpAnswer what = Say("500 What?");
    const FtpAnswer slowly = Endless("220-Welcome.\r\n", 100ms);
    const FtpAnswer oneLine = Endless(std::string(4096, 'x'));
    Get("server: port closed", {}, Fails(CURLE_COULDNT_CONNECT), address + "1");
    Get("server: no answer", {}, Fails(kLate).After(Limit::Connect),
        address + std::to_string(m_silent.Number()));
    Get("greeting: 421", {{"", Say("421 Full.")}}, Fails(kLate, "421 Full."));
    Get("greeting: connection dropped", {{"", Drop}}, Fails(CURLE_RECV_ERROR));
    Get("greeting: none", {{"", Hang}}, Fails(kLate).After(Limit::Connect));
    Get("greeting: lines without end", {{"", Endless("220-Hi.\r\n")}}, Fails(CURLE_RECV_ERROR));
    Get("greeting: lines without end, slowly", {{"", slowly}}, Fails(kLate).After(Limit::Connect));
    Get("greeting: one line without end", {{"", oneLine}}, Fails(CURLE_RECV_ERROR));
    Get("login: 530", {{"PASS", Say("530 No.")}}, Fails(CURLE_LOGIN_DENIED, "530 No."));
    Get("login: no answer", {{"PASS", Hang}}, Fails(kLate).After(Limit::Connect));
    Get("CWD: no answer", {{"CWD", Hang}}, Fails(kLate).After(Limit::Answer));
    Get("CWD: lines without end, slowly", {{"CWD", slowly}}, Fails(kLate).After(Limit::Answer));
    Get("EPSV: no answer", {{"EPSV", Hang}}, Fails(kLate).After(Limit::Answer));
    Get("EPSV: 500", {{"EPSV", what}}, Works(kFile));
    Get("EPSV: a port that is closed", {{"EPSV", Say("229 (|||1|)")}}, Works(kFile));
    Get("PASV: a foreign address", {{"EPSV", what}, {"PASV", PassiveElsewhere}}, Works(kFile));
    Get("EPSV and PASV: 500", {{"EPSV", what}, {"PASV", what}},
        Fails(CURLE_FTP_WEIRD_PASV_REPLY, "500 What?"));
    Get("data port: closed", DataPort(1), Fails(CURLE_COULDNT_CONNECT));
    Get("data port: no answer", DataPort(m_silent.Number()), Fails(kLate).After(Limit::Connect));
    Get("QUIT: no answer", {{"QUIT", Hang}}, Works(kFile).After(Limit::Farewell));
}

void FtpFaults::StartDownloadFaults() {
    const FtpAnswer what = Say("500 What?"), none = Say("550 None.");
    const FtpAnswer all = InTurn({Begin, SendFile(kFile), CloseData});
    const int drops = IsFull() ? 130 : 8;
    const FtpAnswer drip =
        InTurn({Begin, Drip(drops, IsFull() ? 500ms : 300ms), CloseData, Say("226 Done.")});
    const End missing = Fails(CURLE_REMOTE_FILE_NOT_FOUND, "550 None.");
    const End part = Fails(kPartial).Leaves(kPart);
    Get("SIZE: no answer", {{"SIZE", Hang}}, Fails(kLate).After(Limit::Answer));
    Get("SIZE: 550", {{"SIZE", none}}, missing);
    Get("SIZE: too large", {{"SIZE", Say("213 2000000")}}, Fails(kPartial).Leaves(kFile));
    Get("SIZE: too small", {{"SIZE", Say("213 500000")}}, Works(kPart));
    Get("RETR: no answer", {{"RETR", Hang}}, Fails(kLate).After(Limit::Answer));
    Get("RETR: 550", {{"RETR", none}}, missing);
    Get("data: none", {{"RETR", InTurn({Begin, Hang})}}, Fails(kLate).After(Limit::Slow));
    Get("data: stalls", {{"RETR", Part(Hang)}}, Fails(kLate).Leaves(kPart).After(Limit::Slow));
    Get("data: two bytes a second", {{"SIZE", what}, {"RETR", drip}},
        Works(drops).After(Limit::Slow));
    Get("data: a part, then 226", {{"RETR", CutPart("226 Done.")}}, part);
    Get("data: a part, then 426", {{"RETR", CutPart("426 Cut.")}}, part);
    Get("data: a part, then all dropped", {{"RETR", Part(Drop)}}, part);
    Get("SIZE: 500; data: a part, then 226", {{"SIZE", what}, {"RETR", CutPart("226 Done.")}},
        Works(kPart));
    Get("SIZE: 500; data: a part, then 426", {{"SIZE", what}, {"RETR", CutPart("426 Cut.")}},
        Fails(kPartial, "426 Cut.").Leaves(kPart));
    Get("SIZE: 500; data: a part, then all dropped", {{"SIZE", what}, {"RETR", Part(Drop)}},
        Fails(CURLE_RECV_ERROR).Leaves(kPart));
    Get("data: no 226 after it", {{"RETR", InTurn({all, Hang})}},
        Fails(kLate).Leaves(kFile).After(Limit::Answer));
}

void FtpFaults::StartOtherFaults() {
    const End unsent = Fails(CURLE_SEND_ERROR).Leaves(kPart);
    const FtpAnswer full = InTurn({CloseData, Say("552 Full.")}), none = Say("550 None.");
    Put("upload: 553", Say("553 No."), Fails(CURLE_UPLOAD_FAILED, "553 No.").Leaves(0));
    Put("upload: a part, then 552", Keep(kPart, full), unsent);
    Put("upload: a part, then all dropped", Keep(kPart, Drop), unsent);
    Put("upload: not read", InTurn({Begin, Hang}), Fails(kLate).Leaves(0).After(Limit::Slow));
    Put("upload: all, then 451", Keep(kUpload, Say("451 Lost.")),
        Fails(kPartial, "451 Lost.").Leaves(kUpload));
    Put("upload: all, then no answer", Keep(kUpload, Hang),
        Fails(kLate).Leaves(kUpload).After(Limit::Answer));

    const long most = vm::CurrentFtpLimits().listingBytes / 6;
    const FtpAnswer lines = EndlessData(Repeated("a.syx\r\n", 8192));
    const FtpAnswer oneLine = EndlessData(std::string(65536, 'x'));
    List("listing: 550", {{"NLST", none}},
         Fails(CURLE_FTP_COULDNT_RETR_FILE, "550 None.").Leaves(0));
    List("listing: a part, then 426", {{"NLST", CutPart("426 Cut.")}},
         Lists(kPart / 16, kPartial, "426 Cut."));
    List("listing: stalls", {{"NLST", Part(Hang)}}, Lists(kPart / 16, kLate).After(Limit::Slow));
    List("listing: lines without end", {{"NLST", lines}}, Lists(most, CURLE_WRITE_ERROR));
    List("listing: one line without end", {{"NLST", oneLine}}, Lists(0, CURLE_WRITE_ERROR));
    List("listing: 200,000 names", {}, Lists(kNames), m_names);
    List("listing: binary", {}, Lists(0), m_file);
    List("listing: paths", {}, Lists(2), "../.profile\r\n/etc/passwd\r\n");
    List("listing: no last line end", {}, Lists(1), "a.syx\r\nb.syx");
    Remove("deletion: 550", none, Fails(CURLE_QUOTE_ERROR, "550 None."));
    Remove("deletion: no answer", Hang, Fails(kLate).After(Limit::Answer));
}

TEST_F(FtpFaults, EndWithinTheLimits) {
    StartConnectionFaults();
    StartDownloadFaults();
    StartOtherFaults();
    Finish(IsFull() ? 200s : 40s);
}

} // namespace
