#include "core/db/protokolldatenbank.h"

#include "core/db/statements.h"

#include <QDebug>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>

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

const QString SpielerEinfuegen =
    QStringLiteral("INSERT INTO Spieler (MgldNr, Name, Mitglied, Preisskat)VALUES (?, ?, ?, ?)");

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

bool ProtokollDatenbank::ausfuehren(const QString &statement)
{
    QSqlQuery query(m_db);
    if (query.exec(statement))
        return true;
    m_fehler = query.lastError().text();
    return false;
}

QString ProtokollDatenbank::schemaFehler() const
{
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
    // Another program holding the file is waited for a second, not the driver's five
    // seconds per statement, so a scorer is told at once instead of a frozen window.
    m_db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=1000"));
    if (!m_db.isValid() || !m_db.open()) {
        m_fehler = m_db.lastError().text();
        schliessen();
        return Zustand::Unbenutzbar;
    }
    {
        QSqlQuery probe(m_db);
        if (!probe.exec(QStringLiteral("SELECT count(*) FROM sqlite_master"))) {
            // SQLITE_BUSY and SQLITE_LOCKED: a file that is ours, held by another program.
            const QSqlError fehler = probe.lastError();
            const bool besetzt = fehler.nativeErrorCode() == QLatin1String("5") ||
                                 fehler.nativeErrorCode() == QLatin1String("6");
            m_fehler = (besetzt ? QStringLiteral("Die Datei wird gerade von einem anderen "
                                                 "Programm benutzt (%1).")
                                : QStringLiteral("Die Datei ist keine SQLite-Datenbank (%1)."))
                           .arg(fehler.text());
            probe.finish();
            schliessen();
            return besetzt ? Zustand::Unbenutzbar : Zustand::Fremd;
        }
    }
    m_fehler = schemaFehler();
    if (!m_fehler.isEmpty()) {
        schliessen();
        return Zustand::Fremd;
    }
    // All missing tables in one transaction: a crash while they are made must not
    // leave a file with some of them, which would open but never take a list.
    const bool neu = m_db.record(QStringLiteral("SpielListe")).isEmpty();
    const bool angelegt = transaktion([this] {
        return std::all_of(tabellen().cbegin(), tabellen().cend(), [this](const TabellenForm &f) {
            return !m_db.record(QLatin1String(f.name)).isEmpty() ||
                   ausfuehren(QLatin1String(f.create));
        });
    });
    if (!angelegt) {
        schliessen();
        return Zustand::Unbenutzbar;
    }
    if (neu)
        return Zustand::Neu;
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
    for (const char *tabelle : {"SpielListe", "Settings", "Teilnehmer", "Spieler"})
        ausfuehren(QStringLiteral("DROP TABLE %1").arg(QLatin1String(tabelle)));
    schliessen();
}

bool ProtokollDatenbank::transaktion(const std::function<bool()> &arbeit)
{
    if (!m_db.transaction()) {
        m_fehler = m_db.lastError().text();
        return false;
    }
    if (!arbeit()) {
        m_db.rollback();
        return false;
    }
    if (m_db.commit())
        return true;
    m_fehler = m_db.lastError().text();
    m_db.rollback();
    return false;
}

QVector<SpielEintrag> ProtokollDatenbank::spiele() const
{
    QVector<SpielEintrag> liste;
    QSqlQuery query(m_db);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("select * from SpielListe"));
    while (query.next())
        liste.append(SpielEintrag::ausRecord(query.record()));
    // By number, whatever order a foreign hand left in the file.
    std::stable_sort(liste.begin(), liste.end(), [](const SpielEintrag &a, const SpielEintrag &b) {
        return a[SpielEintrag::Zeile] < b[SpielEintrag::Zeile];
    });
    return liste;
}

bool ProtokollDatenbank::einfuegen(const SpielEintrag &eintrag)
{
    return ausfuehren(Sql::spielEinfuegen(eintrag));
}

