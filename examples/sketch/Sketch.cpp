// Sketch.cpp : the application
//

#include "stdafx.h"

#include "Sketch.h"

#include "AboutDialog.h"
#include "MainFrm.h"
#include "resource.h"

BEGIN_MESSAGE_MAP(CSketchApp, CWinApp)
    ON_COMMAND(ID_APP_ABOUT, &CSketchApp::OnAppAbout)
END_MESSAGE_MAP()

CSketchApp theApp;

BOOL CSketchApp::InitInstance()
{
    CWinApp::InitInstance();
    SetRegistryKey("Sketch");
    m_settings.Load();

    CMainFrame* pFrame = new CMainFrame;
    if (!pFrame->LoadFrame(IDR_MAINFRAME)) {
        delete pFrame;
        return FALSE;
    }
    m_pMainWnd = pFrame;
    pFrame->MoveWindow(&m_settings.m_rectWindow);
    pFrame->ShowWindow(m_nCmdShow);
    pFrame->UpdateWindow();
    pFrame->DragAcceptFiles();

#ifdef _WIN32
    CCommandLineInfo info;
    ParseCommandLine(info);
    if (!info.m_strFileName.IsEmpty())
        pFrame->OpenFile(info.m_strFileName);
#endif
    return TRUE;
}

int CSketchApp::ExitInstance()
{
    delete m_pMainWnd; // where frames do not delete themselves
    m_pMainWnd = NULL;
    return CWinApp::ExitInstance();
}

void CSketchApp::OnAppAbout()
{
    CAboutDialog dialog(m_pMainWnd);
    dialog.DoModal();
}
