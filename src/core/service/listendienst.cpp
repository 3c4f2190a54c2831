#include "core/service/listendienst.h"

#include "core/service/einstellungen.h"
#include "core/standings/spielmodus.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlRecord>
#include <QSqlTableModel>

#include <algorithm>

namespace {

const QString Ja = QStringLiteral("Ja");
const QString Nein = QStringLiteral("Nein");

DienstErgebnis xmlSchreiben(const QString &pfad, const XmlDaten &daten)
{
    QString grund;
    if (XmlProtokoll::dateiSchreiben(pfad, XmlProtokoll::schreiben(daten), &grund))
        return {};
    return {QStringLiteral("Die Datei\n%1\nkann nicht geschrieben werden:\n%2").arg(pfad, grund)};
}

ListenKopf anfangsKopf()
{
    ListenKopf kopf;
    kopf.datum = QDate::currentDate();
    // A Bierlachs list chosen before anything is stored plays down from 500.
    kopf.blPunkte = 500;
    return kopf;
}

} // namespace

ListenDienst::ListenDienst(const QString &datenVerzeichnis, const Einstellungen &einstellungen,
                           QObject *parent)
    : QObject(parent), m_datenVerzeichnis(datenVerzeichnis), m_einstellungen(einstellungen),
      m_kopf(anfangsKopf())
{
    const auto einstellungenMelden = [this] { melden(ListenAenderung::Einstellungen); };
    connect(&einstellungen, &Einstellungen::kostenGeaendert, this, einstellungenMelden);
    connect(&einstellungen, &Einstellungen::alleKostenGeaendert, this, einstellungenMelden);
    connect(&einstellungen, &Einstellungen::vereinsnameGeaendert, this, einstellungenMelden);
    connect(&einstellungen, &Einstellungen::mitFabianpunktenGeaendert, this, einstellungenMelden);
    connect(&einstellungen, &Einstellungen::sicherheitskopieIntervallGeaendert, this,
            einstellungenMelden);
}

ListenDienst::~ListenDienst()
{
    // The model holds a handle on the connection, which must go first.
    delete m_teilnehmer;
}

QString ListenDienst::dateiName() const
{
    return m_db ? m_db->dateiName() : QString();
}

QString ListenDienst::fehler() const
{
    return m_db ? m_db->fehler() : QString();
}

bool ListenDienst::benutzbar() const
{
    return m_zustand != ProtokollDatenbank::Zustand::Unbenutzbar &&
           m_zustand != ProtokollDatenbank::Zustand::Fremd;
}

QString ListenDienst::ausweg() const
{
    switch (m_zustand) {
    case ProtokollDatenbank::Zustand::Fremd:
        return QStringLiteral("Legen Sie die Datei beiseite (umbenennen oder verschieben) und "
                              "waehlen Sie \"Datenbank zuruecksetzen\", um eine neue Liste zu "
                              "beginnen.");
    case ProtokollDatenbank::Zustand::Unbenutzbar:
        return QStringLiteral("Beenden Sie das Programm, das die Datei benutzt, oder geben Sie den "
                              "Datenordner zum Schreiben frei, und waehlen Sie dann \"Datenbank "
                              "zuruecksetzen\", um die Liste erneut zu oeffnen.");
    default:
        return QString();
    }
}

QString ListenDienst::fehlerText() const
{
    if (!benutzbar())
        return QStringLiteral("Die Datenbank\n%1\nkann nicht benutzt werden:\n%2\nKartulo schreibt "
                              "nicht hinein. %3")
            .arg(dateiName(), fehler(), ausweg());
    return QStringLiteral("Die Datenbank\n%1\nkann nicht geschrieben werden:\n%2")
        .arg(dateiName(), fehler());
}

void ListenDienst::melden(ListenAenderung::Art art, int zeile)
{
    emit geaendert(ListenAenderung{art, zeile});
}

