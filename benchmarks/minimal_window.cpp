// The least that a program with a window can do: the floor of the start-up time.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv)
{
    const QApplication app(argc, argv);
    QWidget window;
    window.resize(400, 300);
    window.show();
    return QApplication::exec();
}
