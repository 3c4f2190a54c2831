// What a scorer waits for, measured through the window as it is used: entering a game
// (from the click on "Übernehmen", its question answered, to the idle window, with the
// dealer box answered as well), deleting the first game of a long list, starting with a
// long list, writing the sheet as PDF, opening a protocol file and the backup copy.
// Every case runs several times; the table shows the median of the CPU time of the
// process and of the wall time (which includes the disk's sync of kartulo.db).
// Run inside the private network namespace with -platform offscreen.

#include "app/mainwindow.h"
#include "core/db/statements.h"
#include "core/files/xmlprotokoll.h"
#include "core/service/einstellungen.h"
#include "core/service/listendienst.h"
#include "helpers/fensterhilfe.h"
#include "helpers/testprotokoll.h"

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMessageBox>
#include <QTableView>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <ctime>
#include <functional>

namespace {

double cpuMs()
{
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return t.tv_sec * 1000.0 + t.tv_nsec / 1.0e6;
}

// Answers every message box at once with Yes or OK, as a scorer who agrees.
class Zustimmung : public QObject
{
public:
    bool eventFilter(QObject *objekt, QEvent *ereignis) override
    {
        auto *box = qobject_cast<QMessageBox *>(objekt);
        if (box && ereignis->type() == QEvent::Show) {
            QTimer::singleShot(0, box, [box] {
                QAbstractButton *knopf = box->button(QMessageBox::Yes);
                (knopf ? knopf : box->button(QMessageBox::Ok))->click();
            });
        }
        return false;
    }
};

struct Ergebnis
{
    QString fall;
    double cpu;
    double wand;
    QString ziel;
};

double median(QVector<double> werte)
{
    std::sort(werte.begin(), werte.end());
    return werte.at(werte.size() / 2);
}

// A running list with the given number of games, stored in one transaction.
void listeAnlegen(int spieler, int spiele, int geplant, int modus)
{
    TestUmgebung::allesLoeschen();
    TestProtokoll::anlegen(spieler, geplant, modus);
    QStringList statements{QStringLiteral("BEGIN")};
    for (const SpielEintrag &e : TestProtokoll::abend(spiele, spieler))
        statements << e.insertStatement();
    statements << QStringLiteral("COMMIT");
    TestProtokoll::sql(statements);
}

// Runs vorbereiten (not measured) and arbeit (measured, with the events it leaves) n times.
Ergebnis messen(const QString &fall, const QString &ziel, int n,
                const std::function<void()> &vorbereiten, const std::function<void()> &arbeit)
{
    QVector<double> cpu, wand;
    for (int i = 0; i < n; ++i) {
        vorbereiten();
        QElapsedTimer uhr;
        const double start = cpuMs();
        uhr.start();
        arbeit();
        QCoreApplication::processEvents();
        wand << uhr.nsecsElapsed() / 1.0e6;
        cpu << cpuMs() - start;
    }
    return {fall, median(cpu), median(wand), ziel};
}

// A measurement of nothing would look fast: every case checks that it did its work.
void pruefen(bool ok, const char *was)
{
    if (!ok)
        qFatal("Messung ungueltig: %s", was);
}

Ergebnis eintragen(int spiele, const QString &ziel)
{
    listeAnlegen(4, spiele - 8, spiele + 10, spiele > 48 ? 1 : 0);
    MainWindow fenster;
    fenster.show();
    int anzahl = spiele - 8;
    const Ergebnis e = messen(
        QStringLiteral("Spiel eintragen, %1 Spiele").arg(spiele), ziel, 8,
        [&] {
            Fenster::klick(&fenster, "tbKreuz");
            Fenster::klick(&fenster,
                           qPrintable(QStringLiteral("tbSpieler%1").arg((anzahl + 1) % 4 + 1)));
            Fenster::klick(&fenster, "pbFertig");
            ++anzahl;
        },
        [&] { Fenster::klick(&fenster, "pbInListeEintragen"); });
    pruefen(TestProtokoll::zeilen(QStringLiteral("SpielListe")) == spiele, "eintragen");
    return e;
}

Ergebnis loeschen()
{
    std::unique_ptr<MainWindow> fenster;
    return messen(
        QStringLiteral("Erstes von 300 Spielen loeschen"), QStringLiteral("50 ms"), 5,
        [&] {
            fenster.reset();
            listeAnlegen(4, 300, 300, 1);
            fenster = std::make_unique<MainWindow>();
            auto *uebersicht =
                fenster->findChild<QTableView *>(QStringLiteral("tblViewUebersicht"));
            uebersicht->setCurrentIndex(uebersicht->model()->index(0, 0));
        },
        [&] {
            fenster->onSpielEintragLoeschen();
            pruefen(TestProtokoll::zeilen(QStringLiteral("SpielListe")) == 299, "loeschen");
        });
}

Ergebnis starten()
{
    std::unique_ptr<MainWindow> fenster;
    Ergebnis e = messen(
        QStringLiteral("Start mit 1000 Spielen"), QStringLiteral("400 ms"), 5,
        [&] {
            fenster.reset();
            listeAnlegen(4, 1000, 1010, 1);
        },
        [&] {
            fenster = std::make_unique<MainWindow>();
            fenster->show();
        });
    return e;
}

Ergebnis pdf()
{
    listeAnlegen(4, 48, 48, 0);
    MainWindow fenster;
    const QString pfad = TestUmgebung::datenVerzeichnis();
    Ergebnis e = messen(
        QStringLiteral("Blatt als PDF, 48 Spiele"), QString(), 5, [] {},
        [&] { fenster.onSaveListe(false); });
    const QFileInfoList dateien = QDir(pfad).entryInfoList({QStringLiteral("*.pdf")});
    if (!dateien.isEmpty())
        e.fall += QStringLiteral(" (%1 KB)").arg(dateien.first().size() / 1024);
    return e;
}

Ergebnis xmlLaden()
{
    listeAnlegen(4, 1000, 1010, 1);
    Einstellungen einstellungen;
    ListenDienst dienst(TestUmgebung::datenVerzeichnis(), einstellungen);
    dienst.oeffnen();
    const QByteArray inhalt = XmlProtokoll::schreiben(dienst.protokollDaten()).toUtf8();
    // Each load archives the list it replaces, as in the window.
    return messen(
        QStringLiteral("Protokolldatei mit 1000 Spielen laden"), QString(), 5, [] {},
        [&] {
            const XmlDaten d = std::get<XmlDaten>(XmlProtokoll::lesen(inhalt));
            dienst.protokollErsetzen(d.kopf, d.spieler, d.spiele);
        });
}

Ergebnis sicherheitskopie()
{
    listeAnlegen(4, 1000, 1010, 1);
    MainWindow fenster;
    return messen(
        QStringLiteral("Sicherheitskopie, 1000 Spiele"), QString(), 5, [] {},
        [&] { fenster.onSicherheitsKopieSpeichern(); });
}

} // namespace

int main(int argc, char *argv[])
{
    TestUmgebung::vorbereiten();
    QApplication app(argc, argv);
    Zustimmung zustimmung;
    app.installEventFilter(&zustimmung);

    const QVector<Ergebnis> ergebnisse{eintragen(48, QStringLiteral("5 ms")),
                                       eintragen(1000, QStringLiteral("16 ms")),
                                       loeschen(),
                                       starten(),
                                       pdf(),
                                       xmlLaden(),
                                       sicherheitskopie()};

    QTextStream aus(stdout);
    aus << "| Fall | CPU (ms) | Zeit (ms) | Ziel |\n|---|---:|---:|---:|\n";
    for (const Ergebnis &e : ergebnisse)
        aus << "| " << e.fall << " | " << QString::number(e.cpu, 'f', 1) << " | "
            << QString::number(e.wand, 'f', 1) << " | " << (e.ziel.isEmpty() ? "-" : e.ziel)
            << " |\n";
    return 0;
}
