#include "app/sheets/blattsteuerung.h"

#include "ui_blattseite.h"
#include "ui_kostengruppe.h"

#include "app/sheets/listview.h"
#include "app/sheets/pdfexport.h"
#include "app/sheets/spielblatt.h"
#include "app/widgets/geldvalidator.h"
#include "core/service/listendienst.h"
#include "core/standings/spielmodus.h"

#include <QDir>
#include <QEvent>
#include <QFormLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>

namespace {

using Kosten = Einstellungen::Kosten;

// The lines of the sheet's rules block, in the order Kostenrechnung::beschreibungen gives them.
enum Regel
{
    RegelGewonnen,
    RegelGegenspieler,
    RegelKartengeld,
    RegelVerloren,
    RegelPreisskat,
    RegelPlatz
};

Regel regelFuer(Kosten wert)
{
    switch (wert) {
    case Kosten::Platz1:
    case Kosten::Platz2:
    case Kosten::Platz3:
    case Kosten::Platz4:
        return RegelPlatz;
    case Kosten::Kartengeld:
        return RegelKartengeld;
    case Kosten::VerlSpiel1Bis5:
    case Kosten::VerlSpielAb6:
        return RegelVerloren;
    case Kosten::Preisskat:
        return RegelPreisskat;
    case Kosten::GewSpieleMinusVerlSpiele:
        return RegelGewonnen;
    case Kosten::VerlSpieleDerGegenSpieler3:
    case Kosten::VerlSpieleDerGegenSpieler4:
        break;
    }
    return RegelGegenspieler;
}

// Each value with its field and its place in the account, in the order of
// Einstellungen::Kosten, which is the order the tournament manager sends them
// in. Money is a double, points an int.
struct KostenFeld
{
    Kosten wert;
    QLineEdit *Ui::KostenGruppe::*feld;
    double KostenWerte::*geld;
    int KostenWerte::*punkte;
};

using U = Ui::KostenGruppe;
using K = KostenWerte;
const std::array<KostenFeld, 11> alleKosten{{
    {Kosten::Platz1, &U::lePlKosten1, &K::platz1, nullptr},
    {Kosten::Platz2, &U::lePlKosten2, &K::platz2, nullptr},
    {Kosten::Platz3, &U::lePlKosten3, &K::platz3, nullptr},
    {Kosten::Platz4, &U::lePlKosten4, &K::platz4, nullptr},
    {Kosten::Kartengeld, &U::leKartengeld, &K::kartengeld, nullptr},
    {Kosten::VerlSpiel1Bis5, &U::leVerlSpiele1Bis5, &K::verlSpiel1Bis5, nullptr},
    {Kosten::VerlSpielAb6, &U::leVerlSpieleAb6, &K::verlSpielAb6, nullptr},
    {Kosten::Preisskat, &U::lePreisSkat, &K::preisskat, nullptr},
    {Kosten::GewSpieleMinusVerlSpiele, &U::leGewSpieleAbzglVerlSpiele, nullptr,
     &K::gewSpieleMinusVerlSpiele},
    {Kosten::VerlSpieleDerGegenSpieler3, &U::leVerlSpieleDerGegenspieler3, nullptr,
     &K::verlSpieleDerGegenSpieler3},
    {Kosten::VerlSpieleDerGegenSpieler4, &U::leVerlSpieleDerGegenspieler4, nullptr,
     &K::verlSpieleDerGegenSpieler4},
}};

const KostenFeld &eintrag(Kosten wert)
{
    return alleKosten.at(static_cast<size_t>(wert));
}

} // namespace

BlattSteuerung::BlattSteuerung(QObject *parent, QWidget *seite, ListenDienst &dienst,
                               Einstellungen &einstellungen)
    : QObject(parent), m_seite(seite), m_ui(new Ui::BlattSeite), m_kostenGruppe(new QGroupBox),
      m_kostenUi(new Ui::KostenGruppe), m_dienst(dienst), m_einstellungen(einstellungen)
{
    m_ui->setupUi(seite);
    m_kostenUi->setupUi(m_kostenGruppe);
    kostenFelderEinrichten();
    connect(m_ui->pbVergroessern, &QPushButton::clicked, this, &BlattSteuerung::onZoomIn);
    connect(m_ui->pbVerkleinern, &QPushButton::clicked, this, &BlattSteuerung::onZoomOut);
    connect(&m_dienst, &ListenDienst::geaendert, this, &BlattSteuerung::listeGeaendert);
    connect(&m_einstellungen, &Einstellungen::kostenGeaendert, this,
            &BlattSteuerung::kostenGeaendert);
    connect(&m_einstellungen, &Einstellungen::alleKostenGeaendert, this, [this] {
        kostenFelderZeigen();
        neuZeichnen();
    });
}

