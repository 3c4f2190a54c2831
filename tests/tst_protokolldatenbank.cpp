// kartulo.db: a fresh file, a saved protocol, damaged and foreign files that
// must stay untouched, deleting with renumbering, the header and the reset.

#include "db/protokolldatenbank.h"
#include "db/statements.h"
#include "helpers/testumgebung.h"

#include <QDir>
#include <QFile>
#include <QSqlQuery>
#include <QTemporaryDir>

using Zustand = ProtokollDatenbank::Zustand;
Q_DECLARE_METATYPE(ProtokollDatenbank::Zustand)

namespace {

QStringList tabellen(const ProtokollDatenbank &db)
{
    QStringList namen = db.verbindung().tables();
    namen.sort();
    return namen;
}

SpielEintrag spiel(int zeile, int wert)
{
    SpielEintrag e;
    e.setze(SpielEintrag::Zeile, zeile);
    e.setze(SpielEintrag::Spiel, 12);
    e.setze(SpielEintrag::Mit, 1);
    e.setze(SpielEintrag::Gewonnen, wert);
    e.setze(SpielEintrag::Spieler1, wert);
    return e;
}

QByteArray lesen(const QString &datei)
{
    QFile f(datei);
    f.open(QIODevice::ReadOnly);
    return f.readAll();
}

} // namespace

class TstProtokollDatenbank : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void neueDatei();
    void gespeichertOderLeer();
    void fremdeDateienBleibenUnberuehrt_data();
    void fremdeDateienBleibenUnberuehrt();
    void verzeichnisFehlt();
    void entfernenNummeriertNeu_data();
    void entfernenNummeriertNeu();
    void kopfMitApostroph();
    void zuruecksetzen();

private:
    QTemporaryDir verzeichnis;
};

void TstProtokollDatenbank::init()
{
    QFile::remove(verzeichnis.filePath(QStringLiteral("kartulo.db")));
}

void TstProtokollDatenbank::neueDatei()
{
    ProtokollDatenbank db(verzeichnis.path());
    QCOMPARE(db.dateiName(), verzeichnis.filePath(QStringLiteral("kartulo.db")));
    QCOMPARE(db.oeffnen(), Zustand::Neu);
    QCOMPARE(db.verbindung().connectionName(), QStringLiteral("kartulo_connection_name"));
    QCOMPARE(tabellen(db), QStringList({"Settings", "SpielListe", "Spieler", "Teilnehmer"}));
    QCOMPARE(db.letzteZeile(), 0);
    QCOMPARE(db.anzahlEintraege(), 0);
    QVERIFY(!db.kopfLesen());
}

void TstProtokollDatenbank::gespeichertOderLeer()
{
    {
        ProtokollDatenbank db(verzeichnis.path());
        QCOMPARE(db.oeffnen(), Zustand::Neu);
        db.einfuegen(spiel(1, 24));
    }
    {
        // Games without registered players are not a protocol to restore.
        ProtokollDatenbank db(verzeichnis.path());
        QCOMPARE(db.oeffnen(), Zustand::OhneSpieler);
        QSqlQuery(db.verbindung())
            .exec(QStringLiteral("INSERT INTO Spieler (MgldNr, Name, Mitglied, Preisskat)VALUES "
                                 "(100, 'Anna', 1, 1)"));
    }
    ProtokollDatenbank db(verzeichnis.path());
    QCOMPARE(db.oeffnen(), Zustand::Gespeichert);
    QCOMPARE(db.spiele(), QVector<SpielEintrag>{spiel(1, 24)});
}

void TstProtokollDatenbank::fremdeDateienBleibenUnberuehrt_data()
{
    QTest::addColumn<QStringList>("statements");
    QTest::addColumn<QByteArray>("inhalt");
    QTest::newRow("kein SQLite") << QStringList() << QByteArray("Das ist keine Datenbank.\n");
    QTest::newRow("Nullbytes") << QStringList() << QByteArray(4096, '\0').prepend("SQLite");
    QTest::newRow("Spalten fehlen")
        << QStringList{QStringLiteral("create table SpielListe (Zeile int, Spiel int)")}
        << QByteArray();
    QTest::newRow("Spieler anders")
        << QStringList{QString::fromLatin1(Sql::CreateSpielListe),
                       QStringLiteral("create table Spieler (Nr int, Vorname text)")}
        << QByteArray();
    QTest::newRow("Settings anders")
        << QStringList{QStringLiteral("create table Settings (Schluessel text, Wert text)")}
        << QByteArray();
}

