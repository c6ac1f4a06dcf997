#include "ftpScripts.h"

#include <string_view>
#include <utility>

namespace {

std::string PassiveReply(const char* host, int port) {
    return std::string("227 Go on (") + host + "," + std::to_string(port / 256) + "," +
           std::to_string(port % 256) + ")";
}

void Quit(FtpSession& session) {
    session.Write("221 Goodbye.\r\n");
    session.Drop();
}

void ListenExtended(FtpSession& session) {
    Say("229 Go on (|||" + std::to_string(session.Listen()) + "|)")(session);
}

void ListenPassive(FtpSession& session) {
    Say(PassiveReply("127,0,0,1", session.Listen()))(session);
}

FtpAnswer Transfer(FtpAnswer move) {
    return InTurn({Begin, std::move(move), CloseData, Say("226 Done.")});
}

} // namespace

FtpAnswer Say(std::string lines) {
    return [lines = lines + "\r\n"](FtpSession& session) { session.Write(lines); };
}

FtpAnswer InTurn(std::vector<FtpAnswer> answers) {
    return [answers = std::move(answers)](FtpSession& session) {
        for (const FtpAnswer& answer : answers) answer(session);
    };
}

void Hang(FtpSession& session) {
    session.Hang();
}

void Drop(FtpSession& session) {
    session.Drop();
}

void PassiveElsewhere(FtpSession& session) {
    Say(PassiveReply("192,0,2,1", session.Listen()))(session);
}

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

FtpAnswer Keep(std::size_t bytes, FtpAnswer end) {
    return InTurn({Begin, [bytes](FtpSession& s) { s.ReadData(bytes); }, std::move(end)});
}

FtpAnswer EndlessData(const std::string& text) {
    return InTurn({Begin, [text](FtpSession& s) {
                       for (;;) s.WriteData(text);
                   }});
}

FtpAnswer Endless(const std::string& text, std::chrono::milliseconds pause) {
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

const FtpScript& GoodServer() {
    static const FtpScript s_answers = {
        {"", Say("220 Welcome.")},
        {"USER", Say("331 Password?")},
        {"PASS", Say("230 Logged in.")},
        {"PWD", Say("257 \"/home\"")},
        {"CWD", Say("250 Changed.")},
        {"TYPE", Say("200 Set.")},
        {"EPSV", ListenExtended},
        {"PASV", ListenPassive},
        {"SIZE", [](auto& s) { Say("213 " + std::to_string(s.File().size()))(s); }},
        {"RETR", Transfer(SendFile())},
        {"NLST", Transfer([](auto& s) { s.WriteData(s.Listing()); })},
        {"STOR", Transfer([](auto& s) { s.ReadData(); })},
        {"DELE", Say("250 Deleted.")},
        {"QUIT", Quit},
    };
    return s_answers;
}
