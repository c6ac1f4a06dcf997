#include "PluginsDialog.h"

#include <cstdio>

#include "FontScale.h"
#include "Report.h"
#include "resource.h"

namespace {

std::string CellText(const PluginFile& plugin, int column) {
    if (column == 0) return plugin.file;
    if (column == 1) return plugin.name;
    if (plugin.isAwaited) return "Being tried...";
    return plugin.problem.empty() ? "Loaded" : "Not loaded: " + plugin.problem;
}

} // namespace

void PluginList::AddColumns() {
    InsertColumn(0, "File", 0, Scaled(130));
    InsertColumn(1, "Name", 0, Scaled(150));
    InsertColumn(2, "State", 0, Scaled(356));
}

void PluginList::ShowFiles() {
    DeleteAllItems();
    for (std::size_t i = 0; i < m_plugins.Files().size(); ++i)
        InsertItem(LVIF_PARAM | LVIF_TEXT, static_cast<int>(i), "", 0, 0, 0, i);
}

int PluginList::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    if (message != static_cast<int>(WM_GETDISPLAYTEXT))
        return CListCtrl::MessageMap(message, wParam, lParam);
    auto& cell = *reinterpret_cast<LV_DISPTEXT*>(lParam);
    const PluginFile& plugin = m_plugins.Files().at(cell.itemData);
    std::snprintf(cell.text, sizeof cell.text, "%s", CellText(plugin, cell.column).c_str());
    return 1;
}

PluginsDialog::PluginsDialog(CWnd* parent, const Plugins& plugins, std::function<void()> again)
    : CDialog(IDD_PLUGINS, parent), m_plugins(plugins), m_again(std::move(again)), m_list(plugins) {
}

void PluginsDialog::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_PLUGINS_LIST, m_list);
}

BOOL PluginsDialog::OnInitDialog() {
    const BOOL loaded = CDialog::OnInitDialog();
    m_list.SetAccessibleName("Plug-ins");
    m_list.AddColumns();
    ShowFiles();
    return loaded;
}

void PluginsDialog::ShowFiles() {
    m_list.ShowFiles();
    CWnd* const again = GetDlgItem(IDC_PLUGINS_AGAIN);
    if (again && again->view)
        again->EnableWindow(!m_plugins.Refused().empty() && !m_plugins.AreAwaited());
    Report("dialog plug-ins: %s",
           m_plugins.Refused().empty() ? "all loaded" : m_plugins.Refused().c_str());
}

int PluginsDialog::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    if (message == static_cast<int>(WM_COMMAND) && LOWORD(wParam) == IDC_PLUGINS_AGAIN &&
        HIWORD(wParam) == BN_CLICKED) {
        m_again();
        return 1;
    }
    return CDialog::MessageMap(message, wParam, lParam);
}
