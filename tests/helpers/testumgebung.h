#pragma once

// Every test program runs in a temporary home folder of its own, with its own
// documents (and so kartulo.db) and settings store.

#include <QCoreApplication>
#include <QSettings>
#include <QString>
#include <QtTest>
#ifdef QT_WIDGETS_LIB
#include <QApplication>
#endif

namespace TestUmgebung {

// Call before the application object exists, which fixes the settings paths.
// Also gives the program a beacon port of its own.
void vorbereiten();

QString datenVerzeichnis();
QString datenbankDatei();

// Removes the data directory and every settings key, for a first start.
void allesLoeschen();

// The settings store the program reads at start-up and writes to.
QSettings einstellungen();

} // namespace TestUmgebung

// The window tests get a QApplication, the domain tests a core one only.
#ifdef QT_WIDGETS_LIB
#define KARTULO_TEST_APP QApplication
#else
#define KARTULO_TEST_APP QCoreApplication
#endif
#define KARTULO_TEST_MAIN(Klasse)                                                                  \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        TestUmgebung::vorbereiten();                                                               \
        KARTULO_TEST_APP app(argc, argv);                                                          \
        Klasse test;                                                                               \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
