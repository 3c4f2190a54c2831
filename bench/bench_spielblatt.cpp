// How long the score sheet takes to redraw its rows and footer (after every entry, so
// it must stay well inside one frame even for a long result list) and to go out as PDF,
// and how big that PDF is. Run with -platform offscreen. With KARTULO_BENCH_PDF set to a
// file name, the 48-game PDF is kept there to be looked at.

#include "helpers/testprotokoll.h"
#include "sheets/listview.h"
#include "sheets/pdfexport.h"
#include "sheets/spielblatt.h"
#include "standings/spielstand.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using TestProtokoll::abend;

namespace {

using S = SpielEintrag;

// Footer texts in the shape of the money account: points in rows 0 to 2, Euro below.
std::array<QStringList, 8> fussFuer(const QVector<SpielEintrag> &spiele, int spieler)
{
    const Bilanzen b = Spielstand::bilanzen(spiele, spieler);
    std::array<QStringList, 8> fuss;
    int verloreneAlle = 0;
    for (int sitz = 0; sitz < spieler; ++sitz)
        verloreneAlle += b[static_cast<size_t>(sitz)].verloren;
    for (int sitz = 0; sitz < spieler; ++sitz) {
        const SitzBilanz &s = b[static_cast<size_t>(sitz)];
        const int gewMinusVerl = (s.gewonnen - s.verloren) * 50;
        const int gegner = (verloreneAlle - s.verloren) * (spieler == 3 ? 40 : 30);
        const double verlGeld = s.verloren > 5 ? 5.0 + (s.verloren - 5) * 2.0 : s.verloren;
        const double platz = 0.5 * sitz;
        fuss[0] << QString::number(gewMinusVerl);
        fuss[1] << QString::number(gegner);
        fuss[2] << QString::number(s.punkte + gewMinusVerl + gegner);
        fuss[3] << QString::number(1.0, 'f', 2);
        fuss[4] << QString::number(verlGeld, 'f', 2);
        fuss[5] << QString::number(platz, 'f', 2);
        fuss[6] << QString::number(10.0, 'f', 2);
        fuss[7] << QString::number(11.0 + verlGeld + platz, 'f', 2);
    }
    return fuss;
}

const QVector<BlattSpieler> tisch{{QStringLiteral("Anna Bergmann"), 1017},
                                  {QStringLiteral("Bert Carstensen"), 233},
                                  {QStringLiteral("Carl"), 4},
                                  {QStringLiteral("Dora Ehlers-Friedrichsen"), 1290}};

const QStringList regeln{QStringLiteral("Punkte gew Spiele abzgl verl. Spiele * 50"),
                         QStringLiteral("Punkte verl. Spiele der Gegenspieler * 30"),
                         QStringLiteral("Kartengeld 1.0 Euro"),
                         QStringLiteral("Verlorene Spiele 1-5 1.0 ab 6 2.0 Euro"),
                         QStringLiteral("Startgeld 10.0 Euro 1. Serie"),
                         QStringLiteral("Platz: 1=0.0, 2=1.5, 3=2.5, 4=3.0 Euro")};

BlattKopf kopf()
{
    BlattKopf k;
    k.datum = QDate(2026, 11, 14);
    k.serie = 2;
    k.tischNr = 5;
    return k;
}

} // namespace

enum Aenderung
{
    Eintrag,
    ErstesGeloescht,
    Neu
};
Q_DECLARE_METATYPE(Aenderung)

class BenchSpielblatt : public QObject
{
    Q_OBJECT

private slots:
    void fuellen_data();
    void fuellen();
    void pdf();
};

