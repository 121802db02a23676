#include "panels/frmSupport.h"

#include <QComboBox>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

#include <gtest/gtest.h>

namespace harvelop
{
namespace
{

TEST(FormTexts, Utf8BecomesCharacters)
{
    EXPECT_EQ(ToQString("Größe \xE2\x82\xAC"), QString::fromUtf8("Größe €"));
    EXPECT_EQ(ToText(QString::fromUtf8("Größe €")), "Größe \xE2\x82\xAC");
}

TEST(FormTexts, EveryByteComesBack)
{
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    EXPECT_EQ(ToText(ToQString(all)), all);
    const std::string mixed = "caf\xE9 \xF0\x9F\x98\x80 caf\xC3\xA9 \xED\xB3\xA9 \xC0\xAF";
    EXPECT_EQ(ToText(ToQString(mixed)), mixed);
}

TEST(FormTexts, ATextBoxGivesBackWhatItWasGiven)
{
    QLineEdit field;
    const std::string password = "p\xE4ss\xFFw\xC3\xB6rd";
    field.setText(ToQString(password));
    EXPECT_EQ(ToText(field.text()), password);
}

TEST(Twips, Are1440ToTheInch)
{
    QWidget window;
    EXPECT_EQ(TwipsToPixels(1440, window), window.logicalDpiX());
    EXPECT_EQ(PixelsToTwips(window.logicalDpiX(), window), 1440);
    const int pixels = TwipsToPixels(1000, window);
    EXPECT_EQ(TwipsToPixels(PixelsToTwips(pixels, window), window), pixels);
}

TEST(WindowPlaces, OnTheScreenAreTakenAsTheyStand)
{
    QWidget window;
    MoveToTwips(window, 500, 0);
    EXPECT_EQ(window.pos(), QPoint(TwipsToPixels(500, window), 0));
}

TEST(WindowPlaces, OffEveryScreenComeBackIntoView)
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QLabel window("some text");
    for (const QPointF& far : {QPointF(1e9, 1e9), QPointF(-1e300, 500), QPointF(500, -90000), QPointF(300000, 100)}) {
        MoveToTwips(window, far.x(), far.y());
        EXPECT_TRUE(screen.contains(QRect(window.pos(), window.sizeHint()))) << far.x() << " " << far.y();
    }
}

TEST(WindowHeights, GrowByATitleBarOnXpOnly)
{
    QWidget window;
    AdjustHeight(window, "Windows 2000");
    EXPECT_EQ(window.minimumHeight(), 0);
    AdjustHeight(window, "Windows XP SP2");
    EXPECT_GT(window.minimumHeight(), window.sizeHint().height());
}

TEST(StoredTexts, LongerThanCanBeTypedAreNotCut)
{
    QLineEdit field;
    field.setMaxLength(5);
    ShowStored(field, "123");
    EXPECT_EQ(field.maxLength(), 5);
    ShowStored(field, "1234567");
    EXPECT_EQ(field.text(), "1234567");
    field.insert("8");
    EXPECT_EQ(field.text(), "1234567");
}

TEST(Captions, BelongToLabelsButtonsGroupBoxesAndWindows)
{
    QWidget window;
    QLabel label(&window);
    QPushButton button(&window);
    QGroupBox box(&window);
    for (QWidget* widget :
         {static_cast<QWidget*>(&label), static_cast<QWidget*>(&button), static_cast<QWidget*>(&box), &window})
        EXPECT_TRUE(WidgetCaption(*widget).SetCaption("words"));
    EXPECT_EQ(label.text(), "words");
    EXPECT_EQ(button.text(), "words");
    EXPECT_EQ(box.title(), "words");
    EXPECT_EQ(window.windowTitle(), "words");
}

TEST(Captions, AreNotTheTextsOfFieldsAndLists)
{
    QWidget window;
    QLineEdit field(&window);
    QComboBox list(&window);
    EXPECT_FALSE(WidgetCaption(field).SetCaption("words"));
    EXPECT_FALSE(WidgetCaption(list).SetCaption("words"));
    EXPECT_EQ(field.text(), "");
}

TEST(Captions, EmptyFontNameAndSizeKeepTheFont)
{
    QLabel label;
    const QFont before = label.font();
    WidgetCaption(label).SetFontName("");
    WidgetCaption(label).SetFontSize(0);
    EXPECT_EQ(label.font(), before);
    WidgetCaption(label).SetFontName("Courier");
    WidgetCaption(label).SetFontSize(17);
    EXPECT_EQ(label.font().family(), "Courier");
    EXPECT_EQ(label.font().pointSize(), 17);
}

TEST(Fields, ShowTheButtonFaceColourWhileDisabled)
{
    QLineEdit field;
    SetFieldEnabled(field, false);
    EXPECT_FALSE(field.isEnabled());
    EXPECT_EQ(field.palette().color(QPalette::Disabled, QPalette::Base),
              field.palette().color(QPalette::Disabled, QPalette::Button));
    SetFieldEnabled(field, true);
    EXPECT_TRUE(field.isEnabled());
    EXPECT_EQ(field.palette().color(QPalette::Base), QPalette().color(QPalette::Base));
}

} // namespace
} // namespace harvelop