ProtokollDatenbank::Zustand ListenDienst::oeffnen()
{
    m_db = std::make_unique<ProtokollDatenbank>(m_datenVerzeichnis);
    m_zustand = m_db->oeffnen();
    m_spiele.clear();
    if (benutzbar()) {
        teilnehmerModellAnlegen();
        // Games without a registry are no list to continue: they stay in the file until
        // the next list archives them.
        if (m_zustand == ProtokollDatenbank::Zustand::Gespeichert)
            m_spiele = m_db->spiele();
        if (const std::optional<ListenKopf> kopf = m_db->kopfLesen())
            m_kopf = *kopf;
    }
    listeGeladen();
    if (m_zustand == ProtokollDatenbank::Zustand::Gespeichert)
        jornalFortsetzen();
    melden(ListenAenderung::ListeNeu);
    return m_zustand;
}

DienstErgebnis ListenDienst::zuruecksetzen()
{
    if (benutzbar()) {
        if (const QString fehler = archivieren(); !fehler.isNull())
            return {fehler};
        delete m_teilnehmer;
        m_teilnehmer = nullptr;
        m_db->zuruecksetzen();
    }
    oeffnen();
    return {};
}

void ListenDienst::listeGeladen()
{
    m_listenTyp = anzahlTeilnehmer() == 3 ? 3 : 4;
}

void ListenDienst::teilnehmerModellAnlegen()
{
    delete m_teilnehmer;
    m_teilnehmer = new QSqlTableModel(this, m_db->verbindung());
    m_teilnehmer->setTable(QStringLiteral("Teilnehmer"));
    m_teilnehmer->setEditStrategy(QSqlTableModel::OnManualSubmit);
    connect(m_teilnehmer, &QSqlTableModel::dataChanged, this,
            [this] { melden(ListenAenderung::Teilnehmer); });
    m_teilnehmer->select();
    const QStringList koepfe{QStringLiteral("MtgldNr"), QStringLiteral("Spielername"),
                             QStringLiteral("Mitglied"), QStringLiteral("Preisskat")};
    for (int spalte = 0; spalte < koepfe.size(); ++spalte)
        m_teilnehmer->setHeaderData(spalte, Qt::Horizontal, koepfe.at(spalte));
}

// Written as rows of their own rather than submitted by the model: a model that
// has submitted believes its edits stored even when the transaction around them
// is rolled back, and would never write them again.
bool ListenDienst::teilnehmerSpeichern(const QVector<Teilnehmer> &teilnehmer)
{
    return m_db->teilnehmerLeeren() &&
           std::all_of(teilnehmer.cbegin(), teilnehmer.cend(),
                       [this](const Teilnehmer &t) { return m_db->teilnehmerEinfuegen(t); });
}

std::optional<SpielEintrag> ListenDienst::spiel(int zeile) const
{
    const auto it =
        std::find_if(m_spiele.cbegin(), m_spiele.cend(),
                     [zeile](const SpielEintrag &e) { return e[SpielEintrag::Zeile] == zeile; });
    if (it == m_spiele.cend())
        return std::nullopt;
    return *it;
}

int ListenDienst::letzteZeile() const
{
    return m_spiele.isEmpty() ? 0 : m_spiele.last()[SpielEintrag::Zeile];
}

int ListenDienst::geber() const
{
    return m_spiele.size() % m_listenTyp;
}

void ListenDienst::kopfAendern(const ListenKopf &kopf)
{
    if (kopf == m_kopf)
        return;
    m_kopf = kopf;
    melden(ListenAenderung::Kopf);
}

DienstErgebnis ListenDienst::kopfSchreiben()
{
    if (!benutzbar() || !m_db->transaktion([this] { return m_db->kopfSchreiben(m_kopf); }))
        return {fehlerText()};
    return {};
}

QAbstractItemModel *ListenDienst::teilnehmerModell() const
{
    return m_teilnehmer;
}

int ListenDienst::anzahlTeilnehmer() const
{
    return m_teilnehmer ? m_teilnehmer->rowCount() : 0;
}

