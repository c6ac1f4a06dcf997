// What the user is told, and asked, when an operation is over.
#include <algorithm>

#include "BankFolder.h"
#include "FtpDialog.h"
#include "Report.h"
#include "resource.h"

namespace {

const char* NotDone(FtpTask task) {
    switch (task) {
    case FtpTask::List:
        return "Not listed";
    case FtpTask::Fetch:
        return "Not fetched";
    case FtpTask::Upload:
        return "Not uploaded";
    case FtpTask::Delete:
        return "Not deleted";
    }
    return "";
}

std::string Count(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

} // namespace

void FtpDialog::Finish(const FtpResult& outcome) {
    m_bar.SetMarquee(FALSE);
    m_bar.SetPos(0);
    if (m_request.task == FtpTask::List || !outcome.listed.empty()) {
        m_listed = outcome.listed;
        m_isCut = outcome.isCut;
    }
    ShowNames(Selected()); // also those of a listing that broke off
    GetDlgItem(m_shown.names.empty() ? IDC_FTP_PASSWORD : IDC_FTP_NAMES)->SetFocus();
    switch (outcome.ending) {
    case FtpEnding::Done:
        Succeed();
        break;
    case FtpEnding::Failed:
        SetStatus(std::string(NotDone(m_request.task)) + ": " + outcome.error);
        Report("ftp failed %s", outcome.error.c_str());
        break;
    case FtpEnding::Cancelled:
        Cancelled();
        break;
    case FtpEnding::Exists:
        AskToReplace(m_request.name + " is on the server already.", "Replace it?");
        break;
    case FtpEnding::Unknown:
        AskToReplace("The server does not say whether it has " + m_request.name + ".",
                     "Replace what may be there?");
        break;
    }
}

void FtpDialog::Succeed() {
    switch (m_request.task) {
    case FtpTask::List:
        Listed();
        break;
    case FtpTask::Fetch:
        Fetched();
        break;
    case FtpTask::Upload:
        Uploaded();
        break;
    case FtpTask::Delete:
        Deleted();
        break;
    }
}

void FtpDialog::Listed() {
    const std::size_t count = m_shown.names.size();
    const std::size_t leftOut = m_shown.leftOut;
    SetStatus((m_isAfterCancel ? "Cancelled. " : "") + Count(count, "bank") +
              (leftOut ? ", " + Count(leftOut, "unusable name") + " left out" : "") +
              (m_isCut ? ", of the first " + Count(kMostListed, "name") + " only" : ""));
    Report("ftp listed %zu, left out %zu", count, leftOut);
}

void FtpDialog::Fetched() {
    const std::string name = NameOf(m_request.path);
    const BOOL opened = m_banks.open(m_request.path);
    SetStatus(name + " is in " + FolderOf(m_request.path) +
              (opened ? " and open" : ", but was not opened"));
    Report("ftp fetched %s", m_request.path.c_str());
}

void FtpDialog::Uploaded() {
    m_listed.push_back(m_request.name);
    ShowNames(m_request.name);
    SetStatus(m_request.name + " is on the server");
    Report("ftp uploaded %s", m_request.name.c_str());
}

void FtpDialog::Deleted() {
    m_listed.erase(std::remove(m_listed.begin(), m_listed.end(), m_request.name), m_listed.end());
    ShowNames("");
    SetStatus(m_request.name + " is deleted");
    Report("ftp deleted %s", m_request.name.c_str());
}

// The server may have done it all the same.
void FtpDialog::Cancelled() {
    SetStatus("Cancelled");
    Report("ftp cancelled");
    if (m_request.task != FtpTask::Upload && m_request.task != FtpTask::Delete) return;
    OnList();
    m_isAfterCancel = true;
}

void FtpDialog::AskToReplace(const std::string& why, const std::string& question) {
    SetStatus(why);
    Report("asks replace %s", m_request.name.c_str());
    if (Ask(why + " " + question)) SendCopy(true);
}