BlattSteuerung::~BlattSteuerung() = default;

void BlattSteuerung::rundenwahlEinsetzen(QWidget *wahl)
{
    m_ui->hlZoom->insertWidget(0, wahl);
}

QLineEdit *BlattSteuerung::kostenFeld(Kosten wert) const
{
    return (*m_kostenUi).*eintrag(wert).feld;
}

void BlattSteuerung::kostenFelderEinrichten()
{
    for (const KostenFeld &e : alleKosten) {
        const Kosten wert = e.wert;
        QLineEdit *feld = kostenFeld(wert);
        if (regelFuer(wert) == RegelGewonnen || regelFuer(wert) == RegelGegenspieler)
            feld->setValidator(new QIntValidator(1, 200, feld));
        else if (regelFuer(wert) == RegelPlatz)
            feld->setValidator(new GeldValidator(0.0, 100.0, feld));
        else
            feld->setValidator(new GeldValidator(0.5, 100.0, feld));
    }
    // Filled before the edits are followed: only an edit stores a value.
    kostenFelderZeigen();
    for (const KostenFeld &e : alleKosten) {
        const Kosten wert = e.wert;
        connect(kostenFeld(wert), &QLineEdit::textChanged, this,
                [this, wert](const QString &text) { kostenEingegeben(wert, text); });
        kostenFeld(wert)->installEventFilter(this);
        // A key the field refuses (a second decimal, a letter) is not swallowed silently.
        connect(kostenFeld(wert), &QLineEdit::inputRejected, this,
                [this, wert] { kostenHinweis(wert, QString()); });
    }
}

QString BlattSteuerung::kostenText(Kosten wert) const
{
    const KostenFeld &e = eintrag(wert);
    const KostenWerte &k = m_einstellungen.kosten();
    return e.geld ? Kostenrechnung::geldText(k.*e.geld) : QString::number(k.*e.punkte);
}

void BlattSteuerung::kostenFelderZeigen()
{
    for (const KostenFeld &e : alleKosten)
        kostenWertZeigen(e.wert);
}

void BlattSteuerung::kostenWertZeigen(Kosten wert)
{
    QLineEdit *feld = kostenFeld(wert);
    const QSignalBlocker sperre(feld);
    feld->setText(kostenText(wert));
}

bool BlattSteuerung::kostenGueltig(Kosten wert, QString text) const
{
    int position = 0;
    return kostenFeld(wert)->validator()->validate(text, position) == QValidator::Acceptable;
}

void BlattSteuerung::kostenZuruecksetzen(Kosten wert)
{
    kostenWertZeigen(wert);
    kostenHinweis(wert,
                  QStringLiteral(", es bleibt %1")
                      .arg(kostenFeld(wert)->text().replace(QLatin1Char('.'), QLatin1Char(','))));
}

void BlattSteuerung::kostenHinweis(Kosten wert, const QString &zusatz)
{
    QLineEdit *feld = kostenFeld(wert);
    QWidget *beschriftung = m_kostenUi->flKosten->labelForField(feld);
    if (!beschriftung)
        beschriftung = m_kostenUi->flPunkteKosten->labelForField(feld);
    const QString name = regelFuer(wert) == RegelPlatz
                             ? QStringLiteral("Platz %1").arg(static_cast<int>(wert) + 1)
                             : qobject_cast<QLabel *>(beschriftung)->text();
    const QLocale deutsch(QLocale::German, QLocale::Germany);
    QString bereich;
    if (const auto *geld = qobject_cast<const QDoubleValidator *>(feld->validator()))
        bereich = QStringLiteral("%1 bis %2 mit einer Nachkommastelle")
                      .arg(deutsch.toString(geld->bottom(), 'f', geld->decimals()),
                           deutsch.toString(geld->top(), 'f', geld->decimals()));
    else if (const auto *punkte = qobject_cast<const QIntValidator *>(feld->validator()))
        bereich = QStringLiteral("%1 bis %2").arg(punkte->bottom()).arg(punkte->top());
    emit statusMeldung(QStringLiteral("%1: nur %2 moeglich%3").arg(name, bereich, zusatz), 10000);
}

bool BlattSteuerung::eventFilter(QObject *objekt, QEvent *ereignis)
{
    if (ereignis->type() == QEvent::FocusOut) {
        for (const KostenFeld &e : alleKosten) {
            const Kosten wert = e.wert;
            if (kostenFeld(wert) != objekt)
                continue;
            // A field left half typed goes back to what is stored; a valid one
            // shows the number as the files write it.
            if (kostenGueltig(wert, kostenFeld(wert)->text()))
                kostenWertZeigen(wert);
            else
                kostenZuruecksetzen(wert);
        }
    }
    return QObject::eventFilter(objekt, ereignis);
}

