#include "FtpTasks.h"

#include <windows.h>

#include "BankFolder.h"
#include "LocalFiles.h"
#include "RemoteBanks.h"

namespace {

FtpResult Failure(const std::string& error) {
    FtpResult result;
    result.error = error;
    return result;
}

FtpResult Ended(const CFtpConnection& ftp, BOOL worked) {
    FtpResult result;
    if (worked)
        result.ending = FtpEnding::Done;
    else
        result.error = ftp.GetLastErrorText();
    if (!worked && result.error.empty()) result.error = "no reason is known";
    return result;
}

// Gives each name of the folder to `take`. `isWhole` is FALSE when names may be left that cannot be
// read: the walk ends there without another name.
template <class Take>
FtpResult ReadNames(CFtpConnection& ftp, BOOL& isWhole, Take take) {
    CFtpFileFind find(&ftp);
    BOOL more = find.FindFile();
    FtpResult result = Ended(ftp, !*ftp.GetLastErrorText());
    isWhole = TRUE;
    std::string last;
    while (more) {
        more = find.FindNextFile();
        const std::string name = find.GetFileName();
        if (name == last) isWhole = more;
        if (!name.empty() && name != last) take(result, name);
        last = name;
    }
    return result;
}

void Note(FtpResult& result, const std::string& name) {
    if (result.listed.size() < kMostListed)
        result.listed.push_back(name);
    else
        result.isCut = true;
}

// What came of a listing that broke off is in it, too.
FtpResult List(CFtpConnection& ftp) {
    BOOL isWhole = TRUE;
    return ReadNames(ftp, isWhole, Note);
}

// Done when it is certain that a file of this name would replace nothing.
FtpResult LookFor(CFtpConnection& ftp, const std::string& wanted) {
    BOOL isWhole = TRUE;
    bool isThere = false;
    FtpResult result = ReadNames(ftp, isWhole, [&](FtpResult& names, const std::string& name) {
        Note(names, name);
        isThere = isThere || IsSameFile(name, wanted);
    });
    const bool hasFailed = result.ending == FtpEnding::Failed;
    if (hasFailed && SaysNoFolder(result.error)) {
        result.ending = FtpEnding::Done;
    } else if (!hasFailed || SaysNotListed(result.error)) {
        const bool isCertain = !hasFailed && isWhole;
        result.ending = isThere     ? FtpEnding::Exists
                        : isCertain ? FtpEnding::Done
                                    : FtpEnding::Unknown;
    }
    return result;
}

FtpResult Fetch(CFtpConnection& ftp, const FtpRequest& request, const std::string& arriving) {
    if (IsFolder(request.path)) return Failure(NameOf(request.path) + " is a folder");
    FtpResult result = Ended(ftp, ftp.GetFile(request.name.c_str(), arriving.c_str()));
    if (result.ending != FtpEnding::Done) return result;
    if (!IsThere(arriving)) return Failure("the file is empty");
    const std::string why = PutInPlace(arriving, request.path, request.mayReplace);
    return why.empty() ? result : Failure(why);
}

FtpResult Upload(CFtpConnection& ftp, const FtpRequest& request) {
    FtpResult before;
    if (!request.mayReplace) {
        before = LookFor(ftp, request.name);
        if (before.ending != FtpEnding::Done) return before;
    }
    FtpResult result = Ended(ftp, ftp.PutFile(request.path.c_str(), request.name.c_str()));
    result.listed = std::move(before.listed);
    result.isCut = before.isCut;
    return result;
}

} // namespace

// Without a folder files come from that of the login and listings from the root, and "." is taken for
// none: two of them are not.
std::string FolderForAll(const std::string& folder) {
    return folder.empty() || folder == "." ? "./." : folder;
}

FtpResult Perform(CFtpConnection& ftp, const FtpRequest& request, const std::string& arriving) {
    switch (request.task) {
    case FtpTask::List:
        return List(ftp);
    case FtpTask::Fetch:
        return Fetch(ftp, request, arriving);
    case FtpTask::Upload:
        return Upload(ftp, request);
    case FtpTask::Delete:
        return Ended(ftp, ftp.Remove(request.name.c_str()));
    }
    return {};
}
