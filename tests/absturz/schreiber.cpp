// Enters games into the list in the data directory given as its argument, as
// fast as it can, through the same list service the window uses, until it is
// killed. Prints "BEREIT n" once the list with n games is open and "OK n"
// after game n was stored; every fifth game it writes the backup copy.

#include "absturz/spielfolge.h"
#include "core/service/einstellungen.h"
#include "core/service/listendienst.h"
#include "core/standings/spielmodus.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    if (argc < 2)
        return 2;
    // Every line leaves at once, so that a kill loses no confirmation.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    Einstellungen einstellungen;
    ListenDienst dienst(QString::fromLocal8Bit(argv[1]), einstellungen);
    // A kill may have come between the new protocol and the start of its series.
    const QStringList namen{"Anna", "Bernd", "Clara", "Dora"};
    if (dienst.oeffnen() != ProtokollDatenbank::Zustand::Gespeichert &&
        !dienst.neuesProtokoll(1, 1, namen).ok())
        return 3;
    if (dienst.spiele().isEmpty()) {
        ListenKopf kopf = dienst.kopf();
        // A result list grows by ten games as needed, so the writer never runs out.
        kopf.modus = Spielmodus::Ergebnis;
        dienst.kopfAendern(kopf);
        if (!dienst.serieStarten().ok())
            return 3;
    }
    std::printf("BEREIT %d\n", dienst.letzteZeile());
    for (;;) {
        const int zeile = dienst.letzteZeile() + 1;
        const EintragErgebnis ergebnis = dienst.spielEintragen(spielFuerZeile(zeile));
        if (ergebnis.art != EintragErgebnis::Eingetragen) {
            std::printf("FEHLER %s\n", qPrintable(ergebnis.fehler));
            return 4;
        }
        std::printf("OK %d\n", ergebnis.zeile);
        if (zeile % 5 == 0)
            dienst.sicherungSchreiben();
    }
}