QString ListenDienst::teilnehmerName(int sitz) const
{
    if (!m_teilnehmer)
        return QString();
    return m_teilnehmer->index(sitz, 1).data().toString();
}

QVector<Teilnehmer> ListenDienst::teilnehmer() const
{
    QVector<Teilnehmer> liste;
    for (int zeile = 0; zeile < anzahlTeilnehmer(); ++zeile) {
        const auto wert = [&](int spalte) { return m_teilnehmer->index(zeile, spalte).data(); };
        liste.append({wert(0).toInt(), wert(1).toString(), wert(2).toString(), wert(3).toString()});
    }
    return liste;
}

void ListenDienst::teilnehmerVorbelegen(int zeile, QSqlRecord &record)
{
    record.setValue(QStringLiteral("Mitglied"), Ja);
    record.setValue(QStringLiteral("Preisskat"), Ja);
    if (zeile >= 0 && zeile <= 3)
        record.setValue(QStringLiteral("MgldNr"), zeile + 1);
    // NOT NULL: the scorer types the name into the empty cell.
    record.setValue(QStringLiteral("Name"), QString(QLatin1String("")));
    for (int feld = 0; feld < record.count(); ++feld)
        record.setGenerated(feld, true);
}

DienstErgebnis ListenDienst::sitzeTauschen(int sitz, int nachbar)
{
    QVector<Teilnehmer> liste = teilnehmer();
    if (!benutzbar() || sitz < 0 || nachbar < 0 || sitz >= liste.size() || nachbar >= liste.size())
        return {fehlerText()};
    std::swap(liste[sitz], liste[nachbar]);
    if (!m_db->transaktion([&] { return teilnehmerSpeichern(liste); }))
        return {fehlerText()};
    m_teilnehmer->select();
    melden(ListenAenderung::Sitzordnung);
    return {};
}

DienstErgebnis ListenDienst::listenTypSetzen(int spieler)
{
    if (!benutzbar())
        return {fehlerText()};
    QVector<Teilnehmer> liste = teilnehmer();
    if (spieler == 3 && liste.size() == 4) {
        liste.removeLast();
    } else if (spieler == 4 && liste.size() == 3) {
        QSqlRecord neu = m_teilnehmer->record();
        teilnehmerVorbelegen(3, neu);
        liste.append({neu.value(0).toInt(), neu.value(1).toString(), neu.value(2).toString(),
                      neu.value(3).toString()});
    }
    if (liste.size() != anzahlTeilnehmer()) {
        if (!m_db->transaktion([&] { return teilnehmerSpeichern(liste); }))
            return {fehlerText()};
        m_teilnehmer->select();
    }
    m_listenTyp = spieler;
    const bool turnier = m_kopf.modus == Spielmodus::Turnier;
    m_kopf.anzahlSpiele = turnier ? (spieler == 3 ? 36 : 48) : 10;
    melden(ListenAenderung::Kopf);
    melden(ListenAenderung::Sitzordnung);
    return {};
}

QStringList ListenDienst::spielerNamen() const
{
    return m_db ? m_db->spielerNamen() : QStringList();
}

DienstErgebnis ListenDienst::registerErsetzen(const QVector<SpielerDatensatz> &spieler)
{
    const bool ok = benutzbar() && m_db->transaktion([&] {
        if (!m_db->spielerLeeren())
            return false;
        return std::all_of(spieler.cbegin(), spieler.cend(),
                           [this](const SpielerDatensatz &s) { return m_db->spielerEintragen(s); });
    });
    if (!ok)
        return {fehlerText()};
    melden(ListenAenderung::Register);
    return {};
}

int ListenDienst::spielerHinzufuegen(const SpielerDatensatz &spieler)
{
    if (!benutzbar())
        return 0;
    const bool bekannt = m_db->spielerNachName(spieler.name).has_value();
    const int nummer = m_db->spielerHinzufuegen(spieler);
    if (nummer != 0 && !bekannt)
        melden(ListenAenderung::Register);
    return nummer;
}