bool ProtokollDatenbank::aendern(const SpielEintrag &eintrag)
{
    QString text = QStringLiteral(
        "UPDATE SpielListe SET Spiel = %1, Mit = %2, Ohne = %3, Hand = %4, Schneider = %5, "
        "AngSchneider = %6, Schwarz = %7, AngSchwarz = %8, Offen = %9, Gewonnen = %10, Verloren = "
        "%11, Spieler1 = %12, Spieler2 = %13, Spieler3 = %14, Spieler4 = %15, Eingepasst = %16, "
        "Reizung = %17 WHERE Zeile = %18");
    for (int spalte = SpielEintrag::Spiel; spalte < SpielEintrag::AnzahlSpalten; ++spalte)
        text = text.arg(eintrag.wert(spalte));
    return ausfuehren(text.arg(eintrag[SpielEintrag::Zeile]));
}

bool ProtokollDatenbank::entfernen(int zeile, int letzte)
{
    if (!ausfuehren(QStringLiteral("DELETE FROM SpielListe WHERE Zeile=%1").arg(zeile)))
        return false;
    for (int z = zeile + 1; z <= letzte; ++z) {
        if (!ausfuehren(QStringLiteral("UPDATE SpielListe SET Zeile=%1 WHERE Zeile=%2")
                            .arg(z - 1)
                            .arg(z))) {
            qDebug() << "Fehler Spiel entfernen" << z - 1 << z;
            return false;
        }
    }
    return true;
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

bool ProtokollDatenbank::kopfSchreiben(const ListenKopf &kopf)
{
    return kopfLeeren() &&
           ausfuehren(
               QStringLiteral("INSERT INTO Settings (Zeile, TischNr, Serie, AnzahlSpiele, Modus, "
                              "BlPunkte, Datum, Gruppe) VALUES (1, %1, %2, %3, %4, %5, '%6', '%7')")
                   .arg(kopf.tischNr)
                   .arg(kopf.serie)
                   .arg(kopf.anzahlSpiele)
                   .arg(kopf.modus)
                   .arg(kopf.blPunkte)
                   .arg(kopf.datum.toString(QStringLiteral("yyyy-MM-dd")),
                        Sql::quoted(kopf.gruppe)));
}

bool ProtokollDatenbank::spielListeLeeren()
{
    return ausfuehren(QStringLiteral("DELETE FROM SpielListe"));
}

bool ProtokollDatenbank::kopfLeeren()
{
    return ausfuehren(QStringLiteral("DELETE FROM Settings"));
}

bool ProtokollDatenbank::teilnehmerLeeren()
{
    return ausfuehren(QStringLiteral("DELETE FROM Teilnehmer"));
}

bool ProtokollDatenbank::teilnehmerEinfuegen(const Teilnehmer &teilnehmer)
{
    QSqlQuery query(m_db);
    query.prepare(QStringLiteral(
        "INSERT INTO Teilnehmer (MgldNr, Name, Mitglied, Preisskat)VALUES (?, ?, ?, ?)"));
    query.addBindValue(teilnehmer.mgldNr);
    // Name is NOT NULL, and a null QString would be bound as NULL.
    query.addBindValue(teilnehmer.name.isNull() ? QLatin1String("") : teilnehmer.name);
    query.addBindValue(teilnehmer.mitglied);
    query.addBindValue(teilnehmer.preisskat);
    if (query.exec())
        return true;
    m_fehler = query.lastError().text();
    return false;
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

bool ProtokollDatenbank::spielerLeeren()
{
    return ausfuehren(QStringLiteral("DELETE FROM Spieler"));
}

bool ProtokollDatenbank::spielerEintragen(const SpielerDatensatz &spieler)
{
    QSqlQuery query(m_db);
    query.prepare(SpielerEinfuegen);
    query.addBindValue(spieler.mgldNr);
    query.addBindValue(spieler.name);
    query.addBindValue(spieler.mitglied);
    query.addBindValue(spieler.preisskat);
    if (query.exec())
        return true;
    m_fehler = query.lastError().text();
    return false;
}

int ProtokollDatenbank::spielerHinzufuegen(const SpielerDatensatz &spieler)
{
    if (const std::optional<SpielerDatensatz> bekannt = spielerNachName(spieler.name))
        return bekannt->mgldNr;
    QSqlQuery query(m_db);
    SpielerDatensatz neu = spieler;
    neu.mgldNr = spieler.mgldNr == 0 ? 1 : spieler.mgldNr;
    while (query.exec(QStringLiteral("SELECT * FROM Spieler WHERE MgldNr == %1").arg(neu.mgldNr)) &&
           query.first())
        ++neu.mgldNr;
    if (!query.isActive() || !spielerEintragen(neu))
        return 0;
    return neu.mgldNr;
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
