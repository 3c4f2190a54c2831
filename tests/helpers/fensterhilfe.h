#pragma once

// For the window tests: widgets by object name, a game on the entry panel, the
// settings store, and a main() with a QApplication.

#include "helpers/testumgebung.h"

#include <QApplication>
#include <QSettings>
#include <QString>

namespace Fenster {

// The child of the given type and object name, null when there is none.
template <typename T> T *kind(QObject *fenster, const char *name)
{
    return fenster->findChild<T *>(QLatin1String(name));
}

// Clicks the child button with the given object name.
void klick(QWidget *fenster, const char *name);

// One game as the scorer sets it on the panel: game type button, one jack
// "Mit", result, declarer seat (-1 for none) and bid text.
struct Spiel
{
    const char *typ = "tbKreuz";
    int sitz = 0;
    bool gewonnen = true;
    QString reizung;
};

// Sets the panel, presses "Fertig" and "Übernehmen".
void eingeben(QWidget *fenster, const Spiel &spiel);

// The text of the child line edit with the given object name.
QString text(QWidget *fenster, const char *name);

// The settings store the window reads at start-up and writes to.
QSettings einstellungen();

// The first column of a query on kartulo.db as text, through the window's connection.
QStringList lesen(const QString &abfrage);

} // namespace Fenster

#define KARTULO_TEST_MAIN(Klasse)                                                                  \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        TestUmgebung::vorbereiten();                                                               \
        QApplication app(argc, argv);                                                              \
        Klasse test;                                                                               \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