void BlattSteuerung::kostenEingegeben(Kosten wert)
{
    kostenEingegeben(wert, kostenFeld(wert)->text());
}

void BlattSteuerung::kostenEingegeben(Kosten wert, const QString &text)
{
    if (kostenGueltig(wert, text)) {
        m_einstellungen.kostenSetzen(wert, text);
        return;
    }
    // While the scorer types, "" or "0" on the way to "0,5" store nothing; a
    // value set from elsewhere that does not fit is refused at once.
    if (!kostenFeld(wert)->hasFocus())
        kostenZuruecksetzen(wert);
}

void BlattSteuerung::kostenGeaendert(Kosten wert)
{
    if (Spielblatt *blatt = aktuellesBlatt()) {
        const int regel = regelFuer(wert);
        blatt->beschreibungSetzen(regel, Kostenrechnung::beschreibungen(m_einstellungen.kosten(),
                                                                        m_dienst.listenTyp(), false)
                                             .value(regel));
    }
    fuellen();
}

void BlattSteuerung::kostenVomManager(const QStringList &werte)
{
    const ListenKopf &kopf = m_dienst.kopf();
    if (werte.size() != 3 || werte.at(0).toInt() != kopf.tischNr ||
        werte.at(1).toInt() != kopf.serie)
        return;
    const QStringList felder = werte.at(2).split(QLatin1Char('|'));
    // Each value is checked as its field would check it and stored; the twelfth
    // is the club name. Money comes with a point or a comma and any number of
    // zeros ("0,50"); the field takes its one decimal.
    for (int i = 0; i < static_cast<int>(alleKosten.size()) && i < felder.size(); ++i) {
        const KostenFeld &e = alleKosten.at(static_cast<size_t>(i));
        QString text = felder.at(i).trimmed();
        bool zahl = false;
        const double betrag =
            QString(text).replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&zahl);
        if (e.geld && zahl)
            text = Kostenrechnung::geldText(betrag);
        if (!kostenGueltig(e.wert, text)) {
            kostenZuruecksetzen(e.wert);
            continue;
        }
        m_einstellungen.kostenSetzen(e.wert, text);
        kostenWertZeigen(e.wert);
    }
    if (felder.size() > 11)
        m_einstellungen.vereinsnameSetzen(felder.at(11));
}

void BlattSteuerung::listeGeaendert(const ListenAenderung &aenderung)
{
    switch (aenderung.art) {
    case ListenAenderung::SpielNeu:
        m_runde = -1;
        fuellen();
        // The scorer checks the game just entered.
        if (Spielblatt *blatt = aktuellesBlatt())
            m_ui->gvSpieleListe->zeileZeigen(blatt->zeilenUnten());
        break;
    case ListenAenderung::SpielGeaendert:
    case ListenAenderung::SpielEntfernt:
        m_runde = -1;
        fuellen();
        break;
    case ListenAenderung::Kopf:
        kopfZeichnen();
        fuellen();
        break;
    case ListenAenderung::Teilnehmer:
    case ListenAenderung::Sitzordnung:
    case ListenAenderung::ListeNeu:
        m_runde = -1;
        neuZeichnen();
        break;
    // The costs reach the sheet through the store's own signals.
    case ListenAenderung::Register:
    case ListenAenderung::Einstellungen:
        break;
    }
}

Spielblatt *BlattSteuerung::aktuellesBlatt() const
{
    return m_dienst.listenTyp() == 3 ? m_blatt3.get() : m_blatt4.get();
}

void BlattSteuerung::neuZeichnen()
{
    const int spielerZahl = m_dienst.listenTyp();
    std::unique_ptr<Spielblatt> &blatt = spielerZahl == 3 ? m_blatt3 : m_blatt4;
    if (!blatt)
        blatt = std::make_unique<Spielblatt>(spielerZahl);
    QVector<BlattSpieler> spieler;
    for (const Teilnehmer &t : m_dienst.teilnehmer())
        spieler.append({t.name, t.mgldNr});
    const ListenKopf &kopf = m_dienst.kopf();
    blatt->leerZeichnen(
        {kopf.datum, kopf.serie, kopf.tischNr}, spieler,
        Kostenrechnung::beschreibungen(m_einstellungen.kosten(), spielerZahl, true));
    m_ui->gvSpieleListe->setScene(blatt->scene());
    fuellen();
    m_ui->gvSpieleListe->obenLinksZeigen();
}

