#include "Dialogs.h"

#include "Report.h"
#include "resource.h"

AboutDialog::AboutDialog(CWnd* parent) : CDialog(IDD_ABOUT, parent) {}

BOOL AboutDialog::OnInitDialog() {
    SetDlgItemText(IDC_ABOUT_VERSION, "Version 0.1");
    Report("dialog about");
    return CDialog::OnInitDialog();
}

PortsDialog::PortsDialog(CWnd* parent, std::vector<std::string> outputs,
                         std::vector<std::string> inputs)
    : CDialog(IDD_PORTS, parent), m_outputs(std::move(outputs)), m_inputs(std::move(inputs)) {}

void PortsDialog::Fill(int id, const std::vector<std::string>& names) {
    for (const std::string& name : names)
        SendDlgItemMessage(id, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
    CWnd* const list = GetDlgItem(id);
    if (list && list->view) list->EnableWindow(!names.empty());
}

BOOL PortsDialog::OnInitDialog() {
    Fill(IDC_PORTS_OUTPUT, m_outputs);
    Fill(IDC_PORTS_INPUT, m_inputs);
    Report("dialog ports %zu %zu", m_outputs.size(), m_inputs.size());
    return CDialog::OnInitDialog();
}

void PortsDialog::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_CBIndex(exchange, IDC_PORTS_OUTPUT, output);
    DDX_CBIndex(exchange, IDC_PORTS_INPUT, input);
    DDX_Check(exchange, IDC_PORTS_SLOW, slow);
}

DetailsDialog::DetailsDialog(CWnd* parent, const std::string& summary, const BankDetails& details)
    : CDialog(IDD_DETAILS, parent), m_summary(summary.c_str()), m_author(details.author.c_str()),
      m_comment(details.comment.c_str()) {}

void DetailsDialog::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, IDC_DETAILS_SUMMARY, m_summary);
    DDX_Text(exchange, IDC_DETAILS_AUTHOR, m_author);
    DDX_Text(exchange, IDC_DETAILS_COMMENT, m_comment);
}

int DetailsDialog::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    switch (static_cast<UINT>(message)) {
    case WM_CREATE:
        Report("dialog details");
        break;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDC_DETAILS_CLEAR && HIWORD(wParam) == BN_CLICKED) {
            OnClear();
            return 1;
        }
        if (HIWORD(wParam) == EN_CHANGE) ShowWhetherEmpty();
        break;
    }
    return CDialog::MessageMap(message, wParam, lParam);
}

// There is nothing to clear in empty fields.
void DetailsDialog::ShowWhetherEmpty() {
    UpdateData(TRUE);
    GetDlgItem(IDC_DETAILS_CLEAR)->EnableWindow(!m_author.IsEmpty() || !m_comment.IsEmpty());
}

void DetailsDialog::OnClear() {
    Report("dialog clear");
    CDialog question(IDD_CLEAR, this);
    if (question.DoModal() != IDOK) return;
    m_author = "";
    m_comment = "";
    UpdateData(FALSE);
    ShowWhetherEmpty();
    Report("cleared");
}

BankDetails DetailsDialog::Details() const {
    return {static_cast<const char*>(m_author), static_cast<const char*>(m_comment)};
}

void DetailsDialog::OnOK() {
    UpdateData(TRUE);
    if (const char* problem = WhyNotKept(Details())) {
        Report("details refused");
        ::MessageBox(view, problem, "Bank Details", MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    CDialog::OnOK();
}