void TstProtokollDatenbank::fremdeDateienBleibenUnberuehrt()
{
    QFETCH(QStringList, statements);
    QFETCH(QByteArray, inhalt);
    const QString datei = verzeichnis.filePath(QStringLiteral("kartulo.db"));
    if (!statements.isEmpty()) {
        auto fremd = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("fremd"));
        fremd.setDatabaseName(datei);
        QVERIFY(fremd.open());
        for (const QString &statement : statements)
            QVERIFY(QSqlQuery(fremd).exec(statement));
        fremd.close();
        fremd = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("fremd"));
    } else {
        QFile f(datei);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(inhalt);
    }
    const QByteArray vorher = lesen(datei);

    ProtokollDatenbank db(verzeichnis.path());
    QCOMPARE(db.oeffnen(), Zustand::Fremd);
    QVERIFY(!db.fehler().isEmpty());
    // Nothing written afterwards reaches the file.
    db.einfuegen(spiel(1, 24));
    db.kopfSchreiben(ListenKopf());
    QCOMPARE(db.spiele().size(), 0);
    QCOMPARE(lesen(datei), vorher);
}

void TstProtokollDatenbank::verzeichnisFehlt()
{
    ProtokollDatenbank db(verzeichnis.filePath(QStringLiteral("gibt/es/nicht")));
    QCOMPARE(db.oeffnen(), Zustand::Unbenutzbar);
    QVERIFY(!db.fehler().isEmpty());
}

void TstProtokollDatenbank::entfernenNummeriertNeu_data()
{
    QTest::addColumn<int>("anzahl");
    QTest::addColumn<int>("zeile");
    QTest::newRow("3 von 7") << 7 << 3;
    QTest::newRow("erstes von 5") << 5 << 1;
    QTest::newRow("letztes von 5") << 5 << 5;
    QTest::newRow("einziges") << 1 << 1;
}

void TstProtokollDatenbank::entfernenNummeriertNeu()
{
    QFETCH(int, anzahl);
    QFETCH(int, zeile);
    ProtokollDatenbank db(verzeichnis.path());
    QCOMPARE(db.oeffnen(), Zustand::Neu);
    for (int z = 1; z <= anzahl; ++z)
        db.einfuegen(spiel(z, 10 * z));

    db.entfernen(zeile);

    const QVector<SpielEintrag> rest = db.spiele();
    QCOMPARE(rest.size(), anzahl - 1);
    QCOMPARE(db.anzahlEintraege(), anzahl - 1);
    QCOMPARE(db.letzteZeile(), anzahl - 1);
    for (int i = 0; i < rest.size(); ++i) {
        const int alteZeile = i + 1 < zeile ? i + 1 : i + 2;
        QCOMPARE(rest.at(i), spiel(i + 1, 10 * alteZeile));
    }
    QVERIFY(!db.spiel(anzahl));
}

void TstProtokollDatenbank::kopfMitApostroph()
{
    ProtokollDatenbank db(verzeichnis.path());
    QCOMPARE(db.oeffnen(), Zustand::Neu);
    ListenKopf kopf;
    kopf.tischNr = 7;
    kopf.serie = 2;
    kopf.anzahlSpiele = 36;
    kopf.modus = 2;
    kopf.blPunkte = 500;
    kopf.datum = QDate(2026, 11, 22);
    kopf.gruppe = QStringLiteral("Herr's Runde");
    db.kopfSchreiben(kopf);
    db.kopfSchreiben(kopf);

    QSqlQuery query(db.verbindung());
    QVERIFY(query.exec(QStringLiteral("SELECT COUNT(*), Zeile, Datum FROM Settings")));
    QVERIFY(query.next());
    QCOMPARE(query.value(0).toInt(), 1);
    QCOMPARE(query.value(1).toInt(), 1);
    QCOMPARE(query.value(2).toString(), QStringLiteral("2026-11-22"));

    const auto gelesen = db.kopfLesen();
    QVERIFY(gelesen);
    QCOMPARE(gelesen->tischNr, 7);
    QCOMPARE(gelesen->serie, 2);
    QCOMPARE(gelesen->anzahlSpiele, 36);
    QCOMPARE(gelesen->modus, 2);
    QCOMPARE(gelesen->blPunkte, 500);
    QCOMPARE(gelesen->datum, QDate(2026, 11, 22));
    QCOMPARE(gelesen->gruppe, QStringLiteral("Herr's Runde"));
}

void TstProtokollDatenbank::zuruecksetzen()
{
    {
        ProtokollDatenbank db(verzeichnis.path());
        QCOMPARE(db.oeffnen(), Zustand::Neu);
        db.einfuegen(spiel(1, 24));
        db.kopfSchreiben(ListenKopf());
        db.zuruecksetzen();
        QVERIFY(!QSqlDatabase::contains(ProtokollDatenbank::verbindungsName()));
        QCOMPARE(db.oeffnen(), Zustand::Neu);
        QCOMPARE(tabellen(db), QStringList({"Settings", "SpielListe", "Spieler", "Teilnehmer"}));
        QCOMPARE(db.anzahlEintraege(), 0);
        QVERIFY(!db.kopfLesen());
    }
    QVERIFY(!QSqlDatabase::contains(ProtokollDatenbank::verbindungsName()));
}

KARTULO_TEST_MAIN(TstProtokollDatenbank)
#include "tst_protokolldatenbank.moc"
