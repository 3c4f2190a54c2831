#include "db/protokolldatenbank.h"

#include "db/statements.h"
#include "sheets/xmlprotokoll.h"

#include <QDebug>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace {

struct TabellenForm
{
    const char *name;
    const char *create;
    QStringList spalten;
};

const QVector<TabellenForm> &tabellen()
{
    static const QStringList spieler{QStringLiteral("MgldNr"), QStringLiteral("Name"),
                                     QStringLiteral("Mitglied"), QStringLiteral("Preisskat")};
    static const QVector<TabellenForm> formen{
        {"SpielListe", Sql::CreateSpielListe, SpielEintrag::spaltenNamen()},
        {"Teilnehmer", Sql::CreateTeilnehmer, spieler},
        {"Settings",
         Sql::CreateSettings,
         {QStringLiteral("Zeile"), QStringLiteral("TischNr"), QStringLiteral("Serie"),
          QStringLiteral("AnzahlSpiele"), QStringLiteral("Modus"), QStringLiteral("BlPunkte"),
          QStringLiteral("Datum"), QStringLiteral("Gruppe")}},
        {"Spieler", Sql::CreateSpieler, spieler}};
    return formen;
}

QStringList feldNamen(const QSqlRecord &record)
{
    QStringList namen;
    for (int i = 0; i < record.count(); ++i)
        namen << record.fieldName(i);
    return namen;
}

} // namespace

ProtokollDatenbank::ProtokollDatenbank(const QString &datenVerzeichnis)
    : m_datenVerzeichnis(datenVerzeichnis)
{
}

ProtokollDatenbank::~ProtokollDatenbank()
{
    schliessen();
}

QString ProtokollDatenbank::dateiName() const
{
    return QStringLiteral("%1/%2.db").arg(m_datenVerzeichnis, datenbankName());
}

bool ProtokollDatenbank::ausfuehren(const QString &statement) const
{
    QSqlQuery query(m_db);
    return query.exec(statement);
}

QString ProtokollDatenbank::schemaFehler() const
{
    QSqlQuery probe(m_db);
    if (!probe.exec(QStringLiteral("SELECT count(*) FROM sqlite_master")))
        return QStringLiteral("Die Datei ist keine SQLite-Datenbank (%1).")
            .arg(probe.lastError().text());
    for (const TabellenForm &form : tabellen()) {
        const QStringList vorhanden = feldNamen(m_db.record(QLatin1String(form.name)));
        if (!vorhanden.isEmpty() && vorhanden != form.spalten)
            return QStringLiteral("Die Tabelle %1 hat die Spalten %2 statt %3.")
                .arg(QLatin1String(form.name), vorhanden.join(QLatin1String(", ")),
                     form.spalten.join(QLatin1String(", ")));
    }
    return QString();
}

ProtokollDatenbank::Zustand ProtokollDatenbank::oeffnen()
{
    m_fehler.clear();
    m_db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), verbindungsName());
    m_db.setDatabaseName(dateiName());
    if (!m_db.isValid() || !m_db.open()) {
        m_fehler = m_db.lastError().text();
        schliessen();
        return Zustand::Unbenutzbar;
    }
    m_fehler = schemaFehler();
    if (!m_fehler.isEmpty()) {
        schliessen();
        return Zustand::Fremd;
    }
    if (m_db.record(QStringLiteral("SpielListe")).isEmpty()) {
        for (const TabellenForm &form : tabellen())
            ausfuehren(QLatin1String(form.create));
        return Zustand::Neu;
    }
    QSqlQuery query(m_db);
    query.exec(QStringLiteral("SELECT * FROM Spieler"));
    if (query.isActive() && !query.next())
        return Zustand::OhneSpieler;
    return Zustand::Gespeichert;
}

void ProtokollDatenbank::schliessen()
{
    const bool hatteVerbindung = m_db.isValid();
    m_db.close();
    m_db = QSqlDatabase();
    if (hatteVerbindung)
        QSqlDatabase::removeDatabase(verbindungsName());
}

void ProtokollDatenbank::zuruecksetzen()
{
    ausfuehren(QStringLiteral("DROP TABLE SpielListe"));
    ausfuehren(QStringLiteral("DROP TABLE Settings"));
    ausfuehren(QStringLiteral("DROP TABLE Teilnehmer"));
    ausfuehren(QStringLiteral("DROP TABLE Spieler"));
    schliessen();
}