EintragErgebnis ListenDienst::spielEintragen(const SpielEintrag &spiel)
{
    EintragErgebnis ergebnis;
    ergebnis.zeile = letzteZeile() + 1;
    ListenKopf kopf = m_kopf;
    if (kopf.anzahlSpiele < ergebnis.zeile) {
        if (kopf.modus == Spielmodus::Turnier) {
            ergebnis.art = EintragErgebnis::ListenEnde;
            return ergebnis;
        }
        // Result and Bierlachs lists go on in steps of ten games.
        kopf.anzahlSpiele += 10;
    }
    const bool erstesSpiel = ergebnis.zeile == 1;
    // A Bierlachs list needs points to play down from.
    if (erstesSpiel && kopf.modus == Spielmodus::Bierlachs && kopf.blPunkte <= 0)
        kopf.blPunkte = 500;
    // Games an earlier list left in the file go to the archive, not into this one.
    if (erstesSpiel && benutzbar()) {
        if (const QString fehler = archivieren(); !fehler.isNull()) {
            ergebnis.art = EintragErgebnis::Fehler;
            ergebnis.fehler = fehler;
            return ergebnis;
        }
    }

    SpielEintrag neu = spiel;
    neu.setze(SpielEintrag::Zeile, ergebnis.zeile);
    const bool ok = benutzbar() && m_db->transaktion([&] {
        if ((erstesSpiel && !m_db->spielListeLeeren()) || !m_db->einfuegen(neu))
            return false;
        return !erstesSpiel || (m_db->kopfSchreiben(kopf) && teilnehmerSpeichern(teilnehmer()));
    });
    if (!ok) {
        ergebnis.art = EintragErgebnis::Fehler;
        ergebnis.fehler = fehlerText();
        return ergebnis;
    }
    if (erstesSpiel)
        m_teilnehmer->select();
    m_spiele.append(neu);
    jornalEintragen(neu, JornalEintrag::Normal);
    if (kopf != m_kopf) {
        m_kopf = kopf;
        melden(ListenAenderung::Kopf);
    }
    melden(ListenAenderung::SpielNeu, ergebnis.zeile);
    return ergebnis;
}

DienstErgebnis ListenDienst::spielAendern(const SpielEintrag &spiel)
{
    const int zeile = spiel[SpielEintrag::Zeile];
    if (!benutzbar() || !m_db->transaktion([&] { return m_db->aendern(spiel); }))
        return {fehlerText()};
    for (SpielEintrag &e : m_spiele) {
        if (e[SpielEintrag::Zeile] == zeile)
            e = spiel;
    }
    jornalEintragen(spiel, JornalEintrag::Geaendert);
    melden(ListenAenderung::SpielGeaendert, zeile);
    return {};
}

DienstErgebnis ListenDienst::spielEntfernen(int zeile)
{
    const std::optional<SpielEintrag> geloescht = spiel(zeile);
    const int letzte = letzteZeile();
    if (!benutzbar() || !m_db->transaktion([&] { return m_db->entfernen(zeile, letzte); }))
        return {fehlerText()};
    if (geloescht)
        jornalEintragen(*geloescht, JornalEintrag::Geloescht);
    // The rows as the statements left them: this one gone, the later ones moved up.
    m_spiele.erase(
        std::remove_if(m_spiele.begin(), m_spiele.end(),
                       [zeile](const SpielEintrag &e) { return e[SpielEintrag::Zeile] == zeile; }),
        m_spiele.end());
    for (SpielEintrag &e : m_spiele) {
        const int z = e[SpielEintrag::Zeile];
        if (z > zeile && z <= letzte)
            e.setze(SpielEintrag::Zeile, z - 1);
    }
    melden(ListenAenderung::SpielEntfernt, zeile);
    return {};
}

