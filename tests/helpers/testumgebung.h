#pragma once

// Every test program runs in a temporary home folder of its own, with its own
// documents (and so kartulo.db) and settings store.

#include <QCoreApplication>
#include <QString>
#include <QtTest>

namespace TestUmgebung {

// Call before the application object exists, which fixes the settings paths.
// Also gives the program a beacon port of its own.
void vorbereiten();

QString datenVerzeichnis();
QString datenbankDatei();

// Removes the data directory and every settings key, for a first start.
void allesLoeschen();

} // namespace TestUmgebung

// For the domain tests, which need no window system.
#define KARTULO_KERN_TEST_MAIN(Klasse)                                                             \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        TestUmgebung::vorbereiten();                                                               \
        QCoreApplication app(argc, argv);                                                          \
        Klasse test;                                                                               \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
