#include <QApplication>
#include <QWidget>

/// What the toolkit, the libraries and a window of the program's size cost before a program does anything.
int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QWidget window;
    window.resize(900, 650);
    window.show();
    return QApplication::exec();
}
