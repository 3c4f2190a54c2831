#include "app/header/kopfsteuerung.h"

#include "ui_kopfgruppe.h"
#include "ui_neuseite.h"

#include "core/files/spielerdatei.h"
#include "core/service/einstellungen.h"
#include "core/service/listendienst.h"

#include <QFile>
#include <QMessageBox>
#include <QStandardItemModel>
#include <QStandardPaths>

namespace {
// They separate the fields of every network message.
const QString GruppenVerbot = QStringLiteral(":$@");
} // namespace

KopfSteuerung::KopfSteuerung(QObject *parent, QWidget *neuSeite, ListenDienst &dienst,
                             Einstellungen &einstellungen)
    : QObject(parent), m_gruppe(new QGroupBox), m_ui(new Ui::KopfGruppe), m_neu(new Ui::NeuSeite),
      m_dienst(dienst), m_einstellungen(einstellungen), m_spielerListe(new QStandardItemModel(this))
{
    m_ui->setupUi(m_gruppe);
    m_neu->setupUi(neuSeite);
    // Asked for from the manager only while one is there.
    m_neu->pbAnfordern->hide();
    m_spielerListe->setHorizontalHeaderLabels({QStringLiteral("Name")});
    m_neu->lvRegistrierteSpieler->setModel(m_spielerListe);
    m_ui->leListenName->setText(m_einstellungen.vereinsname());
    kopfZeigen();
    felderVerbinden();
    connect(&m_dienst, &ListenDienst::geaendert, this, &KopfSteuerung::listeGeaendert);
    connect(&m_einstellungen, &Einstellungen::vereinsnameGeaendert, this,
            [this](const QString &name) {
                if (m_ui->leListenName->text() != name)
                    m_ui->leListenName->setText(name);
            });
}

KopfSteuerung::~KopfSteuerung() = default;

void KopfSteuerung::felderVerbinden()
{
    connect(m_ui->spbTischNr, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &KopfSteuerung::onTischNr);
    connect(m_ui->spbSerie, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &KopfSteuerung::onSerie);
    connect(m_ui->spbSpielAnzahl, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &KopfSteuerung::kopfAusFeldern);
    connect(m_ui->deDatum, &QDateEdit::dateChanged, this, &KopfSteuerung::kopfAusFeldern);
    connect(m_ui->leListenName, &QLineEdit::textChanged, this, &KopfSteuerung::onListenName);
    connect(m_ui->cmbGruppenId, &QComboBox::currentTextChanged, this,
            &KopfSteuerung::onChangeGruppenId);
    connect(m_neu->pbOk, &QPushButton::clicked, this, &KopfSteuerung::onNeuesProtokollOk);
    connect(m_neu->pbAbbruch, &QPushButton::clicked, this, &KopfSteuerung::onNeuesProtokollAbbruch);
    connect(m_neu->lvRegistrierteSpieler, &QListView::clicked, this,
            &KopfSteuerung::onSpielerSelected);
    connect(m_neu->lvRegistrierteSpieler, &QListView::doubleClicked, this,
            &KopfSteuerung::onSpielerDoubleClicked);
    connect(m_neu->pbSpielerAusTextdatei, &QPushButton::clicked, this,
            &KopfSteuerung::spielerAusTextDateiLaden);
    connect(m_neu->pbAnfordern, &QPushButton::clicked, this,
            &KopfSteuerung::spielerdatenGewuenscht);
    for (QLineEdit *feld : {m_neu->leNeuTischNr, m_neu->leNeuSerie})
        connect(feld, &QLineEdit::textChanged, this, &KopfSteuerung::angabenMelden);
}

void KopfSteuerung::warnen(const QString &text)
{
    QMessageBox::warning(m_gruppe, QStringLiteral("WARNUNG"), text);
}

void KopfSteuerung::listeGeaendert(const ListenAenderung &aenderung)
{
    switch (aenderung.art) {
    case ListenAenderung::Kopf:
    case ListenAenderung::ListeNeu:
        kopfZeigen();
        break;
    case ListenAenderung::SpielNeu:
        // Once the list has started, its number of games is fixed.
        m_ui->spbSpielAnzahl->setEnabled(false);
        break;
    default:
        break;
    }
}

