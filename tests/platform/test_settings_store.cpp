#include "platform/qt/qt_settings_store.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace harvelop::test
{

TEST(SettingsStore, GivesWhatWasSaved)
{
    QtSettingsStore store;
    EXPECT_EQ(store.Get("Harvel", "Parameters", "_never_saved"), std::nullopt);
    for (const std::string& value :
         {std::string("/home/user/loggers"), std::string(""), std::string("a, b; \"c\" \\t %1"), std::string("@File"),
          std::string("/gr\xc3\xbc\xc3\x9f"), std::string("/latin\xfc")}) {
        store.Save("Harvel", "Parameters", "_home_user", value);
        EXPECT_EQ(QtSettingsStore().Get("Harvel", "Parameters", "_home_user"), value);
    }
}

TEST(SettingsStore, KeysDifferByCaseSectionAndApplication)
{
    QtSettingsStore store;
    store.Save("Harvel", "Parameters", "_home_A", "1");
    store.Save("Harvel", "Parameters", "_home_a", "2");
    store.Save("Harvel", "ComPorts", "_home_a", "3");
    store.Save("Other", "Parameters", "_home_a", "4");
    EXPECT_EQ(store.Get("Harvel", "Parameters", "_home_A"), "1");
    EXPECT_EQ(store.Get("Harvel", "Parameters", "_home_a"), "2");
    EXPECT_EQ(store.Get("Harvel", "ComPorts", "_home_a"), "3");
    EXPECT_EQ(store.Get("Other", "Parameters", "_home_a"), "4");
}

TEST(SettingsStore, IsAnIniFileInTheUsersConfigurationFolder)
{
    QtSettingsStore().Save("Harvel", "ComPorts", "1", "/dev/ttyUSB3");
    QFile file(qEnvironmentVariable("XDG_CONFIG_HOME") + "/Harvel/Harvel.ini");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("[ComPorts]\n1=/dev/ttyUSB3\n"));
}

TEST(SettingsStore, TakesWhatTheUserWroteByHand)
{
    QtSettingsStore().Save("Harvel", "ComPorts", "1", "/dev/ttyUSB3");
    QFile file(qEnvironmentVariable("XDG_CONFIG_HOME") + "/Harvel/ByHand.ini");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("; my ports\n[ComPorts]\n7 = /dev/ttyS7\n8=\n");
    file.close();
    EXPECT_EQ(QtSettingsStore().Get("ByHand", "ComPorts", "7"), "/dev/ttyS7");
    EXPECT_EQ(QtSettingsStore().Get("ByHand", "ComPorts", "8"), "");
}

} // namespace harvelop::test
