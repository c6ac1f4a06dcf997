// What happens to the pages of a property sheet, in which order, and who may refuse. It outlives its
// CPropertySheet while a page is being asked: any handler may delete that.
#pragma once

#include <memory>
#include <vector>

#include <QtCore/QPointer>

#include <vmcore/dialogs/CPropertySheet.h>

#include "dialogs/SheetPane.h"
#include "dialogs/dialogFile.h"
#include "wnd/CWndViewController.h"

namespace vm {

class Sheet : public std::enable_shared_from_this<Sheet> {
public:
    explicit Sheet(CPropertySheet& owner) : m_owner(&owner) {}
    ~Sheet();
    Sheet(const Sheet&) = delete;
    Sheet& operator=(const Sheet&) = delete;

    void ForgetOwner();

    // The list of pages.
    void Add(CPropertyPage& page);
    void Remove(CPropertyPage& page);
    /// The page is being deleted: the next one is shown when control is back in the loop.
    void Forget(CPropertyPage& page);
    int Count() const { return static_cast<int>(m_pages.size()); }
    CPropertyPage* At(int index) const;
    int IndexOf(const CPropertyPage* page) const;
    int ActiveIndex() const;

    // The window.
    /// Makes the pane in `root` and loads the pages; then shows the message boxes about those that
    /// could not be loaded. False when none could be, or the sheet was closed or deleted meanwhile.
    bool Fill(QWidget& root, bool hasButtons);
    FillResult FillWindow(NativeWindow& window, CWndWindowController& controller);
    bool Start();     ///< shows the first page that accepts; false when none does
    void DropPages(); ///< the pages' windows are destroyed
    bool HasOwner() const { return m_owner != nullptr; }
    bool IsOpen() const; ///< an ended one asks nobody any more
    bool CanPress(int command) const;

    // What its user and host do.
    bool Activate(int index);
    bool Apply();
    void Press(int command); ///< the button is there
    void SetModified(const CPropertyPage& page, bool modified);
    void CancelToClose();
    void SetWizardButtons(DWORD flags);
    void SetFinishText(const char* text);
    LRESULT AskSiblings(WPARAM wParam, LPARAM lParam);
    void TakeTitle();

private:
    struct Page {
        CPropertyPage* page;
        QPointer<QWidget> view;                         // of the loaded file
        std::unique_ptr<CWndViewController> controller; // until the page is first shown
        bool wasShown = false;
        bool isModified = false;
    };
    class Asking;
    using Question = BOOL (CPropertyPage::*)();

    Page* Find(const CPropertyPage* page);

    bool Ask(CPropertyPage* page, Question question);
    void MakePane(QWidget& root, bool hasButtons);
    void Load(Page& page);
    bool Prepare(CPropertyPage* page);
    bool AskToShow(CPropertyPage* page);
    bool Enter(CPropertyPage* page);
    bool EnterFirstFrom(int index);
    bool ApplyPages();
    void TakeOut(int index);
    void EnterSomePage(int index);
    void EnterLater(int index);
    void Step(int step);
    void OK();
    void Cancel();
    void Help();
    int Neighbour(int index, int step) const;
    int WizardTarget(bool forward);
    void Turn(bool forward);
    void Finish();
    void UpdateButtons();
    bool IsWizard() const;
    DWORD UsualWizardButtons(int index) const;
    void ShowWizardButtons(DWORD flags);
    std::vector<int> ButtonCommands() const;
    void LimitSize(QWidget& root) const;
    std::vector<CPropertyPage*> ShownPages() const;

    CPropertySheet* m_owner; // null once it has been deleted
    std::vector<Page> m_pages;
    QPointer<SheetPane> m_pane;
    CPropertyPage* m_active = nullptr;
    bool m_isAsking = false;
    bool m_hasUsualButtons = false; // a wizard whose page has not set them
};

/// Pages are asked one thing at a time. Holds the sheet while a handler may delete it.
class Sheet::Asking {
public:
    explicit Asking(Sheet& sheet) : m_sheet(sheet.shared_from_this()) { sheet.m_isAsking = true; }
    ~Asking() { m_sheet->m_isAsking = false; }
    Asking(const Asking&) = delete;
    Asking& operator=(const Asking&) = delete;

private:
    const std::shared_ptr<Sheet> m_sheet;
};

} // namespace vm