int ProtokollDatenbank::letzteZeile() const
{
    QSqlQuery query(m_db);
    query.exec(QStringLiteral("SELECT Zeile FROM SpielListe"));
    if (!query.last())
        return 0;
    return query.value(0).toInt();
}

int ProtokollDatenbank::anzahlEintraege() const
{
    QSqlQuery query(m_db);
    query.exec(QStringLiteral("SELECT COUNT(Zeile) FROM SpielListe"));
    if (!query.first())
        return 0;
    return query.value(0).toInt();
}

QVector<SpielEintrag> ProtokollDatenbank::spiele() const
{
    QVector<SpielEintrag> liste;
    QSqlQuery query(m_db);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("select * from SpielListe"));
    while (query.next())
        liste.append(SpielEintrag::ausRecord(query.record()));
    return liste;
}

std::optional<SpielEintrag> ProtokollDatenbank::spiel(int zeile) const
{
    QSqlQuery query(m_db);
    query.exec(QStringLiteral("SELECT * FROM SpielListe WHERE Zeile=%1").arg(zeile));
    if (!query.first())
        return std::nullopt;
    return SpielEintrag::ausRecord(query.record());
}

void ProtokollDatenbank::einfuegen(const SpielEintrag &eintrag)
{
    ausfuehren(eintrag.insertStatement());
}

void ProtokollDatenbank::aendern(const SpielEintrag &eintrag)
{
    ausfuehren(eintrag.updateStatement());
}

void ProtokollDatenbank::entfernen(int zeile)
{
    const int letzte = letzteZeile();
    ausfuehren(QStringLiteral("DELETE FROM SpielListe WHERE Zeile=%1").arg(zeile));
    for (int z = zeile + 1; z <= letzte; ++z) {
        if (!ausfuehren(
                QStringLiteral("UPDATE SpielListe SET Zeile=%1 WHERE Zeile=%2").arg(z - 1).arg(z)))
            qDebug() << "Fehler Spiel entfernen" << z - 1 << z;
    }
}

std::optional<ListenKopf> ProtokollDatenbank::kopfLesen() const
{
    QSqlQuery query(m_db);
    query.exec(QStringLiteral("SELECT * FROM Settings"));
    if (!query.isActive() || !query.isSelect() || !query.first())
        return std::nullopt;
    const QSqlRecord record = query.record();
    ListenKopf kopf;
    kopf.tischNr = record.value(QStringLiteral("TischNr")).toInt();
    kopf.serie = record.value(QStringLiteral("Serie")).toInt();
    kopf.anzahlSpiele = record.value(QStringLiteral("AnzahlSpiele")).toInt();
    kopf.blPunkte = record.value(QStringLiteral("BlPunkte")).toInt();
    kopf.datum = QDate::fromString(record.value(QStringLiteral("Datum")).toString(), Qt::ISODate);
    kopf.modus = record.value(4).toInt();
    kopf.gruppe = record.value(QStringLiteral("Gruppe")).toString();
    return kopf;
}

void ProtokollDatenbank::kopfSchreiben(const ListenKopf &kopf)
{
    ausfuehren(QStringLiteral("DELETE FROM Settings"));
    ausfuehren(
        QStringLiteral("INSERT INTO Settings (Zeile, TischNr, Serie, AnzahlSpiele, Modus, "
                       "BlPunkte, Datum, Gruppe) VALUES (1, %1, %2, %3, %4, %5, '%6', '%7')")
            .arg(kopf.tischNr)
            .arg(kopf.serie)
            .arg(kopf.anzahlSpiele)
            .arg(kopf.modus)
            .arg(kopf.blPunkte)
            .arg(kopf.datum.toString(QStringLiteral("yyyy-MM-dd")), Sql::quoted(kopf.gruppe)));
}

QStringList ProtokollDatenbank::spielerNamen() const
{
    QStringList namen;
    QSqlQuery query(m_db);
    query.exec(QStringLiteral("SELECT * FROM Spieler"));
    while (query.next())
        namen << query.value(QStringLiteral("Name")).toString();
    return namen;
}

void ProtokollDatenbank::spielerLeeren()
{
    ausfuehren(QStringLiteral("DELETE FROM Spieler"));
}

