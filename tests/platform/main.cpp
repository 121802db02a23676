// The application object that all of these tests need, on a home directory of its own.
#include "platform/qt/qt_event_pump.h"

#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <memory>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", (home.path() + "/config").toUtf8());
    std::unique_ptr<QCoreApplication> application;
    if (qEnvironmentVariable("HARVELOP_TEST_APPLICATION") == "core") {
        application = std::make_unique<QCoreApplication>(argc, argv);
    } else {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        harvelop::PrepareEventDispatcher();
        application = std::make_unique<QApplication>(argc, argv);
        QGuiApplication::setApplicationDisplayName("harvelop");
        QGuiApplication::setQuitOnLastWindowClosed(false);
    }
    return RUN_ALL_TESTS();
}
