#include "FtpDialog.h"

#include <afxdlgs.h>

#include "LocalFiles.h"
#include "Report.h"
#include "Settings.h"
#include "resource.h"

namespace {

constexpr UINT WM_FTP_JOB = WM_USER + 1;
constexpr int kFields[] = {IDC_FTP_SERVER,   IDC_FTP_FOLDER,  IDC_FTP_USER,
                           IDC_FTP_PASSWORD, IDC_FTP_PATTERN, IDC_FTP_NAMES};

const char* Doing(FtpTask task) {
    switch (task) {
    case FtpTask::List:
        return "Listing the folder";
    case FtpTask::Fetch:
        return "Fetching";
    case FtpTask::Upload:
        return "Uploading";
    case FtpTask::Delete:
        return "Deleting";
    }
    return "";
}

std::string Kilobytes(long long bytes) {
    return std::to_string((bytes + 1023) / 1024) + " KB";
}

std::string Text(const CString& text) {
    return static_cast<const char*>(text);
}

CString Setting(const char* key) {
    return LoadSetting(key).c_str();
}

} // namespace

FtpDialog::FtpDialog(CWnd* parent, LocalBanks banks)
    : CDialog(IDD_FTP, parent), m_banks(std::move(banks)), m_server(Setting(setting::kFtpServer)),
      m_folder(Setting(setting::kFtpFolder)), m_user(Setting(setting::kFtpUser)),
      m_pattern(Setting(setting::kFtpPattern)) {
    if (m_pattern.IsEmpty()) m_pattern = "*.syx";
}

void FtpDialog::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, IDC_FTP_SERVER, m_server);
    DDX_Text(exchange, IDC_FTP_FOLDER, m_folder);
    DDX_Text(exchange, IDC_FTP_USER, m_user);
    DDX_Text(exchange, IDC_FTP_PASSWORD, m_password);
    DDX_Text(exchange, IDC_FTP_PATTERN, m_pattern);
    DDX_Control(exchange, IDC_FTP_NAMES, m_list);
    DDX_Control(exchange, IDC_FTP_PROGRESS, m_bar);
}

BOOL FtpDialog::OnInitDialog() {
    CDialog::OnInitDialog();
    if (!m_server.IsEmpty() && !m_user.IsEmpty()) GetDlgItem(IDC_FTP_PASSWORD)->SetFocus();
    ShowState();
    Report("dialog ftp");
    return TRUE;
}

int FtpDialog::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    switch (static_cast<UINT>(message)) {
    case WM_COMMAND:
        OnCommandId(LOWORD(wParam), HIWORD(wParam));
        break;
    case WM_FTP_JOB:
        OnJob();
        return 1;
    case WM_CLOSE: // the dialog is over, however it came to that
        m_job.Stop();
        break;
    }
    return CDialog::MessageMap(message, wParam, lParam);
}

void FtpDialog::OnCommandId(int id, int code) {
    if (code == EN_CHANGE) OnEdited(id);
    if (id == IDC_FTP_NAMES && code == LBN_SELCHANGE) ShowState();
    if (id == IDC_FTP_NAMES && code == LBN_DBLCLK) OnFetch();
    if (code != BN_CLICKED) return;
    switch (id) {
    case IDC_FTP_LIST:
        OnList();
        break;
    case IDC_FTP_FETCH:
        OnFetch();
        break;
    case IDC_FTP_UPLOAD:
        OnUpload();
        break;
    case IDC_FTP_DELETE:
        OnDelete();
        break;
    case IDC_FTP_CANCEL:
        OnCancelTransfer();
        break;
    }
}

// The names are those of one place.
void FtpDialog::OnEdited(int id) {
    UpdateData(TRUE);
    if (id != IDC_FTP_PATTERN) m_listed.clear();
    ShowNames(Selected());
}

void FtpDialog::OnList() {
    Begin(FtpTask::List, "", "", false);
}

void FtpDialog::OnFetch() {
    const std::string name = Selected();
    const std::string path = name.empty() || m_job.IsRunning() ? "" : PathFor(name);
    if (!path.empty()) Begin(FtpTask::Fetch, name, path, IsThere(path));
}

void FtpDialog::OnUpload() {
    SendCopy(false);
}

void FtpDialog::OnDelete() {
    const std::string name = Selected();
    if (name.empty() || m_job.IsRunning()) return;
    Report("asks delete %s", name.c_str());
    if (Ask("Delete " + name + " on the server?")) Begin(FtpTask::Delete, name, "", false);
}

void FtpDialog::OnCancelTransfer() {
    m_job.Cancel();
    SetStatus("Cancelling...");
}

void FtpDialog::OnJob() {
    FtpResult outcome;
    if (m_job.TakeResult(outcome))
        Finish(outcome);
    else if (m_job.IsRunning())
        ShowProgress();
}

