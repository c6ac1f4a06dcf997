// SketchDoc.cpp : the drawing that is open
//

#include "stdafx.h"

#include "SketchDoc.h"

static const size_t MAX_STEPS = 200;

void CSketchDoc::OnNewDocument()
{
    CSketchData data;
    data.m_page = m_data.m_page; // the next drawing is made on the same paper
    Start(data, "");
}

BOOL CSketchDoc::OnOpenDocument(LPCSTR lpszPath, CSketchError& error)
{
    CSketchData data;
    if (!LoadSketch(lpszPath, data, error))
        return FALSE;
    Start(data, lpszPath);
    return TRUE;
}

BOOL CSketchDoc::OnSaveDocument(LPCSTR lpszPath)
{
    if (!SaveSketch(lpszPath, m_data))
        return FALSE;
    if (m_strPath != lpszPath) // which may be GetPathName(), and stays valid
        m_strPath = lpszPath;
    m_bModified = FALSE;
    return TRUE;
}

CString CSketchDoc::GetTitle() const
{
    std::string path = (LPCSTR)m_strPath;
    const size_t separator = path.find_last_of("\\/");
    if (separator != std::string::npos)
        path = path.substr(separator + 1);
    return CString(path.c_str());
}

int CSketchDoc::HitTest(CPoint point, int nSlack) const
{
    for (int i = GetCount() - 1; i >= 0; --i)
        if (GetShape(i).HitTest(point, nSlack))
            return i;
    return -1;
}

void CSketchDoc::SetPage(const CPageSetup& page)
{
    BeginChange();
    m_data.m_page = page;
}

int CSketchDoc::AddShape(const CShape& shape)
{
    BeginChange();
    m_data.m_shapes.push_back(std::make_shared<CShape>(shape));
    return GetCount() - 1;
}

void CSketchDoc::ReplaceShape(int nIndex, const CShape& shape)
{
    BeginChange();
    m_data.m_shapes[nIndex] = std::make_shared<CShape>(shape);
}

void CSketchDoc::RemoveShape(int nIndex)
{
    BeginChange();
    m_data.m_shapes.erase(m_data.m_shapes.begin() + nIndex);
}

int CSketchDoc::MoveInStack(int nIndex, int nTo)
{
    BeginChange();
    const CShapePtr pShape = m_data.m_shapes[nIndex];
    m_data.m_shapes.erase(m_data.m_shapes.begin() + nIndex);
    m_data.m_shapes.insert(m_data.m_shapes.begin() + nTo, pShape);
    return nTo;
}

void CSketchDoc::Undo()
{
    m_redo.push_back(m_data);
    m_data = m_undo.back();
    m_undo.pop_back();
    m_bModified = TRUE;
}

void CSketchDoc::Redo()
{
    m_undo.push_back(m_data);
    m_data = m_redo.back();
    m_redo.pop_back();
    m_bModified = TRUE;
}

void CSketchDoc::BeginChange()
{
    m_undo.push_back(m_data);
    if (m_undo.size() > MAX_STEPS)
        m_undo.erase(m_undo.begin());
    m_redo.clear();
    m_bModified = TRUE;
}

void CSketchDoc::Start(const CSketchData& data, LPCSTR lpszPath)
{
    m_data = data;
    m_undo.clear();
    m_redo.clear();
    m_strPath = lpszPath;
    m_bModified = FALSE;
}
