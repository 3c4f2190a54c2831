// The statement texts must stay exactly as every existing kartulo.db was
// created with them, and quoted text must survive single quotes.

#include "db/statements.h"
#include "helpers/testumgebung.h"

#include <QSqlDatabase>
#include <QSqlQuery>

class TstStatements : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void texte_data();
    void texte();
    void einfuegenOhneLeerzeichenVorValues();
    void quotedHaeltApostrophe_data();
    void quotedHaeltApostrophe();
};

void TstStatements::initTestCase()
{
    auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("t"));
    db.setDatabaseName(QStringLiteral(":memory:"));
    QVERIFY(db.open());
}

void TstStatements::texte_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("erwartet");
    QTest::newRow("SpielListe")
        << QString::fromLatin1(Sql::CreateSpielListe)
        << QStringLiteral("create table SpielListe (Zeile int, Spiel int, Mit int, Ohne int, Hand "
                          "boolean, Schneider boolean,AngSchneider boolean, Schwarz boolean, "
                          "AngSchwarz boolean, Offen boolean, Gewonnen int, Verloren int, Spieler1 "
                          "int, Spieler2 int,Spieler3 int, Spieler4 int, Eingepasst boolean, "
                          "Reizung int)");
    QTest::newRow("Teilnehmer") << QString::fromLatin1(Sql::CreateTeilnehmer)
                                << QStringLiteral("CREATE TABLE Teilnehmer (MgldNr int NOT NULL, "
                                                  "Name varchar(40) NOT NULL, Mitglied boolean, "
                                                  "Preisskat boolean)");
    QTest::newRow("Settings") << QString::fromLatin1(Sql::CreateSettings)
                              << QStringLiteral("CREATE TABLE Settings (Zeile int, TischNr int, "
                                                "Serie int, AnzahlSpiele int, Modus int, BlPunkte "
                                                "int, Datum DATE, Gruppe varchar(20))");
    QTest::newRow("Spieler") << QString::fromLatin1(Sql::CreateSpieler)
                             << QStringLiteral("CREATE TABLE Spieler (MgldNr int NOT NULL, Name "
                                               "varchar(40) NOT NULL, Mitglied boolean, Preisskat "
                                               "boolean)");
    QTest::newRow("insert prefix")
        << QString::fromLatin1(Sql::InsertSpielListePrefix)
        << QStringLiteral("insert into SpielListe (Zeile, Spiel, Mit, Ohne, Hand, Schneider, "
                          "AngSchneider, Schwarz, AngSchwarz, Offen, Gewonnen, Verloren, Spieler1, "
                          "Spieler2, Spieler3, Spieler4, Eingepasst, Reizung)");
}

void TstStatements::texte()
{
    QFETCH(QString, statement);
    QFETCH(QString, erwartet);
    QCOMPARE(statement, erwartet);
}

void TstStatements::einfuegenOhneLeerzeichenVorValues()
{
    // SQLite takes ")VALUES" as it is; the text stays without the blank.
    QSqlQuery query(QSqlDatabase::database(QStringLiteral("t")));
    QVERIFY(query.exec(QString::fromLatin1(Sql::CreateSpielListe)));
    const QString insert = QLatin1String(Sql::InsertSpielListePrefix) +
                           QStringLiteral("VALUES (1, 12, 2, 0, 1, 0, 0, 0, 0, 0, 48, 0, 0, 48, "
                                          "0, 0, 0, 18)");
    QVERIFY(insert.contains(QStringLiteral("Reizung)VALUES (")));
    QVERIFY2(query.exec(insert), qPrintable(insert));
    QVERIFY(query.exec(QStringLiteral("SELECT Spieler2, Reizung FROM SpielListe")));
    QVERIFY(query.next());
    QCOMPARE(query.value(0).toInt(), 48);
    QCOMPARE(query.value(1).toInt(), 18);
}

void TstStatements::quotedHaeltApostrophe_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("ohne") << QStringLiteral("Anna Huber");
    QTest::newRow("apostroph") << QStringLiteral("O'Brien");
    QTest::newRow("zwei") << QStringLiteral("'s Maxl'");
    QTest::newRow("umlaut") << QStringLiteral("Jürgen Größ");
}

void TstStatements::quotedHaeltApostrophe()
{
    QFETCH(QString, text);
    auto db = QSqlDatabase::database(QStringLiteral("t"));
    QSqlQuery query(db);
    QVERIFY(query.exec(QStringLiteral("SELECT '%1'").arg(Sql::quoted(text))));
    QVERIFY(query.next());
    QCOMPARE(query.value(0).toString(), text);
}

KARTULO_TEST_MAIN(TstStatements)
#include "tst_statements.moc"
