#include "helpers/testprotokoll.h"

#include "core/db/statements.h"
#include "core/game/spielwert.h"
#include "helpers/testumgebung.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QtTest>

namespace TestProtokoll {

namespace {

template <typename Arbeit> void mitVerbindung(Arbeit arbeit)
{
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("testhilfe"));
        QDir().mkpath(TestUmgebung::datenVerzeichnis());
        db.setDatabaseName(TestUmgebung::datenbankDatei());
        if (db.open())
            arbeit(db);
    }
    QSqlDatabase::removeDatabase(QStringLiteral("testhilfe"));
}

} // namespace

bool sql(const QStringList &statements)
{
    bool ok = true;
    mitVerbindung([&](QSqlDatabase &db) {
        for (const QString &statement : statements) {
            QSqlQuery query(db);
            if (!query.exec(statement)) {
                qWarning("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
                ok = false;
                return;
            }
        }
    });
    return ok;
}

QStringList lesen(const QString &abfrage)
{
    QStringList werte;
    mitVerbindung([&](QSqlDatabase &db) {
        QSqlQuery query(db);
        query.exec(abfrage);
        while (query.next())
            werte << query.value(0).toString();
    });
    return werte;
}

QList<int> spalte(const QString &tabelle, const QString &name)
{
    QList<int> werte;
    for (const QString &wert : lesen(QStringLiteral("SELECT %1 FROM %2").arg(name, tabelle)))
        werte << wert.toInt();
    return werte;
}

QVector<SpielEintrag> gespeichert()
{
    QVector<SpielEintrag> spiele;
    mitVerbindung([&](QSqlDatabase &db) {
        QSqlQuery query(QStringLiteral("SELECT * FROM SpielListe ORDER BY rowid"), db);
        while (query.next())
            spiele << SpielEintrag::ausRecord(query.record());
    });
    return spiele;
}

int zeilen(const QString &tabelle)
{
    return spalte(tabelle, QStringLiteral("COUNT(*)")).value(0, -1);
}

SpielEintrag zeile(const QString &spalten)
{
    SpielEintrag e;
    for (const QString &teil : spalten.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        e.setze(static_cast<SpielEintrag::Spalte>(
                    SpielEintrag::spaltenNamen().indexOf(teil.section('=', 0, 0))),
                teil.section('=', 1).toInt());
    return e;
}

Sperre::Sperre(Art art)
{
    auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("sperre"));
    db.setDatabaseName(TestUmgebung::datenbankDatei());
    QSqlQuery query(db);
    m_gehalten = db.open() &&
                 query.exec(art == Lesen       ? QStringLiteral("BEGIN")
                            : art == Schreiben ? QStringLiteral("BEGIN IMMEDIATE")
                                               : QStringLiteral("BEGIN EXCLUSIVE")) &&
                 (art != Lesen || query.exec(QStringLiteral("SELECT count(*) FROM Spieler")));
}

Sperre::~Sperre()
{
    {
        QSqlDatabase db = QSqlDatabase::database(QStringLiteral("sperre"));
        QSqlQuery(db).exec(QStringLiteral("ROLLBACK"));
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("sperre"));
}

bool anlegen(int spieler, int anzahlSpiele, int modus, int tischNr)
{
    QStringList statements{Sql::CreateSpielListe, Sql::CreateTeilnehmer, Sql::CreateSettings,
                           Sql::CreateSpieler};
    const QStringList namen{"Anna", "Bernd", "Clara", "Dora"};
    for (int i = 0; i < spieler; ++i)
        for (const char *zeile :
             {"Spieler VALUES (%1, '%2', 1, 1)", "Teilnehmer VALUES (%1, '%2', 'Ja', 'Ja')"})
            statements << "INSERT INTO " + QString::fromLatin1(zeile).arg(100 + i).arg(namen.at(i));
    statements << QString::asprintf(
        "INSERT INTO Settings VALUES (1, %d, 1, %d, %d, 0, '2026-11-20', '')", tischNr,
        anzahlSpiele, modus);
    return sql(statements);
}

QVector<SpielEintrag> abend(int anzahl, int spieler)
{
    QVector<SpielEintrag> spiele;
    quint32 zufall = 20240503;
    auto naechste = [&zufall](int grenze) {
        zufall = zufall * 1103515245u + 12345u;
        return static_cast<int>((zufall >> 16) % static_cast<quint32>(grenze));
    };
    for (int i = 0; i < anzahl; ++i) {
        SpielEingabe e;
        Spielangaben &a = e.angaben;
        // One round in ten is passed in; the others are suit, Grand and Null games.
        a.art = static_cast<Spielart>(naechste(10) == 0 ? 6 : naechste(6));
        a.matadore = naechste(2) ? Matadore::Mit : Matadore::Ohne;
        a.anzahl = 1 + naechste(4);
        a.hand = naechste(3) == 0;
        a.offen = naechste(5) == 0;
        a.schneider = naechste(3) == 0;
        a.schneiderAngesagt = a.schneider && a.hand && naechste(2);
        a.gewonnen = naechste(4) != 0;
        // At a table of four the dealer never declares.
        a.sitz = (i + 1 + naechste(spieler - 1)) % spieler;
        if (a.art != Spielart::Eingepasst)
            e.reizText = QStringLiteral("18");
        SpielEintrag spiel = Spielwert::berechne(e).eintrag;
        spiel.setze(SpielEintrag::Zeile, i + 1);
        spiele << spiel;
    }
    return spiele;
}

} // namespace TestProtokoll
