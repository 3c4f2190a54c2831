#include "helpers/testprotokoll.h"

#include "db/statements.h"
#include "helpers/testumgebung.h"

#include <QAbstractButton>
#include <QDir>
#include <QLineEdit>
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

void klick(QWidget *fenster, const char *name)
{
    auto *knopf = fenster->findChild<QAbstractButton *>(QLatin1String(name));
    if (!knopf) {
        qWarning("kein Knopf %s", name);
        return;
    }
    knopf->click();
}

void eingeben(QWidget *fenster, const Spiel &spiel)
{
    klick(fenster, spiel.typ);
    klick(fenster, "tbMit");
    klick(fenster, "tb1");
    klick(fenster, spiel.gewonnen ? "tbGewonnen" : "tbVerloren");
    if (spiel.sitz >= 0)
        klick(fenster, qPrintable(QStringLiteral("tbSpieler%1").arg(spiel.sitz + 1)));
    fenster->findChild<QLineEdit *>(QStringLiteral("leReizwert"))->setText(spiel.reizung);
    klick(fenster, "pbFertig");
    klick(fenster, "pbInListeEintragen");
}

} // namespace TestProtokoll
