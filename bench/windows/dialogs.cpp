// A dialog of 100 controls from its file, embedded in a window.
#include <filesystem>
#include <fstream>
#include <string>

#include <QtCore/QFile>
#include <QtUiTools/QUiLoader>
#include <QtWidgets/QWidget>

#include <afxwin.h>

#include "harness.h"
#include "parts.h"

namespace bench {
namespace {

constexpr int kDialog = 900;
constexpr int kControls = 100;

std::string Control(int index) {
    static constexpr const char* kClasses[] = {"QLabel", "QLineEdit", "QPushButton", "QCheckBox",
                                               "QComboBox"};
    const std::string number = std::to_string(index);
    const std::string place = "<x>" + std::to_string(index % 10 * 90) + "</x><y>" +
                              std::to_string(index / 10 * 30) +
                              "</y><width>80</width><height>24</height>";
    return std::string("<widget class=\"") + kClasses[index % 5] + "\" name=\"control" + number +
           "\"><property name=\"geometry\"><rect>" + place +
           "</rect></property><property name=\"tag\" stdset=\"0\"><number>" +
           std::to_string(index + 1000) + "</number></property></widget>\n";
}

std::filesystem::path WriteBundle() {
    const std::filesystem::path bundle =
        std::filesystem::temp_directory_path() / "bench_windows.app";
    std::filesystem::create_directories(bundle / "Contents/Resources");
    std::ofstream file(bundle / "Contents/Resources" / ("DLG_" + std::to_string(kDialog) + ".ui"));
    file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\"><class>Form</class>"
            "<widget class=\"QWidget\" name=\"Form\"><property name=\"geometry\"><rect><x>0</x>"
            "<y>0</y><width>900</width><height>300</height></rect></property>\n";
    for (int i = 0; i < kControls; ++i) file << Control(i);
    file << "</widget></ui>\n";
    return bundle;
}

void OurDialog(CWnd& parent) {
    CDialog dialog;
    dialog.Create(kDialog, &parent);
    Settle();
    dialog.DestroyWindow();
    Settle();
}

void QtDialog(QUiLoader& loader, const std::filesystem::path& path, QWidget& parent) {
    QFile file(QString::fromStdString(path.string()));
    file.open(QIODevice::ReadOnly);
    QWidget* const dialog = loader.load(&file, &parent);
    dialog->show();
    Settle();
    dialog->hide();
    dialog->deleteLater();
    Settle();
}

} // namespace

void BenchDialog() {
    const std::filesystem::path bundle = WriteBundle();
    AfxSetDVBundle(VMBundleWithPath(bundle.c_str()));
    CWnd parent;
    parent.Create("", "bench", WS_OVERLAPPEDWINDOW, RECT{60, 60, 960, 360}, nullptr, 0);
    parent.ShowWindow(SW_SHOW);
    QWidget window;
    window.setGeometry(60, 60, 900, 300);
    window.show();
    QUiLoader loader;
    const auto times = [](const std::function<void()>& body) {
        constexpr int kTimes = 5;
        return [body] {
            return NanosecondsPer(kTimes,
                                  [&] {
                                      for (int i = 0; i < kTimes; ++i) body();
                                  }) /
                   1e6;
        };
    };
    const std::filesystem::path file =
        bundle / "Contents/Resources" / ("DLG_" + std::to_string(kDialog) + ".ui");
    const auto ours = [&] { OurDialog(parent); };
    const auto peer = [&] { QtDialog(loader, file, window); };
    ours();
    peer();
    const Pair pair = Compare(11, times(ours), times(peer));
    Report("dialog-of-100-controls", pair.ours, "ms", "QUiLoader", pair.peer);
    parent.DestroyWindow();
    AfxSetDVBundle(nullptr);
    std::filesystem::remove_all(bundle);
    Settle();
}

} // namespace bench
