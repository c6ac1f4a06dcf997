// What the tests of the dialogs share: interface files written as text, a dialog that records its
// messages and runs what the test gives it, and a fixture with a bundle.
#pragma once

#include <functional>
#include <string>

#include <QtWidgets/QWidget>

#include <vmcore/dialogs/CDialog.h>
#include <vmcore/dialogs/dataExchange.h>

#include "controls/ControlsFixture.h"
#include "support/MessageBoxRecorder.h"
#include "wnd/RecordingWindow.h"

/// A control of a .ui file: class, tag (0: none), and properties as the file has them.
std::string UiControl(const std::string& className, int tag, const std::string& properties = {});
std::string UiText(const std::string& name, const std::string& value); ///< a string property
std::string UiBool(const std::string& name, bool value);
/// A dynamic string property, such as `action`.
std::string UiDynamic(const std::string& name, const std::string& value);
std::string UiRect(const std::string& name, int x, int y, int width, int height);
std::string UiSize(const std::string& name, int width, int height);
/// A whole dialog file of 300 by 200.
std::string UiDialog(const std::string& content, const std::string& rootClass = "QDialog");

/// The bare dialog of most tests: OK and Cancel, a line (11), a check box (12).
std::string PlainDialog();

class TestDialog : public Recording<CDialog> {
public:
    explicit TestDialog(int id = 1);

    void DoDataExchange(CDataExchange* pDX) override;
    void OnOK() override;
    void OnCancel() override;
    BOOL OnInitDialog() override;

    std::function<void(CDataExchange*)> exchange;
    std::function<void()> onOK, onCancel, onInit; ///< in place of what the class does
    std::vector<bool> saves;                      ///< the direction of each exchange
};

/// Runs `step` once the loop that is started next runs.
void Soon(std::function<void()> step);

class DialogsFixture : public testing::Test {
protected:
    DialogsFixture();

    template <class Control>
    static Control* Item(CWnd& dialog, int id) {
        auto* control = qobject_cast<Control*>(dialog.GetDlgItem(id)->view);
        EXPECT_TRUE(control) << "item " << id;
        return control;
    }
    static void ClickItem(CWnd& dialog, int id);
    /// Writes DLG_<id>.ui.
    void Write(int id, const std::string& content) const;

    Watchdog watchdog;
    LogCapture log;
    MessageBoxRecorder boxes;
    TestBundle bundle;
};
