#include "settings/frmLanguage.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace harvelop
{
namespace
{

TEST(LanguageChooser, LoadingTurnsTheLanguageFileOnAndChoosesEnglish)
{
    Options options;
    frmLanguage form(options);
    EXPECT_TRUE(options.UseLangFile);
    EXPECT_EQ(options.Language, "English");
    const auto* list = form.findChild<QComboBox*>("cbxLanguage");
    EXPECT_EQ(list->count(), 1);
    EXPECT_EQ(list->currentText(), "English");
    EXPECT_EQ(form.windowTitle(), " Harvel Setup");
    EXPECT_EQ(form.findChild<QLabel*>("lblLanguage")->text().remove('&'), "Select a Language");
}

TEST(LanguageChooser, ClickInTheListChooses)
{
    Options options;
    frmLanguage form(options);
    form.show();
    options.Language = "other";
    auto* list = form.findChild<QComboBox*>("cbxLanguage");
    list->showPopup();
    QTest::keyClick(list->view(), Qt::Key_Return);
    EXPECT_EQ(options.Language, "English");
}

TEST(LanguageChooser, ButtonClosesAndKeepsTheChoice)
{
    Options options;
    frmLanguage form(options);
    form.show();
    options.Language = "other";
    QTest::mouseClick(form.findChild<QPushButton*>("cmdLanguage"), Qt::LeftButton);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(options.Language, "English");
}

TEST(LanguageChooser, EscapeClosesAndKeepsTheChoice)
{
    Options options;
    frmLanguage form(options);
    form.show();
    options.Language = "other";
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(options.Language, "English");
}

} // namespace
} // namespace harvelop
