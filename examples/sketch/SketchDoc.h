// SketchDoc.h : the drawing that is open, with its file and the steps that lead back

#pragma once

#include "SketchFile.h"

class CSketchDoc {
public:
    // The file
    void OnNewDocument();
    BOOL OnOpenDocument(LPCSTR lpszPath, CSketchError& error);
    BOOL OnSaveDocument(LPCSTR lpszPath);
    CString GetTitle() const; // the name of the file, empty without one
    const CString& GetPathName() const { return m_strPath; }
    BOOL IsModified() const { return m_bModified; }
    void SetModifiedFlag(BOOL bModified = TRUE) { m_bModified = bModified; }

    // What is drawn, the shape at the back first
    const CPageSetup& GetPage() const { return m_data.m_page; }
    int GetCount() const { return (int)m_data.m_shapes.size(); }
    const CShape& GetShape(int nIndex) const { return *m_data.m_shapes[nIndex]; }
    int HitTest(CPoint point, int nSlack) const; // the topmost shape there, -1 for none

    // Changes. Each can be undone.
    void SetPage(const CPageSetup& page);
    int AddShape(const CShape& shape); // its index
    void ReplaceShape(int nIndex, const CShape& shape);
    void RemoveShape(int nIndex);
    int MoveInStack(int nIndex, int nTo); // the new index
    BOOL CanUndo() const { return !m_undo.empty(); }
    BOOL CanRedo() const { return !m_redo.empty(); }
    void Undo();
    void Redo();

private:
    void BeginChange();
    void Start(const CSketchData& data, LPCSTR lpszPath);

    CSketchData m_data;
    std::vector<CSketchData> m_undo;
    std::vector<CSketchData> m_redo;
    CString m_strPath;
    BOOL m_bModified = FALSE;
};
