// Output.cpp : the drawing on paper and on the clipboard: the two places where the systems differ
// most
//

#include "stdafx.h"

#include "SketchView.h"
#include "resource.h"

#ifdef _WIN32

void CSketchView::CopyPicture()
{
    CRect page(0, 0, m_pDoc->GetPage().m_nWidth, m_pDoc->GetPage().m_nHeight);
    CClientDC dc(this);
    CBitmap bitmap;
    bitmap.CreateCompatibleBitmap(&dc, page.Width(), page.Height());
    CDC memory;
    memory.CreateCompatibleDC(&dc);
    CBitmap* pOldBitmap = memory.SelectObject(&bitmap);
    DrawPage(&memory, CPoint(0, 0), FALSE);
    memory.SelectObject(pOldBitmap);
    if (!OpenClipboard())
        return;
    EmptyClipboard();
    SetClipboardData(CF_BITMAP, bitmap.Detach());
    CloseClipboard();
}

BOOL CSketchView::PrintPicture(LPCSTR lpszTitle)
{
    CPrintDialog dialog(FALSE);
    if (dialog.DoModal() != IDOK)
        return FALSE;
    CDC dc;
    dc.Attach(dialog.GetPrinterDC());
    DOCINFO info = {sizeof info, lpszTitle};
    dc.StartDoc(&info);
    dc.StartPage();
    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowExt(72, 72); // a unit is a point
    dc.SetViewportExt(dc.GetDeviceCaps(LOGPIXELSX), dc.GetDeviceCaps(LOGPIXELSY));
    DrawPage(&dc, CPoint(0, 0), FALSE);
    dc.EndPage();
    return dc.EndDoc() > 0;
}

#else

// A page of vectors, which OnPaint draws
void CSketchView::CopyPicture()
{
    m_bOutput = TRUE;
    AfxCopyWindowToClipboard(this, m_pDoc->GetPage().m_nWidth, m_pDoc->GetPage().m_nHeight);
    m_bOutput = FALSE;
}

// To a PDF file, from where any viewer prints it
BOOL CSketchView::PrintPicture(LPCSTR lpszTitle)
{
    char filter[200];
    AfxLoadString(IDS_PRINT_FILTER, filter, sizeof filter);
    const std::string name = std::string(lpszTitle) + ".pdf";
    CFileDialog dialog(FALSE, "pdf", name.c_str(), OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, filter,
                       AfxGetMainWnd());
    dialog.m_ofn.lpstrTitle = "Print to File";
    if (dialog.DoModal() != IDOK)
        return FALSE;
    m_bOutput = TRUE;
    const BOOL bWritten = AfxSaveWindowAsPDF(this, m_pDoc->GetPage().m_nWidth,
                                             m_pDoc->GetPage().m_nHeight, dialog.GetPathName());
    m_bOutput = FALSE;
    if (!bWritten) {
        char text[200];
        AfxLoadString(IDS_CANNOT_WRITE, text, sizeof text);
        MessageBox(text, "Sketch", MB_OK | MB_ICONEXCLAMATION);
    }
    return bWritten;
}

#endif
