// Help > Plug-ins: which there are, and why some were not loaded.
#pragma once

#include <functional>

#include <afxcmn.h>
#include <afxwin.h>

#include "Plugins.h"

/// Keeps no texts: the list control asks for each cell it shows.
class PluginList : public CListCtrl {
public:
    explicit PluginList(const Plugins& plugins) : m_plugins(plugins) {}
    void AddColumns();
    void ShowFiles();
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

private:
    const Plugins& m_plugins;
};

class PluginsDialog : public CDialog {
public:
    /// `again` tries those once more that were not loaded.
    PluginsDialog(CWnd* parent, const Plugins& plugins, std::function<void()> again);

    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;
    /// Again: more is known about them.
    void ShowFiles();

private:
    const Plugins& m_plugins;
    std::function<void()> m_again;
    PluginList m_list;
};
