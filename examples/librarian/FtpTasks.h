// What the operations do on a connection: list, fetch, upload, delete. Each blocks until its end.
#pragma once

#include <string>

#include <afxinet.h>

#include "FtpJob.h"

/// The text for SetCurrentDirectory that leads everything into one folder: listings, files and deletions.
std::string FolderForAll(const std::string& folder);

/// Does what `request` asks for. A file that is fetched arrives as `arriving`, and what is left of that
/// after a failure is the caller's to remove.
FtpResult Perform(CFtpConnection& ftp, const FtpRequest& request, const std::string& arriving);