void KopfSteuerung::kopfZeigen()
{
    const ListenKopf &kopf = m_dienst.kopf();
    const QSignalBlocker sperreTisch(m_ui->spbTischNr);
    const QSignalBlocker sperreSerie(m_ui->spbSerie);
    const QSignalBlocker sperreAnzahl(m_ui->spbSpielAnzahl);
    const QSignalBlocker sperreDatum(m_ui->deDatum);
    const QSignalBlocker sperreGruppe(m_ui->cmbGruppenId);
    m_ui->spbTischNr->setValue(kopf.tischNr);
    m_ui->spbSerie->setValue(kopf.serie);
    m_ui->spbSpielAnzahl->setValue(kopf.anzahlSpiele);
    m_ui->deDatum->setDate(kopf.datum);
    if (m_ui->cmbGruppenId->currentText() != kopf.gruppe)
        m_ui->cmbGruppenId->setEditText(kopf.gruppe);
}

void KopfSteuerung::kopfAusFeldern()
{
    ListenKopf kopf = m_dienst.kopf();
    kopf.tischNr = m_ui->spbTischNr->value();
    kopf.serie = m_ui->spbSerie->value();
    kopf.anzahlSpiele = m_ui->spbSpielAnzahl->value();
    kopf.datum = m_ui->deDatum->date();
    m_dienst.kopfAendern(kopf);
}

void KopfSteuerung::onTischNr(int nummer)
{
    Q_UNUSED(nummer);
    kopfAusFeldern();
}

void KopfSteuerung::onSerie(int nummer)
{
    Q_UNUSED(nummer);
    kopfAusFeldern();
}

void KopfSteuerung::onListenName(const QString &name)
{
    m_einstellungen.vereinsnameSetzen(name);
}

void KopfSteuerung::onChangeGruppenId(const QString &gruppe)
{
    for (const QChar zeichen : GruppenVerbot) {
        if (gruppe.contains(zeichen)) {
            warnen(QStringLiteral("Das Zeichen \"%1\" ist in der Gruppen-ID nicht erlaubt.")
                       .arg(zeichen));
            const QSignalBlocker sperre(m_ui->cmbGruppenId);
            m_ui->cmbGruppenId->setEditText(m_dienst.kopf().gruppe);
            return;
        }
    }
    ListenKopf kopf = m_dienst.kopf();
    kopf.gruppe = gruppe;
    m_dienst.kopfAendern(kopf);
}

void KopfSteuerung::gruppeVorgeben(const QString &gruppe)
{
    QComboBox *gruppen = m_ui->cmbGruppenId;
    const QSignalBlocker sperre(gruppen);
    if (gruppen->findData(gruppe) < 0)
        gruppen->addItem(gruppe, gruppe);
    gruppen->setCurrentIndex(gruppen->findData(gruppe));
    gruppen->setEnabled(false);
    ListenKopf kopf = m_dienst.kopf();
    kopf.gruppe = gruppe;
    m_dienst.kopfAendern(kopf);
}

void KopfSteuerung::auslosungZeigen(int tischNr, int serie, const QStringList &sitze)
{
    if (!m_neuOffen)
        onNewProtokoll();
    if (!m_neuOffen)
        return;
    const QList<QLineEdit *> felder = neueSpielerFelder();
    for (int sitz = 0; sitz < felder.size(); ++sitz) {
        const QString sitzText = sitze.value(sitz);
        felder.at(sitz)->setText(sitzText.section(QLatin1Char('|'), 1, 1));
        if (!sitzText.isEmpty())
            spielerHinzufuegen(sitzText);
    }
    m_neu->chkSpielerBeibehalten->setChecked(false);
    m_neu->leNeuTischNr->setText(QString::number(tischNr));
    m_neu->leNeuSerie->setText(QString::number(serie));
}

void KopfSteuerung::setzeLaufzustand(bool laufend)
{
    for (QWidget *feld :
         {static_cast<QWidget *>(m_ui->spbSerie), static_cast<QWidget *>(m_ui->spbTischNr),
          static_cast<QWidget *>(m_ui->spbSpielAnzahl)})
        feld->setEnabled(!laufend);
    emit seitenFreigeben(laufend);
    emit laufzustandGeaendert(laufend);
}

