#include "DialogsFixture.h"

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>

namespace {
std::string Property(const std::string& name, const std::string& attributes,
                     const std::string& value) {
    return "<property name=\"" + name + "\"" + attributes + ">" + value + "</property>";
}
} // namespace

std::string UiText(const std::string& name, const std::string& value) {
    return Property(name, "", "<string>" + value + "</string>");
}
std::string UiBool(const std::string& name, bool value) {
    return Property(name, "", std::string("<bool>") + (value ? "true" : "false") + "</bool>");
}
std::string UiDynamic(const std::string& name, const std::string& value) {
    return Property(name, " stdset=\"0\"", "<string>" + value + "</string>");
}
std::string UiRect(const std::string& name, int x, int y, int width, int height) {
    return Property(
        name, "",
        vm::Format("<rect><x>%d</x><y>%d</y><width>%d</width><height>%d</height></rect>", x, y,
                   width, height));
}
std::string UiSize(const std::string& name, int width, int height) {
    return Property(name, "",
                    vm::Format("<size><width>%d</width><height>%d</height></size>", width, height));
}

std::string UiControl(const std::string& className, int tag, const std::string& properties) {
    const std::string name = vm::Format("item%d", tag);
    const std::string tagged =
        tag == 0 ? "" : Property("tag", " stdset=\"0\"", vm::Format("<number>%d</number>", tag));
    return "<widget class=\"" + className + "\" name=\"" + name + "\">" + tagged + properties +
           "</widget>";
}

std::string UiDialog(const std::string& content, const std::string& rootClass) {
    return UiFile("<widget class=\"" + rootClass + "\" name=\"Dialog\">" +
                  UiRect("geometry", 0, 0, 300, 200) + content + "</widget>");
}

std::string PlainDialog() {
    return UiDialog(UiText("windowTitle", "Plain") +
                    UiControl("QLineEdit", 11, UiRect("geometry", 10, 10, 200, 24)) +
                    UiControl("QCheckBox", 12, UiRect("geometry", 10, 40, 200, 24)) +
                    UiControl("QPushButton", 1, UiRect("geometry", 10, 160, 80, 28)) +
                    UiControl("QPushButton", 2, UiRect("geometry", 100, 160, 80, 28)));
}

TestDialog::TestDialog(int id) {
    templateId = id;
    style = 0x42;
}

void TestDialog::DoDataExchange(CDataExchange* pDX) {
    saves.push_back(pDX->m_bSaveAndValidate != 0);
    if (exchange) exchange(pDX);
}
void TestDialog::OnOK() {
    onOK ? onOK() : CDialog::OnOK();
}
void TestDialog::OnCancel() {
    onCancel ? onCancel() : CDialog::OnCancel();
}
BOOL TestDialog::OnInitDialog() {
    const BOOL loaded = CDialog::OnInitDialog();
    if (onInit) onInit();
    return loaded;
}

void Soon(std::function<void()> step) {
    QTimer::singleShot(0, qApp, std::move(step));
}

DialogsFixture::DialogsFixture() {
    vm::Windows() = {};
    Write(1, PlainDialog());
}

void DialogsFixture::Write(int id, const std::string& content) const {
    bundle.Write(vm::Format("DLG_%d", id), content);
}

void DialogsFixture::ClickItem(CWnd& dialog, int id) {
    auto* button = Item<QAbstractButton>(dialog, id);
    if (button) QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
}
