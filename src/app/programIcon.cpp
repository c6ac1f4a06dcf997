#include "app/programIcon.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QIcon>

#include "app/appState.h"
#include "core/log.h"
#include "platform/bundle.h"
#include "platform/pngImage.h"

namespace vm {

void ShowProgramIcon() {
    const Bundle& bundle = *ResourceBundle();
    const std::string name = bundle.InfoString("CFBundleIconFile").value_or("");
    if (name.empty()) return;
    QString path = QString::fromStdString(bundle.ResourcePath() + "/" + name);
    if (!path.endsWith(QLatin1String(".png"), Qt::CaseInsensitive)) path += QLatin1String(".png");
    const QImage image = ReadPng(path);
    if (image.isNull()) return Log(LogModule::App, "icon: %s is no picture", qPrintable(path));
    QGuiApplication::setWindowIcon(QIcon(QPixmap::fromImage(image)));
}

} // namespace vm