void KopfSteuerung::anfangszustand()
{
    emit seiteZeigen(Seite::Beschreibung);
    emit seitenFreigeben(false);
}

void KopfSteuerung::wiederherstellen()
{
    const QString gruppe = m_dienst.kopf().gruppe;
    QComboBox *gruppen = m_ui->cmbGruppenId;
    if (!gruppe.isEmpty() && gruppen->findText(gruppe, Qt::MatchFixedString) < 0) {
        const QSignalBlocker sperre(gruppen);
        gruppen->addItem(gruppe);
        gruppen->setCurrentIndex(gruppen->count() - 1);
        gruppen->setEnabled(false);
    }
    setzeLaufzustand(true);
    const int tischNr = m_dienst.kopf().tischNr;
    if (tischNr != 0)
        emit listeBenannt(QStringLiteral("Erstliste Tisch %1").arg(tischNr));
}

void KopfSteuerung::protokollGeladen()
{
    emit listeBenannt(QStringLiteral("XML-Liste Tisch %1").arg(m_dienst.kopf().tischNr));
    setzeLaufzustand(true);
}

void KopfSteuerung::schliessen()
{
    // A database that is not Kartulo's is never written.
    if (!m_dienst.benutzbar())
        return;
    const DienstErgebnis ergebnis = m_dienst.kopfSchreiben();
    if (!ergebnis.ok())
        warnen(ergebnis.fehler);
}

QList<QLineEdit *> KopfSteuerung::neueSpielerFelder() const
{
    return {m_neu->leNeuSpieler1, m_neu->leNeuSpieler2, m_neu->leNeuSpieler3, m_neu->leNeuSpieler4};
}

