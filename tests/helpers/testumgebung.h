#pragma once

// Every test program runs in a home folder of its own: documents (and so
// kartulo.db) and the settings store live in a temporary directory that is
// removed when the program ends.

#include <QCoreApplication>
#include <QString>
#include <QtTest>

namespace TestUmgebung {

// Points HOME and the XDG folders at a fresh temporary directory; call before
// the application object exists, since the settings paths are fixed then.
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
