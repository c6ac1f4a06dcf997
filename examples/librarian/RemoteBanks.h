// Names of banks on a server, on plain strings: which of them may become files of this computer, and how
// a login is written into the server's name.
#pragma once

#include <string>
#include <vector>

struct RemoteBanks {
    std::vector<std::string> names; ///< sorted, each once
    std::size_t leftOut = 0;        ///< names that fit the pattern and may not be used
};

/// The banks among the names that a server sent, for a folder of this computer.
RemoteBanks BanksAmong(const std::vector<std::string>& listed, const std::string& pattern,
                       const std::string& folder);

/// Whether `name` fits a pattern with '*' and '?', whatever the case of ASCII letters. An empty pattern
/// fits every name.
bool FitsPattern(const std::string& name, const std::string& pattern);

/// Whether a file of this name lies in the folder itself: printable ASCII without '/', '\' and ':', no
/// dot at its start, and short enough for the names that a file has while it arrives.
bool IsUsableName(const std::string& name, const std::string& folder);

/// Why the texts cannot be sent, for the user; "" when they can.
std::string WhyNoServer(const std::string& server, const std::string& folder,
                        const std::string& user, const std::string& password);

/// "user:password@server", the login escaped; the server alone without a user.
std::string WithLogin(const std::string& server, const std::string& user,
                      const std::string& password);

/// Whether a name of a listing may be the file `name` of that folder: servers also list paths, and some
/// take upper and lower case for the same.
bool IsSameFile(const std::string& listed, const std::string& name);

/// Whether a transfer failed because its folder is not there, or cannot be entered.
bool SaysNoFolder(const std::string& error);

/// Whether a listing failed because the server does not show the folder. Some say so of an empty one.
bool SaysNotListed(const std::string& error);
