// How long opening a protocol file takes (reading the XML and replacing the list in
// kartulo.db in one transaction), and how long the backup copy takes, which is written
// every few minutes while the scorer enters games and so must never be felt. A tournament
// list and a long result list; the import and the backup are also split into their parts.
// kartulo.db lives in a temporary directory, so the time of the commit depends on the disk
// under it (TMPDIR).

#include "db/protokolldatenbank.h"
#include "helpers/testprotokoll.h"
#include "sheets/xmlprotokoll.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QtTest>

using TestProtokoll::abend;

namespace {

XmlDaten liste(int anzahl)
{
    XmlDaten d;
    d.datum = QDate(2024, 5, 3);
    d.tischNr = 5;
    d.serie = 1;
    d.spielAnzahl = anzahl;
    d.modus = anzahl > 48 ? 1 : 0;
    d.kosten = QStringList{"1.00", "1.00", "2.00", "10.00", "50",  "30",
                           "40",   "0.00", "1.50", "2.50",  "3.00"};
    d.verein = QStringLiteral("Skatclub Grün-Weiß");
    d.gruppe = QStringLiteral("A1");
    d.spieler = {
        {1017, QStringLiteral("Anna Bergmann"), QStringLiteral("Ja"), QStringLiteral("Ja")},
        {233, QStringLiteral("Bert Carstensen"), QStringLiteral("Ja"), QStringLiteral("Nein")},
        {4, QStringLiteral("Carl"), QStringLiteral("Nein"), QStringLiteral("Ja")},
        {1290, QStringLiteral("Dora Ehlers-Friedrichsen"), QStringLiteral("Ja"),
         QStringLiteral("Ja")}};
    d.spiele = abend(anzahl, 4);
    return d;
}

} // namespace

enum Teil
{
    Ganz,
    NurXml,
    NurDatei
};
Q_DECLARE_METATYPE(Teil)

class BenchXml : public QObject
{
    Q_OBJECT

private slots:
    void importieren_data();
    void importieren();
    void sicherheitskopie_data();
    void sicherheitskopie();
};

void BenchXml::importieren_data()
{
    QTest::addColumn<int>("anzahl");
    QTest::addColumn<Teil>("teil");

    QTest::newRow("48 Spiele") << 48 << Ganz;
    QTest::newRow("1000 Spiele") << 1000 << Ganz;
    QTest::newRow("1000 Spiele, nur lesen") << 1000 << NurXml;
    QTest::newRow("1000 Spiele, nur kartulo.db") << 1000 << NurDatei;
}

// Target: under 100 ms for 1000 games, lesen and protokollErsetzen together.
void BenchXml::importieren()
{
    QFETCH(int, anzahl);
    QFETCH(Teil, teil);
    const XmlDaten daten = liste(anzahl);
    const QByteArray inhalt = XmlProtokoll::schreiben(daten).toUtf8();
    QTemporaryDir verzeichnis;
    ProtokollDatenbank db(verzeichnis.path());
    QCOMPARE(db.oeffnen(), ProtokollDatenbank::Zustand::Neu);
    QString fehler;
    QVERIFY2(db.protokollErsetzen(daten, &fehler), qPrintable(fehler));

    QBENCHMARK
    {
        if (teil == NurDatei) {
            if (!db.protokollErsetzen(daten, &fehler))
                QFAIL(qPrintable(fehler));
        } else {
            const auto gelesen = XmlProtokoll::lesen(inhalt);
            const auto *ergebnis = std::get_if<XmlDaten>(&gelesen);
            if (!ergebnis)
                QFAIL("Datei nicht lesbar");
            if (teil == Ganz && !db.protokollErsetzen(*ergebnis, &fehler))
                QFAIL(qPrintable(fehler));
        }
    }
    QCOMPARE(db.anzahlEintraege(), anzahl);
}

void BenchXml::sicherheitskopie_data()
{
    QTest::addColumn<int>("anzahl");
    QTest::addColumn<Teil>("teil");

    QTest::newRow("48 Spiele") << 48 << Ganz;
    QTest::newRow("1000 Spiele") << 1000 << Ganz;
    QTest::newRow("1000 Spiele, nur Text") << 1000 << NurXml;
}

// Target: under 50 ms for 1000 games, schreiben and dateiSchreiben together.
void BenchXml::sicherheitskopie()
{
    QFETCH(int, anzahl);
    QFETCH(Teil, teil);
    const XmlDaten daten = liste(anzahl);
    QTemporaryDir verzeichnis;
    const QString pfad = verzeichnis.filePath(QStringLiteral("xmlsicherheitskopie.xml"));
    QBENCHMARK
    {
        const QString text = XmlProtokoll::schreiben(daten);
        if (teil == Ganz && !XmlProtokoll::dateiSchreiben(pfad, text))
            QFAIL("Sicherheitskopie nicht geschrieben");
    }
    // QBENCHMARK runs the function more than once; the size is told once per list.
    static QSet<int> gemeldet;
    if (teil == Ganz && !gemeldet.contains(anzahl)) {
        gemeldet.insert(anzahl);
        qInfo("Sicherheitskopie: %lld Bytes", QFileInfo(pfad).size());
    }
}

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    BenchXml bench;
    return QTest::qExec(&bench, argc, argv);
}

#include "bench_xml.moc"
