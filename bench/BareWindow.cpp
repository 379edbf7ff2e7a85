// The least that a program with a window does: what starting one costs at all. With arguments the window
// shows them, and so has fonts to load.

#include <QApplication>
#include <QLabel>
#include <QMainWindow>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QMainWindow window;
    window.resize(821, 821);
    if (argc > 1)
        window.setCentralWidget(new QLabel(QApplication::arguments().mid(1).join(QLatin1Char(' '))));
    window.show();
    return QApplication::exec();
}
