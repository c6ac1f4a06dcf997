// Menus, and the accelerator tables that turn key presses into commands.
//
// A menu item carries its command ID and, when chosen, sends WM_COMMAND to the window objects that
// have a handler for it. Before a menu opens, each item's state is asked of the window objects
// (CWnd::OnCmdMsg with a MacCmdUI). Menu files are interface files named MENU_<id>.ui; the
// application's main menu is MainMenu.ui, whose items' shortcuts work in every window: the item's
// state is asked first, and a text being edited keeps its editing keys.
//
// A native menu may be held by several CMenu objects. It is freed when the last one lets go of it,
// unless another menu shows it as a sub-menu or it is the main menu. Without a native menu every
// operation does nothing and returns FALSE, 0 or null, as does making or loading one before AfxMain
// has made the application object. Main thread only.
#pragma once

#include <vmcore/app/msg.h>
#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

class CBitmap;
class CWnd;
class CWndMenuDelegate;
struct HICommand;

enum : UINT {
    MF_STRING = 0,
    MF_BYCOMMAND = 0,
    MF_ENABLED = 0, ///< not enough for InsertMenu, which wants the bit below
    MF_UNCHECKED = 0,
    MF_ENABLED_INSERT = 0x1, ///< InsertMenu enables an item only with this bit
    MF_CHECKED = 0x8,
    MF_POPUP = 0x10, ///< the id argument is a sub-menu
    MF_SEPARATOR = 0x20,
    MF_BYPOSITION = 0x40,
    MF_DISABLED = 0x80,
    MF_GRAYED = 0x800,
};

/// Of TrackPopupMenu, which ignores them all: the menu's top left corner is at the position, either
/// button chooses, and the command is sent, also with TPM_RETURNCMD.
enum : UINT {
    TPM_LEFTALIGN = 0,
    TPM_LEFTBUTTON = 0,
    TPM_TOPALIGN = 0,
    TPM_RIGHTBUTTON = 0x2,
    TPM_CENTERALIGN = 0x4,
    TPM_RIGHTALIGN = 0x8,
    TPM_VCENTERALIGN = 0x10,
    TPM_BOTTOMALIGN = 0x20,
    TPM_NONOTIFY = 0x80,
    TPM_RETURNCMD = 0x100,
};

class VM_API CMenu {
public:
    CMenu();
    ~CMenu();
    CMenu(const CMenu&) = delete;
    CMenu& operator=(const CMenu&) = delete;

    BOOL CreatePopupMenu();
    /// Loads MENU_<id>.ui from the resource bundle. FALSE when it is missing or holds no menu.
    BOOL LoadMenu(UINT id);
    BOOL LoadMenu(const char* resource); ///< takes MAKEINTRESOURCE(id)
    BOOL Attach(HMENU menu);             ///< TRUE; lets go of the menu held before
    HMENU Detach();                      ///< the menu then belongs to the caller
    BOOL DestroyMenu();                  ///< lets go of the menu
    HMENU GetSafeHmenu() const;

    /// Enabled unless MF_DISABLED or MF_GRAYED. With MF_POPUP `idOrMenu` is an HMENU; a null one
    /// gives an item that does nothing.
    BOOL AppendMenu(UINT flags, std::uintptr_t idOrMenu = 0, const char* text = nullptr);
    /// Enabled only with MF_ENABLED_INSERT: other than AppendMenu, on purpose.
    BOOL InsertMenu(UINT position, UINT flags, std::uintptr_t id = 0, const char* text = nullptr);
    BOOL InsertMenu(UINT position, UINT flags, std::uintptr_t id, const CBitmap* bitmap);
    /// By command ID whether one was found; with MF_BYPOSITION TRUE even when there is no such
    /// item.
    BOOL DeleteMenu(UINT position, UINT flags);
    BOOL RemoveMenu(UINT index, UINT flags);
    UINT GetMenuItemCount() const;
    /// One temporary object, valid until the next call; null without a sub-menu at `index`.
    CMenu* GetSubMenu(int index) const;
    BOOL LoadSubMenus(HMENU menu);
    void DeleteSubMenus();
    /// Shows the menu at a screen position and waits until it closes. TRUE when an item was chosen;
    /// its command arrives on its own. The owner's window comes to the front, also out of its icon.
    /// The end of the application closes the menu. `flags` and `rect` are not used.
    BOOL TrackPopupMenu(UINT flags, int x, int y, CWnd* owner, const RECT* rect = nullptr);

    HMENU m_hMenu; ///< as GetSafeHmenu; to be read only: Attach and Detach change it

private:
    void Hold(HMENU menu);

    CWndMenuDelegate* m_delegate;
};

/// One entry of an accelerator table, which ends with an entry whose command is -1.
struct AccelEntry {
    std::int32_t command; ///< sent as WM_COMMAND
    std::int32_t key;     ///< the upper-case character, and the native key code shifted left by 8
    std::int32_t commandKey; ///< 1 when the command key (Ctrl) must be down, else 0
    std::int32_t optionKey;  ///< 1 for the option key (Alt)
    std::int32_t shiftKey;   ///< 1 for the shift key
};

VM_API HMENU CreateMenu();
VM_API HMENU CreatePopupMenu();
/// Null: menus are loaded with CMenu::LoadMenu.
VM_API HMENU LoadMenu(HINSTANCE instance, const char* resource);
VM_API void VMMenuItem(HMENU menu, UINT flags, std::uintptr_t idOrMenu, const char* text);
VM_API int GetCommandID(HICommand& command, bool* found); ///< 0
VM_API void HideMainMenu();
/// Toggles: without a HideMainMenu before it, it hides the menu bar.
VM_API void ShowMainMenu();
/// Null: tables are arrays of AccelEntry that the host sets as CWnd::accelTable.
VM_API HACCEL LoadAccelerators(HINSTANCE instance, const char* name);
/// Sends WM_COMMAND for the first entry that matches the key and its modifiers, and returns TRUE; FALSE
/// without a match or for a handle that belongs to no window object.
VM_API BOOL TranslateAccelerator(HWND window, const AccelEntry* table, MSG* msg);
