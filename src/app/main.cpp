#include "app/mainwindow.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    // Lets the desktop match the window to its menu entry and symbol.
    QGuiApplication::setDesktopFileName(QStringLiteral("de.ormindo.kartulo"));
    auto *fenster = new MainWindow;
    fenster->show();
    const int ergebnis = app.exec();
    delete fenster;
    return ergebnis;
}
