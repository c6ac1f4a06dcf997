// The application's delegate: turns launch, termination, opened files and chosen menu items into
// messages for the main window.
#pragma once

#include <vmcore/core/types.h>

#include "platform/NativeApplication.h"

class QAction;

class CWinAppDelegate : public vm::ApplicationDelegate {
public:
    static CWinAppDelegate& Shared();

    bool hasApplication() const override;
    void applicationWillFinishLaunching() override;
    void applicationDidFinishLaunching() override;
    bool openFile(const std::string& name) override;
    Reply applicationShouldTerminate() override;
    void applicationWillTerminate() override;

    /// The action of every menu item that carries a command ID. Null stands for a sender that is no
    /// menu item.
    void winCmd(QAction* sender);
    void preferences();
    void about();
};
