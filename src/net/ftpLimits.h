// What an FTP server may ask of a host's patience and memory. Tests shorten it.
#pragma once

namespace vm {

struct FtpLimits {
    long connectMilliseconds = 20'000; ///< name, connection, greeting and login together
    long answerSeconds = 60;           ///< for each command
    long farewellSeconds = 5;          ///< for the answer to QUIT, when all is done
    long slowSeconds = 60;             ///< below a byte a second
    int listingBytes = 64 << 20;       ///< that a listing object keeps
};

/// Read at the start of an operation, so to be changed while none runs.
FtpLimits& CurrentFtpLimits();

} // namespace vm
