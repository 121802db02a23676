#include "platform/qt/qt_dialogs.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

// Does `work` with the dialog that opens next. A dialog that is still there afterwards is closed and fails the test.
void WithNext(const std::function<void(QDialog&)>& work)
{
    auto* looking = new QTimer(qApp);
    QObject::connect(looking, &QTimer::timeout, looking, [looking, work] {
        const QPointer<QDialog> dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        looking->deleteLater();
        looking->stop();
        work(*dialog);
        if (dialog && dialog->isVisible()) {
            ADD_FAILURE() << "the dialog still stands open";
            dialog->reject();
        }
    });
    looking->start(1);
}

void Press(QWidget& dialog, const char* button)
{
    auto* found = dialog.findChild<QPushButton*>(button);
    ASSERT_TRUE(found) << button;
    found->click();
}

Box Question(BoxIcon icon)
{
    return {.text = "Go on?", .title = "Title", .icon = icon, .buttons = BoxButtons::YesNo};
}

Box Plain(BoxButtons buttons = BoxButtons::Ok, BoxIcon icon = BoxIcon::Question)
{
    return {.text = "x", .title = "", .icon = icon, .buttons = buttons};
}

struct DialogsTest : testing::Test {
    QtDialogs dialogs;

    BoxAnswer Answered(const Box& box, const std::function<void(QDialog&)>& work)
    {
        WithNext(work);
        return dialogs.Show(box);
    }
    BoxAnswer Keyed(const Box& box, Qt::Key key)
    {
        return Answered(box, [key](QDialog& dialog) { QTest::keyClick(&dialog, key); });
    }
};

} // namespace

TEST_F(DialogsTest, BoxShowsItsTextAsItStands)
{
    const Box box{.text = "<b>Port</b> & \"x\" is Busy.     ",
                  .title = " tallyCore Harvel",
                  .icon = BoxIcon::Critical,
                  .buttons = BoxButtons::Ok,
                  .detail = "<i>mini</i>com (process 12)"};
    const BoxAnswer answer = Answered(box, [&](QDialog& dialog) {
        auto& shown = dynamic_cast<QMessageBox&>(dialog);
        EXPECT_EQ(shown.objectName(), "boxMessage");
        EXPECT_EQ(shown.text().toStdString(), box.text);
        EXPECT_EQ(shown.textFormat(), Qt::PlainText);
        EXPECT_EQ(shown.windowTitle().toStdString(), box.title);
        EXPECT_EQ(shown.icon(), QMessageBox::Critical);
        EXPECT_EQ(shown.informativeText().toStdString(), box.detail);
        for (const QLabel* label : shown.findChildren<QLabel*>())
            EXPECT_TRUE(label->text().isEmpty() || label->textFormat() == Qt::PlainText)
                << label->objectName().toStdString();
        Press(dialog, "cmdOk");
    });
    EXPECT_EQ(answer, BoxAnswer::Ok);
}

TEST_F(DialogsTest, BoxWithoutATitleBearsTheProgramsName)
{
    Answered(Plain(), [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "harvelop");
        Press(dialog, "cmdOk");
    });
}

TEST_F(DialogsTest, IconsAreToldApart)
{
    const std::pair<BoxIcon, QMessageBox::Icon> icons[] = {{BoxIcon::None, QMessageBox::NoIcon},
                                                           {BoxIcon::Critical, QMessageBox::Critical},
                                                           {BoxIcon::Question, QMessageBox::Question},
                                                           {BoxIcon::Exclamation, QMessageBox::Warning},
                                                           {BoxIcon::Information, QMessageBox::Information}};
    for (const auto& [icon, shown] : icons)
        Answered(Plain(BoxButtons::Ok, icon), [&, expected = shown](QDialog& dialog) {
            EXPECT_EQ(dynamic_cast<QMessageBox&>(dialog).icon(), expected);
            Press(dialog, "cmdOk");
        });
}

TEST_F(DialogsTest, EveryButtonGivesItsAnswer)
{
    const auto pressed = [this](BoxButtons buttons, const char* name) {
        return Answered(Plain(buttons), [=](QDialog& dialog) { Press(dialog, name); });
    };
    EXPECT_EQ(pressed(BoxButtons::Ok, "cmdOk"), BoxAnswer::Ok);
    EXPECT_EQ(pressed(BoxButtons::OkCancel, "cmdOk"), BoxAnswer::Ok);
    EXPECT_EQ(pressed(BoxButtons::OkCancel, "cmdCancel"), BoxAnswer::Cancel);
    EXPECT_EQ(pressed(BoxButtons::YesNo, "cmdYes"), BoxAnswer::Yes);
    EXPECT_EQ(pressed(BoxButtons::YesNo, "cmdNo"), BoxAnswer::No);
}

