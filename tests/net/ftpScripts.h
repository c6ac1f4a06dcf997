// What servers say, whole or in pieces: the answers of scripts.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "ScriptedFtpServer.h"

FtpAnswer Say(std::string lines); ///< each ends with CR LF, which the last one is given here
FtpAnswer InTurn(std::vector<FtpAnswer> answers);
void Hang(FtpSession& session); ///< until the client leaves
void Drop(FtpSession& session); ///< closes all connections
FtpAnswer Endless(const std::string& text, std::chrono::milliseconds pause = {});

FtpScript DataPort(int port);               ///< names it in both ways of asking
void PassiveElsewhere(FtpSession& session); ///< names the right port of a foreign host

// Pieces of transfers.
void Begin(FtpSession& session); ///< opens the data connection
void CloseData(FtpSession& session);
FtpAnswer SendFile(std::size_t bytes = std::string::npos); ///< the beginning of it, or all
FtpAnswer Drip(int bytes, std::chrono::milliseconds pause);

// Whole transfers.
FtpAnswer EndlessData(const std::string& text);
FtpAnswer Keep(std::size_t bytes, FtpAnswer end); ///< reads so much of an upload before the end

/// What a server should do.
const FtpScript& GoodServer();