DienstErgebnis ListenDienst::neuesProtokoll(int tischNr, int serie,
                                            const std::optional<QStringList> &namen)
{
    if (!benutzbar())
        return {fehlerText()};
    if (const QString fehler = archivieren(); !fehler.isNull())
        return {fehler};
    const QVector<Teilnehmer> bisher = teilnehmer();
    const bool ok = m_db->transaktion([&] {
        if (!m_db->spielListeLeeren() || !m_db->kopfLeeren())
            return false;
        if (!namen)
            return teilnehmerSpeichern(bisher);
        if (!m_db->teilnehmerLeeren())
            return false;
        for (const QString &name : *namen) {
            SpielerDatensatz spieler;
            spieler.name = name;
            const int nummer = m_db->spielerHinzufuegen(spieler);
            const std::optional<SpielerDatensatz> bekannt = m_db->spielerNachName(name);
            if (nummer == 0 || !bekannt)
                return false;
            if (!m_db->teilnehmerEinfuegen({bekannt->mgldNr, name, bekannt->mitglied ? Ja : Nein,
                                            bekannt->preisskat ? Ja : Nein}))
                return false;
        }
        return true;
    });
    if (!ok)
        return {fehlerText()};
    m_teilnehmer->select();
    m_spiele.clear();
    listeGeladen();
    m_kopf.tischNr = tischNr;
    m_kopf.serie = serie;
    m_kopf.datum = QDate::currentDate();
    if (m_kopf.modus != Spielmodus::Bierlachs)
        m_kopf.blPunkte = 0;
    m_kopf.anzahlSpiele = m_listenTyp == 3 ? 36 : 48;
    melden(ListenAenderung::ListeNeu);
    return {};
}

DienstErgebnis ListenDienst::serieStarten()
{
    const QVector<Teilnehmer> liste = teilnehmer();
    if (!benutzbar())
        return {fehlerText()};
    if (std::count_if(liste.cbegin(), liste.cend(),
                      [](const Teilnehmer &t) { return !t.name.trimmed().isEmpty(); }) < 3)
        return {QStringLiteral("es muessen mindestens 3 Spieler eingetragen werden!")};
    if (!m_db->transaktion(
            [&] { return teilnehmerSpeichern(liste) && m_db->kopfSchreiben(m_kopf); }))
        return {fehlerText()};
    m_teilnehmer->select();
    jornalStarten();
    return {};
}

DienstErgebnis ListenDienst::protokollErsetzen(ListenKopf kopf,
                                               const QVector<Teilnehmer> &teilnehmer,
                                               QVector<SpielEintrag> spiele)
{
    if (!benutzbar())
        return {fehlerText()};
    if (!kopf.datum.isValid())
        kopf.datum = QDate::currentDate();
    // A file keeps no Bierlachs points.
    kopf.blPunkte = 0;
    DienstErgebnis ergebnis;
    for (int i = 0; i < spiele.size(); ++i) {
        if (spiele.at(i)[SpielEintrag::Zeile] == i + 1)
            continue;
        for (int j = 0; j < spiele.size(); ++j)
            spiele[j].setze(SpielEintrag::Zeile, j + 1);
        ergebnis.hinweis = QStringLiteral("Die Spielnummern der Datei waren doppelt oder "
                                          "lueckenhaft; die Spiele sind in der Reihenfolge der "
                                          "Datei neu nummeriert (1 bis %1).")
                               .arg(spiele.size());
        break;
    }
    if (const QString fehler = archivieren(); !fehler.isNull())
        return {fehler};
    const bool ok = m_db->transaktion([&] {
        if (!m_db->spielListeLeeren() || !m_db->kopfSchreiben(kopf) ||
            !teilnehmerSpeichern(teilnehmer))
            return false;
        return std::all_of(spiele.cbegin(), spiele.cend(),
                           [this](const SpielEintrag &spiel) { return m_db->einfuegen(spiel); });
    });
    if (!ok)
        return {fehlerText()};
    m_teilnehmer->select();
    m_spiele = spiele;
    m_kopf = kopf;
    listeGeladen();
    jornalFortsetzen();
    melden(ListenAenderung::ListeNeu);
    return ergebnis;
}

