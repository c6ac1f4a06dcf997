// Settings.h : what the program remembers from one run to the next

#pragma once

#include "Shape.h"

const int RECENT_COUNT = 4;

class CSettings {
public:
    void Load();
    void Save() const;

    // The files opened last, the newest first
    int GetRecentCount() const { return (int)m_recent.size(); }
    const std::string& GetRecent(int nIndex) const { return m_recent[nIndex]; }
    void AddRecent(LPCSTR lpszPath);
    void RemoveRecent(int nIndex);

    CRect m_rectWindow = CRect(80, 70, 80 + 960, 70 + 680);
    CShapeStyle m_style;

private:
    std::vector<std::string> m_recent;
};
