#include "platform/qt/qt_words.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

QString yes()
{
    QMessageBox box;
    return box.addButton(QMessageBox::Yes)->text();
}

} // namespace

TEST(QtWords, ButtonsOfBoxesSpeakTheUsersLanguage)
{
    for (const auto& [language, word] : {std::pair{"German", "&Ja"}, {"French", "&Oui"}, {"Spanish", "&Sí"}}) {
        QtWords words;
        words.Speak(language);
        EXPECT_EQ(yes(), word) << language;
    }
    EXPECT_EQ(yes(), "&Yes"); // and no longer
}

TEST(QtWords, ALanguageThatNobodyKnowsChangesNothing)
{
    QtWords words;
    words.Speak("German");
    words.Speak("Klingon");
    words.Speak("");
    EXPECT_EQ(yes(), "&Ja");
}

} // namespace harvelop::test