TEST_F(DialogsTest, EnterTakesTheSafeAnswerOfAWarning)
{
    EXPECT_EQ(Keyed(Question(BoxIcon::Exclamation), Qt::Key_Return), BoxAnswer::No);
    EXPECT_EQ(Keyed(Question(BoxIcon::Question), Qt::Key_Return), BoxAnswer::Yes);
    EXPECT_EQ(Keyed(Plain(BoxButtons::OkCancel), Qt::Key_Return), BoxAnswer::Ok);
}

TEST_F(DialogsTest, EscapeAndClosingDecline)
{
    const std::pair<BoxButtons, BoxAnswer> declined[] = {
        {BoxButtons::Ok, BoxAnswer::Ok}, {BoxButtons::OkCancel, BoxAnswer::Cancel}, {BoxButtons::YesNo, BoxAnswer::No}};
    for (const auto& [buttons, answer] : declined) {
        const Box box = Plain(buttons);
        EXPECT_EQ(Keyed(box, Qt::Key_Escape), answer);
        EXPECT_EQ(Answered(box, [](QDialog& dialog) { dialog.close(); }), answer);
    }
}

TEST_F(DialogsTest, BoxWhoseWindowGoesAwayCountsAsClosed)
{
    auto* window = new QWidget;
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    const BoxAnswer answer = Answered(Question(BoxIcon::Question), [&](QDialog& dialog) {
        EXPECT_EQ(dialog.parentWidget(), window);
        delete window;
    });
    EXPECT_EQ(answer, BoxAnswer::No);
}

TEST_F(DialogsTest, EndOfTheProgramClosesBoxes)
{
    BoxAnswer answer = BoxAnswer::Yes;
    QTimer::singleShot(0, qApp, [&] {
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        answer = dialogs.Show(Question(BoxIcon::Question));
    });
    QCoreApplication::exec();
    EXPECT_EQ(answer, BoxAnswer::No);
}

TEST_F(DialogsTest, BoxStandsAboveAWindowThatStaysOnTop)
{
    const auto onTop = [this] {
        bool flag = false;
        Answered(Plain(), [&](QDialog& dialog) {
            flag = dialog.windowFlags().testFlag(Qt::WindowStaysOnTopHint);
            Press(dialog, "cmdOk");
        });
        return flag;
    };
    EXPECT_FALSE(onTop());
    QWidget progress;
    progress.setWindowFlag(Qt::WindowStaysOnTopHint);
    progress.show();
    EXPECT_TRUE(onTop());
}

TEST_F(DialogsTest, EventsRunWhileABoxStandsOpen)
{
    bool served = false;
    Answered(Plain(), [&](QDialog& dialog) {
        QTimer::singleShot(0, &dialog, [&] {
            served = true;
            dialog.accept();
        });
        QElapsedTimer clock;
        clock.start();
        while (!served && clock.elapsed() < 5000)
            QCoreApplication::processEvents();
    });
    EXPECT_TRUE(served);
}

TEST_F(DialogsTest, PasswordIsMaskedAndGivenAsTyped)
{
    WithNext([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), "dlgPassword");
        EXPECT_EQ(dialog.windowTitle(), " Password");
        auto* input = dialog.findChild<QLineEdit*>("txtPassword");
        ASSERT_TRUE(input);
        EXPECT_EQ(input->echoMode(), QLineEdit::Password);
        EXPECT_EQ(input->accessibleName(), "<Password> & more");
        EXPECT_EQ(dialog.findChild<QLabel*>("lblPassword")->textFormat(), Qt::PlainText);
        EXPECT_EQ(dialog.focusWidget(), input);
        input->setText(QString::fromUtf8(" ge\xc3\xbc heim "));
        QTest::keyClick(input, Qt::Key_Return);
    });
    EXPECT_EQ(dialogs.AskPassword("<Password> & more ", " Password"), " ge\xc3\xbc heim ");
}

TEST_F(DialogsTest, CancelledPasswordIsEmpty)
{
    const auto cancelledBy = [this](const std::function<void(QDialog&)>& cancel) {
        WithNext([&](QDialog& dialog) {
            dialog.findChild<QLineEdit*>("txtPassword")->setText("geheim");
            cancel(dialog);
        });
        return dialogs.AskPassword("Password", "");
    };
    EXPECT_EQ(cancelledBy([](QDialog& dialog) { Press(dialog, "cmdCancel"); }), "");
    EXPECT_EQ(cancelledBy([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }), "");
    EXPECT_EQ(cancelledBy([](QDialog& dialog) { dialog.close(); }), "");
}

} // namespace harvelop::test