void FtpDialog::Begin(FtpTask task, const std::string& name, const std::string& path,
                      bool mayReplace) {
    UpdateData(TRUE);
    const std::string server = Text(m_server);
    const std::string user = Text(m_user);
    const std::string password = Text(m_password);
    const std::string why = WhyNoServer(server, Text(m_folder), user, password);
    if (!why.empty()) {
        SetStatus(why);
        Report("ftp refused");
        return;
    }
    if (task == FtpTask::Upload && !WriteCopy(path)) return;
    StorePlace();
    m_hasMoved = false;
    m_isAfterCancel = false;
    m_request = {task, WithLogin(server, user, password), Text(m_folder), name, path, mayReplace};
    SetStatus(std::string(Doing(task)) + (name.empty() ? "" : " ") + name + "...");
    if (!m_job.Start(this, WM_FTP_JOB, m_request)) SetStatus("No transfer can be begun now");
    ShowState();
    if (m_job.IsRunning()) GetDlgItem(IDC_FTP_CANCEL)->SetFocus(); // else Close would have it
}

// What is open may be changed: a copy of that is sent, not the file.
void FtpDialog::SendCopy(bool mayReplace) {
    const std::string name = m_banks.openName();
    if (name.empty() || m_job.IsRunning()) return;
    char folder[MAX_PATH] = {};
    GetApplicationSupportPath(folder, sizeof folder);
    const std::string copy = PathForJob(std::string(folder) + "/Librarian upload", ".syx");
    Begin(FtpTask::Upload, name, copy, mayReplace);
}

BOOL FtpDialog::WriteCopy(const std::string& path) {
    std::string error;
    const BOOL written = m_banks.writeCopy(path, error);
    if (!written) SetStatus(error);
    return written;
}

// In the folder for banks; the user says where when that has such a file already. "" when cancelled.
std::string FtpDialog::PathFor(const std::string& name) {
    const std::string path = StoredPath(m_banks.folder() + "/" + name);
    if (!IsThere(path)) return path;
    CFileDialog dialog(FALSE, "syx", path.c_str(), OFN_OVERWRITEPROMPT | OFN_NOCHANGEDIR,
                       "System Exclusive (*.syx)|*.syx|All files (*.*)|*.*||", this);
    dialog.m_ofn.lpstrTitle = "Save Fetched Bank As";
    Report("asks where %s", name.c_str());
    return dialog.DoModal() == IDOK ? BehindLinks(StoredPath(Text(dialog.GetPathName()))) : "";
}

bool FtpDialog::Ask(const std::string& question) {
    return MessageBox(view, question.c_str(), "Banks on a Server",
                      MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES;
}

std::string FtpDialog::Selected() const {
    const int row = m_list.GetCurSel();
    return row < 0 || static_cast<std::size_t>(row) >= m_shown.names.size()
               ? ""
               : m_shown.names[static_cast<std::size_t>(row)];
}

void FtpDialog::ShowNames(const std::string& selected) {
    m_shown = BanksAmong(m_listed, Text(m_pattern), m_banks.folder());
    m_list.SetRedraw(FALSE);
    m_list.ResetContent();
    int row = m_shown.names.empty() ? -1 : 0;
    for (const std::string& name : m_shown.names) {
        const int added = m_list.AddString(name.c_str());
        if (name == selected) row = added;
    }
    m_list.SetCurSel(row);
    m_list.SetRedraw(TRUE);
    ShowState();
}

void FtpDialog::ShowProgress() {
    const FtpProgress progress = m_job.Progress();
    if (progress.done > 0 && !m_hasMoved) {
        m_hasMoved = true;
        Report("ftp moving");
    }
    m_bar.SetMarquee(progress.total <= 0);
    if (progress.total <= 0) return;
    m_bar.SetPos(static_cast<int>(progress.done * 100 / progress.total));
    SetStatus(std::string(Doing(m_request.task)) + " " + m_request.name + ": " +
              Kilobytes(progress.done) + " of " + Kilobytes(progress.total));
}

void FtpDialog::ShowState() {
    const bool runs = m_job.IsRunning();
    const bool hasServer = !runs && !m_server.IsEmpty();
    const bool hasName = hasServer && !Selected().empty();
    for (const int id : kFields) GetDlgItem(id)->EnableWindow(!runs);
    GetDlgItem(IDC_FTP_LIST)->EnableWindow(hasServer);
    GetDlgItem(IDC_FTP_FETCH)->EnableWindow(hasName);
    GetDlgItem(IDC_FTP_DELETE)->EnableWindow(hasName);
    GetDlgItem(IDC_FTP_UPLOAD)->EnableWindow(hasServer && !m_banks.openName().empty());
    GetDlgItem(IDC_FTP_CANCEL)->EnableWindow(runs);
}

void FtpDialog::SetStatus(const std::string& status) {
    SetDlgItemText(IDC_FTP_STATUS, status.c_str());
}

void FtpDialog::StorePlace() const {
    StoreSetting(setting::kFtpServer, Text(m_server));
    StoreSetting(setting::kFtpFolder, Text(m_folder));
    StoreSetting(setting::kFtpUser, Text(m_user));
    StoreSetting(setting::kFtpPattern, Text(m_pattern));
}
