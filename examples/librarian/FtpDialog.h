// The dialog "Banks on a Server": lists a folder of an FTP server, fetches banks from it, sends the one
// that is open, and deletes. The fields are in Resources/DLG_140.ui.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <afxcmn.h>
#include <afxwin.h>

#include "FtpJob.h"
#include "RemoteBanks.h"

/// What the dialog needs of the program.
struct LocalBanks {
    std::function<std::string()> openName; ///< of the bank that is open; "" for none
    std::function<std::string()> folder;   ///< for banks that are fetched
    std::function<BOOL(const std::string& path)> open;
    std::function<BOOL(const std::string& path, std::string& error)>
        writeCopy; ///< of the open bank
};

class FtpDialog : public CDialog {
public:
    FtpDialog(CWnd* parent, LocalBanks banks);
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

private:
    void OnCommandId(int id, int code);
    void OnEdited(int id);
    void OnList();
    void OnFetch();
    void OnUpload();
    void OnDelete();
    void OnCancelTransfer();
    void OnJob();

    void Begin(FtpTask task, const std::string& name, const std::string& path, bool mayReplace);
    void SendCopy(bool mayReplace);
    BOOL WriteCopy(const std::string& path);
    void Finish(const FtpResult& outcome);
    void Succeed();
    void Listed();
    void Fetched();
    void Uploaded();
    void Deleted();
    void Cancelled();
    void AskToReplace(const std::string& why, const std::string& question);

    std::string PathFor(const std::string& name);
    bool Ask(const std::string& question);
    std::string Selected() const;
    void ShowNames(const std::string& selected);
    void ShowProgress();
    void ShowState();
    void SetStatus(const std::string& status);
    void StorePlace() const;

    LocalBanks m_banks;
    CString m_server;
    CString m_folder;
    CString m_user;
    CString m_password; // never stored
    CString m_pattern;
    CListBox m_list;
    CProgressCtrl m_bar;

    std::vector<std::string> m_listed; // as the server sent them
    bool m_isCut = false;              // it has more
    RemoteBanks m_shown;
    FtpRequest m_request; // the one that runs, or the last
    bool m_hasMoved = false;
    bool m_isAfterCancel = false; // the one that runs lists what a cancelled one may have changed
    FtpJob m_job;                 // last: its thread ends before the rest
};
