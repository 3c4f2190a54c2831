#include "helpers/testprotokoll.h"

#include "core/db/statements.h"
#include "helpers/testumgebung.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
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

int zeilen(const QString &tabelle)
{
    int anzahl = -1;
    mitVerbindung([&](QSqlDatabase &db) {
        QSqlQuery query(db);
        if (query.exec(QStringLiteral("SELECT COUNT(*) FROM %1").arg(tabelle)) && query.next())
            anzahl = query.value(0).toInt();
    });
    return anzahl;
}

QList<int> spalte(const QString &tabelle, const QString &name)
{
    QList<int> werte;
    mitVerbindung([&](QSqlDatabase &db) {
        QSqlQuery query(db);
        query.exec(QStringLiteral("SELECT %1 FROM %2").arg(name, tabelle));
        while (query.next())
            werte << query.value(0).toInt();
    });
    return werte;
}

bool anlegen(int spieler, int anzahlSpiele, int modus, int tischNr)
{
    QStringList statements{
        QString::fromLatin1(Sql::CreateSpielListe), QString::fromLatin1(Sql::CreateTeilnehmer),
        QString::fromLatin1(Sql::CreateSettings), QString::fromLatin1(Sql::CreateSpieler)};
    const QStringList namen{"Anna", "Bernd", "Clara", "Dora"};
    for (int i = 0; i < spieler; ++i) {
        statements << QStringLiteral("INSERT INTO Spieler VALUES (%1, '%2', 1, 1)")
                          .arg(100 + i)
                          .arg(namen.at(i));
        statements << QStringLiteral("INSERT INTO Teilnehmer VALUES (%1, '%2', 'Ja', 'Ja')")
                          .arg(100 + i)
                          .arg(namen.at(i));
    }
    statements << QStringLiteral(
                      "INSERT INTO Settings VALUES (1, %1, 1, %2, %3, 0, '2026-11-20', '')")
                      .arg(tischNr)
                      .arg(anzahlSpiele)
                      .arg(modus);
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
    static const int reizwerte[] = {18, 20, 22, 23, 24, 27, 30, 33, 35, 36, 40, 44, 46, 48, 50};
    static const int nullWerte[] = {23, 35, 46, 59};
    for (int i = 0; i < anzahl; ++i) {
        SpielEintrag e;
        e.setze(SpielEintrag::Zeile, i + 1);
        if (naechste(10) == 0) {
            e.setze(SpielEintrag::Eingepasst, true);
            spiele << e;
            continue;
        }
        int sitz = naechste(spieler);
        if (spieler == 4 && sitz == i % spieler)
            sitz = (sitz + 1) % 4;
        int wert = 0;
        const int art = naechste(10);
        if (art < 2) {
            const int n = naechste(4);
            e.setze(SpielEintrag::Spiel, 23);
            e.setze(SpielEintrag::Hand, n == 1 || n == 3);
            e.setze(SpielEintrag::Offen, n >= 2);
            wert = nullWerte[n];
        } else {
            const int grund = art < 4 ? 24 : 9 + naechste(4);
            const int spitzen = 1 + naechste(4);
            e.setze(naechste(2) ? SpielEintrag::Mit : SpielEintrag::Ohne, spitzen);
            e.setze(SpielEintrag::Spiel, grund);
            const bool hand = naechste(3) == 0;
            const int extra = naechste(6);
            e.setze(SpielEintrag::Hand, hand);
            e.setze(SpielEintrag::Schneider, extra >= 3);
            e.setze(SpielEintrag::AngSchneider, hand && extra >= 4);
            e.setze(SpielEintrag::Schwarz, extra >= 4);
            e.setze(SpielEintrag::AngSchwarz, hand && extra == 5);
            e.setze(SpielEintrag::Offen, hand && extra == 5 && naechste(2));
            // Each of the six flags from Hand to Offen raises the multiplier by one.
            int stufe = spitzen + 1;
            for (int spalte = SpielEintrag::Hand; spalte <= SpielEintrag::Offen; ++spalte)
                stufe += e.wert(spalte);
            wert = grund * stufe;
        }
        const bool verloren = naechste(4) == 0;
        e.setze(verloren ? SpielEintrag::Verloren : SpielEintrag::Gewonnen,
                verloren ? 2 * wert : wert);
        e.setze(static_cast<SpielEintrag::Spalte>(SpielEintrag::Spieler1 + sitz),
                verloren ? -2 * wert : wert);
        int reizung = 18;
        for (int r : reizwerte)
            reizung = r <= wert && naechste(3) != 0 ? r : reizung;
        e.setze(SpielEintrag::Reizung, reizung);
        spiele << e;
    }
    return spiele;
}

} // namespace TestProtokoll