void BlattSteuerung::kopfZeichnen()
{
    const ListenKopf &kopf = m_dienst.kopf();
    if (Spielblatt *blatt = aktuellesBlatt())
        blatt->kopfZeichnen({kopf.datum, kopf.serie, kopf.tischNr});
}

void BlattSteuerung::rundeWaehlen(int index)
{
    m_runde = index;
    fuellen();
}

void BlattSteuerung::fuellen()
{
    Spielblatt *blatt = aktuellesBlatt();
    if (!blatt)
        return;
    const ListenKopf &kopf = m_dienst.kopf();
    const int spielerZahl = m_dienst.listenTyp();
    const QVector<SpielEintrag> &alle = m_dienst.spiele();
    QVector<SpielEintrag> auswahl;
    if (kopf.modus == Spielmodus::Bierlachs) {
        // A Bierlachs sheet shows one round, the newest unless another is chosen.
        const QVector<BierlachsRunde> runden = Bierlachs::runden(alle, spielerZahl, kopf.blPunkte);
        const BierlachsRunde runde = runden.value(m_runde, runden.last());
        for (const SpielEintrag &spiel : alle) {
            const int zeile = spiel[SpielEintrag::Zeile];
            if (zeile >= runde.ersteZeile && zeile <= runde.letzteZeile)
                auswahl.append(spiel);
        }
    }
    const QVector<SpielEintrag> &spiele = kopf.modus == Spielmodus::Bierlachs ? auswahl : alle;

    std::array<QStringList, 8> fuss{};
    // The money account belongs to tournament lists only.
    if (kopf.modus == Spielmodus::Turnier) {
        const Bilanzen bilanzen = Spielstand::bilanzen(spiele, spielerZahl);
        QVector<KostenSpieler> spieler;
        const QVector<Teilnehmer> teilnehmer = m_dienst.teilnehmer();
        for (int sitz = 0; sitz < teilnehmer.size() && sitz < spielerZahl; ++sitz) {
            const Teilnehmer &t = teilnehmer.at(sitz);
            spieler.append({t.name, t.mgldNr, t.mitglied, t.preisskat, bilanzen.at(sitz)});
        }
        const KostenErgebnis konto =
            Kostenrechnung::berechne(spieler, m_einstellungen.kosten(), kopf.serie, kopf.tischNr);
        fuss = konto.zeilen;
        emit ergebnisse(konto.ergebnisTexte);
    }
    blatt->zeilenFuellen(spiele, fuss);
}

void BlattSteuerung::onZoomIn()
{
    m_zoomFaktor += 0.2;
    // At the limits the factor is clamped but the view keeps its last scale,
    // so the next step in the other direction shows at once.
    if (m_zoomFaktor > 5.0) {
        m_zoomFaktor = 5.0;
        return;
    }
    m_ui->gvSpieleListe->zoomen(m_zoomFaktor);
}

void BlattSteuerung::onZoomOut()
{
    m_zoomFaktor -= 0.2;
    if (m_zoomFaktor < 0.5) {
        m_zoomFaktor = 0.5;
        return;
    }
    m_ui->gvSpieleListe->zoomen(m_zoomFaktor);
}

QString BlattSteuerung::pdfPfad() const
{
    const ListenKopf &kopf = m_dienst.kopf();
    return QStringLiteral("%1/%2").arg(m_dienst.datenVerzeichnis(),
                                       pdfDateiName(kopf.datum, kopf.serie, kopf.tischNr));
}

QString BlattSteuerung::pdfSpeichern(bool frageDateiname)
{
    const ListenKopf &kopf = m_dienst.kopf();
    if (kopf.modus == Spielmodus::Bierlachs)
        return QString();
    const QString verzeichnis = m_dienst.datenVerzeichnis();
    QDir().mkpath(verzeichnis);
    const QString name = pdfDateiName(kopf.datum, kopf.serie, kopf.tischNr);
    const QString pdfPfad = QStringLiteral("%1/%2").arg(verzeichnis, name);
    if (frageDateiname)
        QMessageBox::information(m_seite, QStringLiteral("INFO"),
                                 QStringLiteral("Datei\n%1").arg(pdfPfad), QMessageBox::Ok);
    if (const QString grund = pdfSchreiben(m_ui->gvSpieleListe, pdfPfad); !grund.isEmpty())
        QMessageBox::warning(m_seite, QStringLiteral("WARNUNG"),
                             QStringLiteral("Die Datei\n%1\nkann nicht geschrieben werden:\n%2")
                                 .arg(pdfPfad, grund));
    return QStringLiteral("%1/%2").arg(
        verzeichnis, QString(name).replace(QLatin1String(".pdf"), QLatin1String(".xml")));
}
