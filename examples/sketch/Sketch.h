// Sketch.h : the application

#pragma once

#include "Settings.h"

class CMainFrame;

class CSketchApp : public CWinApp {
public:
    BOOL InitInstance() override;
    int ExitInstance() override;

    CSettings m_settings;

protected:
    afx_msg void OnAppAbout();
    DECLARE_MESSAGE_MAP()
};

extern CSketchApp theApp;