void BenchSpielblatt::fuellen_data()
{
    QTest::addColumn<int>("spieler");
    QTest::addColumn<int>("anzahl");
    QTest::addColumn<Aenderung>("aenderung");

    // A tournament list; a result list, which grows by ten games whenever it is full,
    // after a long evening.
    for (int anzahl : {48, 250, 500, 1000}) {
        QTest::addRow("4 Spieler, %d Spiele, Eintrag", anzahl) << 4 << anzahl << Eintrag;
        QTest::addRow("4 Spieler, %d Spiele, erstes geloescht", anzahl)
            << 4 << anzahl << ErstesGeloescht;
        QTest::addRow("4 Spieler, %d Spiele, neu gezeichnet", anzahl) << 4 << anzahl << Neu;
    }
    QTest::newRow("3 Spieler, 36 Spiele, Eintrag") << 3 << 36 << Eintrag;
    QTest::newRow("3 Spieler, 1000 Spiele, Eintrag") << 3 << 1000 << Eintrag;
    QTest::newRow("3 Spieler, 1000 Spiele, erstes geloescht") << 3 << 1000 << ErstesGeloescht;
    QTest::newRow("3 Spieler, 1000 Spiele, neu gezeichnet") << 3 << 1000 << Neu;
}

// One refill with footer per iteration, on a sheet shown in a view as in the main
// window. Every iteration changes the list, as every refill in the program follows a
// change: it flips between two lists that differ by the last game (an entry), or by
// the first game with all later ones moved up (a deletion, the costliest change), or
// draws a fresh sheet (the start of a list).
void BenchSpielblatt::fuellen()
{
    QFETCH(int, spieler);
    QFETCH(int, anzahl);
    QFETCH(Aenderung, aenderung);

    const QVector<SpielEintrag> spiele = abend(anzahl + 1, spieler);
    QVector<SpielEintrag> vorher = spiele.mid(0, anzahl);
    QVector<SpielEintrag> nachher = spiele.mid(0, anzahl - 1);
    if (aenderung == ErstesGeloescht) {
        nachher = spiele.mid(1, anzahl);
        for (int i = 0; i < nachher.size(); ++i)
            nachher[i].setze(S::Zeile, i + 1);
    }
    const std::array<QStringList, 8> fussVorher = fussFuer(vorher, spieler);
    const std::array<QStringList, 8> fussNachher = fussFuer(nachher, spieler);

    Spielblatt blatt(spieler);
    blatt.leerZeichnen(kopf(), tisch, regeln);
    ListView ansicht;
    ansicht.setScene(blatt.scene());
    blatt.zeilenFuellen(vorher, fussVorher);
    QCoreApplication::processEvents();
    bool umgekehrt = false;
    // The event loop runs after every refill in the program, and Qt finishes the new
    // items there (polish, repaint regions): that is counted as well.
    QBENCHMARK
    {
        if (aenderung == Neu)
            blatt.leerZeichnen(kopf(), tisch, regeln);
        umgekehrt = !umgekehrt;
        if (umgekehrt)
            blatt.zeilenFuellen(nachher, fussNachher);
        else
            blatt.zeilenFuellen(vorher, fussVorher);
        QCoreApplication::processEvents();
    }
}

void BenchSpielblatt::pdf()
{
    Spielblatt blatt(4);
    blatt.leerZeichnen(kopf(), tisch, regeln);
    const QVector<SpielEintrag> spiele = abend(48, 4);
    blatt.zeilenFuellen(spiele, fussFuer(spiele, 4));
    ListView ansicht;
    ansicht.setScene(blatt.scene());
    QTemporaryDir verzeichnis;
    const QString pfad = verzeichnis.filePath(pdfDateiName(kopf().datum, 2, 5));
    QBENCHMARK
    {
        QVERIFY(pdfSchreiben(&ansicht, pfad));
    }
    qInfo("PDF: %lld Bytes", QFileInfo(pfad).size());

    QProcess pdftotext;
    pdftotext.start(QStringLiteral("pdftotext"), {pfad, QStringLiteral("-")});
    if (pdftotext.waitForFinished()) {
        const QString text = QString::fromUtf8(pdftotext.readAllStandardOutput());
        qInfo("Text im PDF: %s",
              text.contains(QLatin1String("Bergmann")) && text.contains(QLatin1String("Carstensen"))
                  ? "Namen gefunden"
                  : "Namen fehlen");
    }
    const QString ziel = qEnvironmentVariable("KARTULO_BENCH_PDF");
    if (!ziel.isEmpty()) {
        QFile::remove(ziel);
        QFile::copy(pfad, ziel);
    }
}

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    BenchSpielblatt bench;
    return QTest::qExec(&bench, argc, argv);
}

#include "bench_spielblatt.moc"