void ProtokollDatenbank::spielerEintragen(int mgldNr, const QString &name, bool mitglied,
                                          bool preisskat)
{
    QSqlQuery query(m_db);
    query.prepare(QStringLiteral(
        "INSERT INTO Spieler (MgldNr, Name, Mitglied, Preisskat)VALUES (?, ?, ?, ?)"));
    query.addBindValue(mgldNr);
    query.addBindValue(name);
    query.addBindValue(mitglied);
    query.addBindValue(preisskat);
    query.exec();
}

int ProtokollDatenbank::spielerHinzufuegen(int mgldNr, const QString &name, bool mitglied,
                                           bool preisskat)
{
    QSqlQuery query(m_db);
    query.exec(QStringLiteral("SELECT * FROM Spieler WHERE Name='%1'").arg(Sql::quoted(name)));
    if (!query.isActive())
        return 0;
    if (query.first())
        return query.value(QStringLiteral("MgldNr")).toInt();
    int nummer = mgldNr == 0 ? 1 : mgldNr;
    while (query.exec(QStringLiteral("SELECT * FROM Spieler WHERE MgldNr == %1").arg(nummer)) &&
           query.first())
        ++nummer;
    spielerEintragen(nummer, name, mitglied, preisskat);
    return nummer;
}

void ProtokollDatenbank::spielListeLeeren()
{
    ausfuehren(QStringLiteral("DELETE FROM SpielListe"));
}

void ProtokollDatenbank::kopfLeeren()
{
    ausfuehren(QStringLiteral("DELETE FROM Settings"));
}

void ProtokollDatenbank::teilnehmerLeeren()
{
    ausfuehren(QStringLiteral("DELETE FROM Teilnehmer"));
}

bool ProtokollDatenbank::protokollErsetzen(const XmlDaten &daten, QString *fehler)
{
    const auto abbrechen = [&](const QSqlError &sqlFehler) {
        m_db.rollback();
        if (fehler)
            *fehler = sqlFehler.text();
        return false;
    };
    if (!m_db.transaction()) {
        if (fehler)
            *fehler = m_db.lastError().text();
        return false;
    }
    {
        QSqlQuery query(m_db);
        for (const QString &statement :
             {QStringLiteral("DELETE FROM SpielListe"), QStringLiteral("DELETE FROM Settings"),
              QStringLiteral("DELETE FROM Teilnehmer"),
              QStringLiteral("INSERT INTO Settings (Zeile, TischNr, Serie, AnzahlSpiele, Modus, "
                             "BlPunkte, Datum, Gruppe) VALUES (1, %1, %2, %3, %4, %5, '%6', '%7')")
                  .arg(daten.tischNr)
                  .arg(daten.serie)
                  .arg(daten.spielAnzahl)
                  .arg(daten.modus)
                  .arg(0)
                  .arg(daten.datum.toString(QStringLiteral("yyyy-MM-dd")),
                       Sql::quoted(daten.gruppe))}) {
            if (!query.exec(statement))
                return abbrechen(query.lastError());
        }
        query.prepare(QStringLiteral(
            "INSERT INTO Teilnehmer (MgldNr, Name, Mitglied, Preisskat)VALUES (?, ?, ?, ?)"));
        for (const XmlSpieler &spieler : daten.spieler) {
            query.addBindValue(spieler.mgldNr);
            // Name is NOT NULL, and a null QString would be bound as NULL.
            query.addBindValue(spieler.name.isNull() ? QLatin1String("") : spieler.name);
            query.addBindValue(spieler.mitglied);
            query.addBindValue(spieler.preisskat);
            if (!query.exec())
                return abbrechen(query.lastError());
        }
        for (const SpielEintrag &spiel : daten.spiele) {
            if (!query.exec(spiel.insertStatement()))
                return abbrechen(query.lastError());
        }
    }
    if (!m_db.commit())
        return abbrechen(m_db.lastError());
    return true;
}

std::optional<SpielerDatensatz> ProtokollDatenbank::spielerNachName(const QString &name) const
{
    QSqlQuery query(m_db);
    query.exec(QStringLiteral("SELECT * FROM Spieler WHERE Name='%1'").arg(Sql::quoted(name)));
    if (!query.first())
        return std::nullopt;
    SpielerDatensatz spieler;
    spieler.mgldNr = query.value(QStringLiteral("MgldNr")).toInt();
    spieler.name = query.value(QStringLiteral("Name")).toString();
    spieler.mitglied = query.value(QStringLiteral("Mitglied")).toBool();
    spieler.preisskat = query.value(QStringLiteral("Preisskat")).toBool();
    return spieler;
}