void KopfSteuerung::onNewProtokoll()
{
    if (QMessageBox::question(m_gruppe, QStringLiteral("FRAGE"), QStringLiteral("Neues Protokoll?"),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    emit protokollWirdVorbereitet();
    neuSeiteSetzen(true);

    spielerListeFuellen(QStringLiteral("Name"));
    for (QLineEdit *feld : neueSpielerFelder())
        feld->clear();
    m_neu->chkSpielerBeibehalten->setChecked(false);
    m_ui->spbSpielAnzahl->setValue(m_dienst.anzahlTeilnehmer() == 3 ? 36 : 48);
}

void KopfSteuerung::onNeuesProtokollAbbruch()
{
    setTabWidgetNeuToHide();
}

void KopfSteuerung::setTabWidgetNeuToHide()
{
    neuSeiteSetzen(false);
}

void KopfSteuerung::neuSeiteSetzen(bool offen)
{
    m_neuOffen = offen;
    emit neuSeiteOffen(offen);
    angabenMelden();
}

void KopfSteuerung::angabenMelden()
{
    emit neueListeAngaben(m_neuOffen, m_neu->leNeuTischNr->text(), m_neu->leNeuSerie->text());
}

void KopfSteuerung::namenSperren(bool sperren)
{
    m_neu->pbAnfordern->setVisible(sperren);
    m_neu->pbSpielerAusTextdatei->setVisible(!sperren);
    m_neu->pbSpielerAusTextdatei->setEnabled(!sperren);
    for (QLineEdit *feld : neueSpielerFelder())
        feld->setEnabled(!sperren);
}

void KopfSteuerung::onNeuesProtokollOk()
{
    std::optional<QStringList> namen;
    if (!m_neu->chkSpielerBeibehalten->isChecked()) {
        namen.emplace();
        for (QLineEdit *feld : neueSpielerFelder()) {
            const QString verboten = SpielerDatei::verboteneZeichen(feld->text());
            // Refused before anything is emptied, so the running list stays.
            if (!verboten.isEmpty()) {
                warnen(QStringLiteral("Das Zeichen \"%1\" ist in Spielernamen nicht erlaubt.")
                           .arg(verboten.left(1)));
                feld->setFocus();
                return;
            }
            const QString name = SpielerDatei::bereinigt(feld->text());
            if (!name.isEmpty())
                *namen << name;
        }
    }
    const int tischNr = m_neu->leNeuTischNr->text().toInt();
    const DienstErgebnis ergebnis =
        m_dienst.neuesProtokoll(tischNr, m_neu->leNeuSerie->text().toInt(), namen);
    if (!ergebnis.ok()) {
        warnen(ergebnis.fehler);
        return;
    }
    if (namen && namen->size() < 3)
        warnen(QStringLiteral("es muessen mindestens 3 Spieler eingetragen werden!"));
    emit protokollVorbereitet();
    setzeLaufzustand(false);
    setTabWidgetNeuToHide();
    emit listeBenannt(QStringLiteral("Erstliste Tisch %1").arg(tischNr));
}

void KopfSteuerung::onStartSpiel()
{
    if (QMessageBox::question(
            m_gruppe, QStringLiteral("FRAGE"),
            QStringLiteral("Sind Mitglied- und Preisskat-Eintragungen korrekt?\nSerie Starten?"),
            QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    const DienstErgebnis ergebnis = m_dienst.serieStarten();
    if (!ergebnis.ok()) {
        warnen(ergebnis.fehler);
        return;
    }
    setzeLaufzustand(true);
    emit seiteZeigen(Seite::Spieleintrag);
    emit serieGestartet();
}

void KopfSteuerung::spielerListeFuellen(const QString &kopf)
{
    m_spielerListe->clear();
    m_spielerListe->setHorizontalHeaderLabels({kopf});
    for (const QString &name : m_dienst.spielerNamen())
        m_spielerListe->appendRow(new QStandardItem(name));
}

void KopfSteuerung::spielerAusTextDateiLaden()
{
    const QString dateiName = SpielerDatei::dateiName();
    QString pfad = QStandardPaths::locate(QStandardPaths::DocumentsLocation, dateiName);
    if (pfad.isEmpty())
        pfad = QStandardPaths::locate(QStandardPaths::DownloadLocation, dateiName);
    QFile datei(pfad);
    if (pfad.isEmpty() || !datei.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    const QStringList namen = SpielerDatei::namenAusDatei(datei.readAll());
    QVector<SpielerDatensatz> spieler;
    for (int i = 0; i < namen.size(); ++i)
        spieler.append({100 + i, namen.at(i), true, true});
    const DienstErgebnis ergebnis = m_dienst.registerErsetzen(spieler);
    if (!ergebnis.ok())
        warnen(ergebnis.fehler);
    spielerListeFuellen(QStringLiteral("Vorname Nachname"));
}

void KopfSteuerung::ladeSpielerListe(const QStringList &liste)
{
    if (liste.isEmpty())
        return;
    QVector<SpielerDatensatz> spieler;
    for (const QString &eintrag : liste) {
        const std::optional<SpielerDatensatz> s = SpielerDatei::ausListenEintrag(eintrag);
        if (s && !s->name.isEmpty())
            spieler.append(*s);
    }
    const DienstErgebnis ergebnis = m_dienst.registerErsetzen(spieler);
    if (!ergebnis.ok())
        warnen(ergebnis.fehler);
    spielerListeFuellen(QStringLiteral("Vorname Nachname"));
}

int KopfSteuerung::spielerHinzufuegen(const QString &text)
{
    const std::optional<SpielerDatensatz> spieler = SpielerDatei::ausListenEintrag(text);
    if (!spieler || spieler->name.isEmpty())
        return 0;
    return m_dienst.spielerHinzufuegen(*spieler);
}

void KopfSteuerung::onSpielerSelected()
{
    onSpielerDoubleClicked(m_neu->lvRegistrierteSpieler->currentIndex());
}

void KopfSteuerung::onSpielerDoubleClicked(const QModelIndex &index)
{
    if (!index.isValid())
        return;
    const QString name = index.data().toString();
    const QList<QLineEdit *> felder = neueSpielerFelder();
    // A name already placed is not placed twice; otherwise it fills the first free field.
    for (QLineEdit *feld : felder) {
        if (feld->text() == name)
            return;
    }
    for (QLineEdit *feld : felder) {
        if (feld->isEnabled() && !feld->isHidden() && feld->text().isEmpty()) {
            feld->setText(name);
            return;
        }
    }
}
