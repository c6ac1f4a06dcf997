// A list control whose texts come from the program: the patches of a synthesizer.
#pragma once

#include <afxcmn.h>
#include <afxwin.h>

class PatchTable : public CListCtrl {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;
    /// Columns and rows.
    void Fill();
};
