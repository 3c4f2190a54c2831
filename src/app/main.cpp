#include "app/mainwindow.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    auto *fenster = new MainWindow;
    fenster->show();
    const int ergebnis = app.exec();
    delete fenster;
    return ergebnis;
}
