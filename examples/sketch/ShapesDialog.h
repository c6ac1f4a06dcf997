// ShapesDialog.h : the shapes of the drawing in a list, the topmost first

#pragma once

#include "SketchView.h"
#include "resource.h"

class CShapeList : public CListCtrl {
public:
    explicit CShapeList(CSketchDoc* pDoc) : m_pDoc(pDoc) {}

    void AddColumns();
    void Fill();

protected:
#ifndef _WIN32
    afx_msg LRESULT OnGetDisplayText(WPARAM wParam, LPARAM lParam);
#endif
    DECLARE_MESSAGE_MAP()

private:
    std::string TextOf(int nShape, int nColumn) const;

    CSketchDoc* m_pDoc;
};

class CShapesDialog : public CDialog {
public:
    enum { IDD = IDD_SHAPES };

    CShapesDialog(CSketchDoc* pDoc, CSketchView* pView, CWnd* pParent = NULL);

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* pDX) override;
    afx_msg void OnItemChanged(NMHDR* pNMHDR, LRESULT* pResult);
    afx_msg void OnFront();
    afx_msg void OnBack();
    afx_msg void OnDelete();
    DECLARE_MESSAGE_MAP()

private:
    int SelectedShape() const;
    void ShowShapes();
    void ShowSelection();

    CSketchDoc* m_pDoc;
    CSketchView* m_pView;
    CShapeList m_list;
    BOOL m_bFilling;
};
