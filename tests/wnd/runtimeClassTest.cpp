// Class records: those of the library's classes, and those that programs declare.
#include <vmcore/wnd/runtimeClass.h>

#include <vmcore/controls/CEdit.h>
#include <vmcore/controls/CListBox.h>
#include <vmcore/dialogs/CFontDialog.h>
#include <vmcore/dialogs/CPropertySheet.h>
#include <vmcore/wnd/frames.h>

#include "wnd/RecordingWindow.h"

namespace {

class Document : public CMDIFrameWnd {
    DECLARE_DYNAMIC(Document)
};
IMPLEMENT_DYNAMIC(Document, CMDIFrameWnd)

class Score : public Document {
    DECLARE_DYNCREATE(Score)
};
IMPLEMENT_DYNCREATE(Score, Document)

std::string Bases(const CRuntimeClass* record) {
    std::string names;
    for (; record; record = record->m_pfnGetBaseClass ? record->m_pfnGetBaseClass() : nullptr)
        names += std::string(record->m_lpszClassName) + " ";
    return names;
}

} // namespace

TEST(RuntimeClass, ObjectsAnswerTheirClassAndItsBases) {
    const CEdit edit;
    const CListBox list;
    const CToolBar bar;
    const CFontDialog fonts;
    const CPropertyPage page;
    const Score score;
    EXPECT_EQ(Bases(edit.GetRuntimeClass()), "CEdit CWnd ");
    EXPECT_EQ(Bases(list.GetRuntimeClass()), "CListBox CWnd ");
    EXPECT_EQ(Bases(bar.GetRuntimeClass()), "CToolBar CControlBar CWnd ");
    EXPECT_EQ(Bases(fonts.GetRuntimeClass()), "CFontDialog CDialog CWnd ");
    EXPECT_EQ(Bases(page.GetRuntimeClass()), "CPropertyPage CDialog CWnd ");
    EXPECT_EQ(Bases(score.GetRuntimeClass()), "Score Document CMDIFrameWnd CFrameWnd CWnd ");
    EXPECT_EQ(score.GetRuntimeClass()->m_nObjectSize, static_cast<int>(sizeof(Score)));
}

TEST(RuntimeClass, KindsAreTestedAndCast) {
    Score score;
    CWnd* const wnd = &score;
    EXPECT_TRUE(wnd->IsKindOf(RUNTIME_CLASS(CFrameWnd)));
    EXPECT_FALSE(wnd->IsKindOf(RUNTIME_CLASS(CDialog)));
    EXPECT_EQ(DYNAMIC_DOWNCAST(Document, wnd), &score);
    EXPECT_EQ(DYNAMIC_DOWNCAST(CEdit, wnd), nullptr);
    CWnd* const none = nullptr;
    EXPECT_EQ(DYNAMIC_DOWNCAST(Document, none), nullptr);
}

TEST(RuntimeClass, MakesObjectsOfClassesDeclaredSo) {
    const std::unique_ptr<CWnd> made(RUNTIME_CLASS(Score)->CreateObject());
    EXPECT_TRUE(dynamic_cast<Score*>(made.get()));
    EXPECT_EQ(RUNTIME_CLASS(Document)->CreateObject(), nullptr);
}

TEST(RuntimeClass, FrameWithARecordOfItsOwnKeepsItsTimers) {
    Score frame;
    CWnd& wnd = frame;
    EXPECT_NE(wnd.SetTimer(3, 60000), 0U);
    EXPECT_TRUE(wnd.KillTimer(3));
    EXPECT_FALSE(wnd.KillTimer(3));
}