XmlDaten ListenDienst::protokollDaten() const
{
    XmlDaten daten;
    daten.kopf = m_kopf;
    daten.kosten = m_einstellungen.kosten();
    daten.verein = m_einstellungen.vereinsname();
    daten.spieler = teilnehmer();
    daten.spiele = m_spiele;
    return daten;
}

DienstErgebnis ListenDienst::xmlSpeichern(const QString &pfad) const
{
    return xmlSchreiben(pfad, protokollDaten());
}

DienstErgebnis ListenDienst::sicherungSchreiben() const
{
    QDir().mkpath(m_datenVerzeichnis);
    return xmlSpeichern(QStringLiteral("%1/xmlsicherheitskopie.xml").arg(m_datenVerzeichnis));
}

QString ListenDienst::archivVerzeichnis() const
{
    return QStringLiteral("%1/archiv").arg(m_datenVerzeichnis);
}

QString ListenDienst::archivieren() const
{
    XmlDaten daten = protokollDaten();
    // A list that was not restored has left its games in the file.
    if (daten.spiele.isEmpty())
        daten.spiele = m_db->spiele();
    if (daten.spiele.isEmpty())
        return QString();
    const QString verzeichnis = archivVerzeichnis();
    QDir().mkpath(verzeichnis);
    const QDate datum = m_kopf.datum.isValid() ? m_kopf.datum : QDate::currentDate();
    const QString stamm = QStringLiteral("%1/Skat%2_S%3_T%4_%5")
                              .arg(verzeichnis, datum.toString(Qt::ISODate))
                              .arg(m_kopf.serie)
                              .arg(m_kopf.tischNr)
                              .arg(QTime::currentTime().toString(QStringLiteral("HH-mm-ss")));
    QString pfad = stamm + QStringLiteral(".xml");
    for (int nummer = 2; QFileInfo::exists(pfad); ++nummer)
        pfad = QStringLiteral("%1_%2.xml").arg(stamm).arg(nummer);
    const DienstErgebnis ergebnis = xmlSchreiben(pfad, daten);
    if (ergebnis.ok())
        return QString();
    return QStringLiteral("Die Liste wird nicht geleert, denn sie kann nicht archiviert "
                          "werden.\n%1")
        .arg(ergebnis.fehler);
}

void ListenDienst::jornalStarten()
{
    m_jornal.setPath(QStringLiteral("%1/jornal").arg(m_datenVerzeichnis));
    m_jornal.setKopf(m_kopf.datum, m_kopf.tischNr, m_kopf.serie);
    m_jornal.leeren();
    m_jornal.save(SkatJornal::Json);
}

void ListenDienst::jornalFortsetzen()
{
    m_jornal.setPath(QStringLiteral("%1/jornal").arg(m_datenVerzeichnis));
    // A journal of another list is not continued.
    const bool vorhanden = QFile::exists(SkatJornal::dateiPfad(m_jornal.path(), SkatJornal::Json));
    if (vorhanden && m_jornal.load(SkatJornal::Json) && m_jornal.datum() == m_kopf.datum &&
        m_jornal.tischNr() == m_kopf.tischNr && m_jornal.serie() == m_kopf.serie)
        return;
    m_jornal.setKopf(m_kopf.datum, m_kopf.tischNr, m_kopf.serie);
    m_jornal.leeren();
}

void ListenDienst::jornalEintragen(const SpielEintrag &spiel, int status)
{
    const int sitz = JornalEintrag::spielerSitz(spiel);
    const QString spieler = sitz >= 0 ? teilnehmerName(sitz) : QString();
    const int zeile = spiel[SpielEintrag::Zeile];
    const QString spielGeber = teilnehmerName(zeile > 0 ? (zeile - 1) % m_listenTyp : geber());
    m_jornal.anhaengen(JornalEintrag::ausSpiel(spiel, status, spieler, spielGeber));
    m_jornal.save(SkatJornal::Json);
}
