// PenDialog.h : the colour and width of the pen, and what is inside of areas

#pragma once

#include "Shape.h"
#include "resource.h"

class CPenDialog : public CDialog {
public:
    enum { IDD = IDD_PEN };

    explicit CPenDialog(CWnd* pParent = NULL);

    CShapeStyle m_style;

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* pDX) override;
    void OnOK() override;
    afx_msg void OnPreset();
    afx_msg void OnWidthEdited();
    afx_msg void OnPenColor();
    afx_msg void OnFillColor();
    afx_msg void OnFill(UINT nID);
    afx_msg void OnHScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    DECLARE_MESSAGE_MAP()

private:
    void SetWidth(int nWidth);
    void ShowStyle();

    CButton m_penColor;
    CButton m_fillColor;
    CStatic m_sample;
    CSpinButtonCtrl m_spin;
    CSliderCtrl m_slider;
    CBitmap m_penPicture;
    CBitmap m_fillPicture;
    CBitmap m_samplePicture;
    int m_nWidth;
    int m_nFill; // none, tint, colour
    BOOL m_bShowing;
};
