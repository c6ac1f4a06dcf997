// Settings.cpp : what the program remembers from one run to the next
//

#include "stdafx.h"

#include "Settings.h"

#include <algorithm>
#include <stdio.h>

static const char szSection[] = "Sketch";
static const char szRecent[] = "Sketch Recent Files";

// Somebody may have edited it: what is out of range is left out
static BOOL LoadNumber(LPCSTR lpszEntry, int nLow, int nHigh, int& value)
{
    const CString text = AfxGetApp()->GetProfileString(szSection, lpszEntry, "");
    int number = 0;
    if (sscanf(text, "%d", &number) != 1 || number < nLow || number > nHigh)
        return FALSE;
    value = number;
    return TRUE;
}

static void SaveNumber(LPCSTR lpszEntry, int value)
{
    AfxGetApp()->WriteProfileString(szSection, lpszEntry, std::to_string(value).c_str());
}

static std::string RecentEntry(int nIndex)
{
    return "File" + std::to_string(nIndex + 1);
}

void CSettings::Load()
{
    const int right = GetSystemMetrics(SM_CXSCREEN) - 200;
    const int bottom = GetSystemMetrics(SM_CYSCREEN) - 150;
    int left = 0, top = 0, width = 0, height = 0;
    if (LoadNumber("Left", 0, right, left) && LoadNumber("Top", 0, bottom, top) &&
        LoadNumber("Width", 400, 10000, width) && LoadNumber("Height", 300, 10000, height))
        m_rectWindow.SetRect(left, top, left + width, top + height);

    int pen = (int)m_style.m_crPen, fill = (int)m_style.m_crFill, filled = m_style.m_bFilled;
    LoadNumber("PenWidth", 1, MAX_PEN_WIDTH, m_style.m_nWidth);
    LoadNumber("PenColor", 0, 0xFFFFFF, pen);
    LoadNumber("FillColor", 0, 0xFFFFFF, fill);
    LoadNumber("Filled", 0, 1, filled);
    m_style.m_crPen = (COLORREF)pen;
    m_style.m_crFill = (COLORREF)fill;
    m_style.m_bFilled = filled != 0;

    for (int i = 0; i < RECENT_COUNT; ++i) {
        const CString path = AfxGetApp()->GetProfileString(szRecent, RecentEntry(i).c_str(), "");
        if (!path.IsEmpty())
            m_recent.push_back((LPCSTR)path);
    }
}

void CSettings::Save() const
{
    SaveNumber("Left", m_rectWindow.left);
    SaveNumber("Top", m_rectWindow.top);
    SaveNumber("Width", m_rectWindow.Width());
    SaveNumber("Height", m_rectWindow.Height());
    SaveNumber("PenWidth", m_style.m_nWidth);
    SaveNumber("PenColor", (int)m_style.m_crPen);
    SaveNumber("FillColor", (int)m_style.m_crFill);
    SaveNumber("Filled", m_style.m_bFilled);
    for (int i = 0; i < RECENT_COUNT; ++i)
        AfxGetApp()->WriteProfileString(szRecent, RecentEntry(i).c_str(),
                                        i < GetRecentCount() ? m_recent[i].c_str() : NULL);
}

void CSettings::AddRecent(LPCSTR lpszPath)
{
    m_recent.erase(std::remove(m_recent.begin(), m_recent.end(), std::string(lpszPath)),
                   m_recent.end());
    m_recent.insert(m_recent.begin(), lpszPath);
    if (GetRecentCount() > RECENT_COUNT)
        m_recent.resize(RECENT_COUNT);
}

void CSettings::RemoveRecent(int nIndex)
{
    m_recent.erase(m_recent.begin() + nIndex);
}
