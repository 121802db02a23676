// Runs the tests on real widgets without a display. A box that no test expects fails its test instead of hanging it.
#include <QApplication>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>
#include <unistd.h>

namespace
{

class Watchdog : public testing::EmptyTestEventListener
{
    static constexpr unsigned LongestTest = 60; // seconds

    void OnTestStart(const testing::TestInfo&) override { alarm(LongestTest); }
    void OnTestEnd(const testing::TestInfo&) override { alarm(0); }
};

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QTimer strayBoxes;
    QPointer<QWidget> open; // at the tick before: what has only just opened is no stray
    QObject::connect(&strayBoxes, &QTimer::timeout, [&open] {
        QWidget* box = QApplication::activeModalWidget();
        if (box && box == open) {
            ADD_FAILURE() << "stray box: " << box->windowTitle().toStdString();
            box->close();
        }
        open = box;
    });
    strayBoxes.start(5000);
    testing::UnitTest::GetInstance()->listeners().Append(new Watchdog);
    return RUN_ALL_TESTS();
}
