// Brackets every use of the scratch window on a bare handle: remembers who the handle belongs to
// and binds it again at the end, or removes what the scratch window left for a handle without
// owner.
#pragma once

#include <vmcore/core/types.h>

class CWnd;

class RecoverPane {
public:
    explicit RecoverPane(HWND view);
    ~RecoverPane();
    RecoverPane(const RecoverPane&) = delete;
    RecoverPane& operator=(const RecoverPane&) = delete;

private:
    HWND m_view;
    CWnd* m_remembered;
};
