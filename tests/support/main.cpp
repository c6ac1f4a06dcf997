// The main function of every unit test: a temporary home, the offscreen platform, and one
// application object for the life of the process.
#include <cstdlib>

#include <QtWidgets/QApplication>

#include <gmock/gmock.h>

#include "support/TemporaryHome.h"

int main(int argc, char** argv) {
    if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("QT_ENABLE_HIGHDPI_SCALING", "0", 1);
    setenv("VMCORE_MIDI", "loopback", 0);
    testing::InitGoogleMock(&argc, argv);
    TemporaryHome home;
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
