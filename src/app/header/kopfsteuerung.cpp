#include "app/header/kopfsteuerung.h"

#include "app/widgets/werkzeugleiste.h"
#include "core/files/spielerdatei.h"
#include "core/service/einstellungen.h"
#include "core/service/listendienst.h"
#include "ui_mainwindow.h"

#include <QFile>
#include <QMessageBox>
#include <QStandardItemModel>
#include <QStandardPaths>

namespace {
// They separate the fields of every network message.
const QString GruppenVerbot = QStringLiteral(":$@");
} // namespace

KopfSteuerung::KopfSteuerung(QMainWindow *fenster, Ui::MainWindow &ui, Werkzeugleiste &leiste,
                             ListenDienst &dienst, Einstellungen &einstellungen)
    : QObject(fenster), m_fenster(fenster), m_ui(ui), m_lblListe(leiste.lblListe), m_dienst(dienst),
      m_einstellungen(einstellungen), m_tabNeu(ui.tabNeu),
      m_spielerListe(new QStandardItemModel(this))
{
    // The new-protocol page is shown only while a protocol is being prepared.
    m_ui.tabWidget->removeTab(m_ui.tabWidget->indexOf(m_tabNeu));
    m_tabNeu->hide();
    m_spielerListe->setHorizontalHeaderLabels({QStringLiteral("Name")});
    m_ui.lvRegistrierteSpieler->setModel(m_spielerListe);
    m_ui.leListenName->setText(m_einstellungen.vereinsname());
    kopfZeigen();
    felderVerbinden();
    connect(&m_dienst, &ListenDienst::geaendert, this, &KopfSteuerung::listeGeaendert);
    connect(&m_einstellungen, &Einstellungen::vereinsnameGeaendert, this,
            [this](const QString &name) {
                if (m_ui.leListenName->text() != name)
                    m_ui.leListenName->setText(name);
            });
}

void KopfSteuerung::felderVerbinden()
{
    connect(m_ui.spbTischNr, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &KopfSteuerung::onTischNr);
    connect(m_ui.spbSerie, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &KopfSteuerung::onSerie);
    connect(m_ui.spbSpielAnzahl, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &KopfSteuerung::kopfAusFeldern);
    connect(m_ui.deDatum, &QDateEdit::dateChanged, this, &KopfSteuerung::kopfAusFeldern);
    connect(m_ui.leListenName, &QLineEdit::textChanged, this, &KopfSteuerung::onListenName);
    connect(m_ui.cmbGruppenId, &QComboBox::currentTextChanged, this,
            &KopfSteuerung::onChangeGruppenId);
    connect(m_ui.pbStartSpiel, &QPushButton::clicked, this, &KopfSteuerung::onStartSpiel);
    connect(m_ui.pbOk, &QPushButton::clicked, this, &KopfSteuerung::onNeuesProtokollOk);
    connect(m_ui.pbAbbruch, &QPushButton::clicked, this, &KopfSteuerung::onNeuesProtokollAbbruch);
    connect(m_ui.lvRegistrierteSpieler, &QListView::clicked, this,
            &KopfSteuerung::onSpielerSelected);
    connect(m_ui.lvRegistrierteSpieler, &QListView::doubleClicked, this,
            &KopfSteuerung::onSpielerDoubleClicked);
    connect(m_ui.pbSpielerAusTextdatei, &QPushButton::clicked, this,
            &KopfSteuerung::spielerAusTextDateiLaden);
}

void KopfSteuerung::warnen(const QString &text)
{
    QMessageBox::warning(m_fenster, QStringLiteral("WARNUNG"), text);
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
        m_ui.spbSpielAnzahl->setEnabled(false);
        break;
    default:
        break;
    }
}

void KopfSteuerung::kopfZeigen()
{
    const ListenKopf &kopf = m_dienst.kopf();
    const QSignalBlocker sperreTisch(m_ui.spbTischNr);
    const QSignalBlocker sperreSerie(m_ui.spbSerie);
    const QSignalBlocker sperreAnzahl(m_ui.spbSpielAnzahl);
    const QSignalBlocker sperreDatum(m_ui.deDatum);
    const QSignalBlocker sperreGruppe(m_ui.cmbGruppenId);
    m_ui.spbTischNr->setValue(kopf.tischNr);
    m_ui.spbSerie->setValue(kopf.serie);
    m_ui.spbSpielAnzahl->setValue(kopf.anzahlSpiele);
    m_ui.deDatum->setDate(kopf.datum);
    if (m_ui.cmbGruppenId->currentText() != kopf.gruppe)
        m_ui.cmbGruppenId->setEditText(kopf.gruppe);
    m_ui.leTischnrAnzeige->setText(QString::number(kopf.tischNr));
    m_ui.leSerie->setText(QString::number(kopf.serie));
}

void KopfSteuerung::kopfAusFeldern()
{
    ListenKopf kopf = m_dienst.kopf();
    kopf.tischNr = m_ui.spbTischNr->value();
    kopf.serie = m_ui.spbSerie->value();
    kopf.anzahlSpiele = m_ui.spbSpielAnzahl->value();
    kopf.datum = m_ui.deDatum->date();
    m_dienst.kopfAendern(kopf);
}

void KopfSteuerung::onTischNr(int nummer)
{
    m_ui.leTischnrAnzeige->setText(QString::number(nummer));
    kopfAusFeldern();
}

void KopfSteuerung::onSerie(int nummer)
{
    m_ui.leSerie->setText(QString::number(nummer));
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
            const QSignalBlocker sperre(m_ui.cmbGruppenId);
            m_ui.cmbGruppenId->setEditText(m_dienst.kopf().gruppe);
            return;
        }
    }
    ListenKopf kopf = m_dienst.kopf();
    kopf.gruppe = gruppe;
    m_dienst.kopfAendern(kopf);
}

void KopfSteuerung::gruppeVorgeben(const QString &gruppe)
{
    QComboBox *gruppen = m_ui.cmbGruppenId;
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
    if (m_ui.tabWidget->indexOf(m_tabNeu) < 0)
        onNewProtokoll();
    if (m_ui.tabWidget->indexOf(m_tabNeu) < 0)
        return;
    const QList<QLineEdit *> felder = neueSpielerFelder();
    for (int sitz = 0; sitz < felder.size(); ++sitz) {
        const QString sitzText = sitze.value(sitz);
        felder.at(sitz)->setText(sitzText.section(QLatin1Char('|'), 1, 1));
        if (!sitzText.isEmpty())
            spielerHinzufuegen(sitzText);
    }
    m_ui.chkSpielerBeibehalten->setChecked(false);
    m_ui.leNeuTischNr->setText(QString::number(tischNr));
    m_ui.leNeuSerie->setText(QString::number(serie));
}

void KopfSteuerung::setzeLaufzustand(bool laufend)
{
    for (QWidget *feld :
         {static_cast<QWidget *>(m_ui.spbSerie), static_cast<QWidget *>(m_ui.spbTischNr),
          static_cast<QWidget *>(m_ui.spbSpielAnzahl), static_cast<QWidget *>(m_ui.pbStartSpiel)})
        feld->setEnabled(!laufend);
    for (int index = 1; index <= 3; ++index)
        m_ui.tabWidget->setTabEnabled(index, laufend);
    emit laufzustandGeaendert(laufend);
}

void KopfSteuerung::anfangszustand()
{
    m_ui.tabWidget->setCurrentWidget(m_ui.tabBeschreibung);
    for (int index = 1; index <= 3; ++index)
        m_ui.tabWidget->setTabEnabled(index, false);
}

void KopfSteuerung::wiederherstellen()
{
    const QString gruppe = m_dienst.kopf().gruppe;
    QComboBox *gruppen = m_ui.cmbGruppenId;
    if (!gruppe.isEmpty() && gruppen->findText(gruppe, Qt::MatchFixedString) < 0) {
        const QSignalBlocker sperre(gruppen);
        gruppen->addItem(gruppe);
        gruppen->setCurrentIndex(gruppen->count() - 1);
        gruppen->setEnabled(false);
    }
    setzeLaufzustand(true);
    const int tischNr = m_dienst.kopf().tischNr;
    if (tischNr != 0)
        m_lblListe->setText(QStringLiteral("Erstliste Tisch %1").arg(tischNr));
}

void KopfSteuerung::protokollGeladen()
{
    m_lblListe->setText(QStringLiteral("XML-Liste Tisch %1").arg(m_dienst.kopf().tischNr));
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
    return {m_ui.leNeuSpieler1, m_ui.leNeuSpieler2, m_ui.leNeuSpieler3, m_ui.leNeuSpieler4};
}

void KopfSteuerung::onNewProtokoll()
{
    if (QMessageBox::question(m_fenster, QStringLiteral("FRAGE"),
                              QStringLiteral("Neues Protokoll?"),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    emit protokollWirdVorbereitet();
    m_ui.tabWidget->insertTab(5, m_tabNeu, QStringLiteral("Neu"));
    m_ui.tabWidget->setTabEnabled(5, true);
    m_tabNeu->show();
    m_ui.tabWidget->setCurrentWidget(m_tabNeu);

    spielerListeFuellen(QStringLiteral("Name"));
    for (QLineEdit *feld : neueSpielerFelder())
        feld->clear();
    m_ui.chkSpielerBeibehalten->setChecked(false);
    m_ui.spbSpielAnzahl->setValue(m_dienst.anzahlTeilnehmer() == 3 ? 36 : 48);
}

void KopfSteuerung::onNeuesProtokollAbbruch()
{
    setTabWidgetNeuToHide();
}

void KopfSteuerung::setTabWidgetNeuToHide()
{
    const int index = m_ui.tabWidget->indexOf(m_tabNeu);
    if (index >= 0) {
        m_ui.tabWidget->setTabEnabled(index, false);
        m_ui.tabWidget->removeTab(index);
    }
    m_tabNeu->hide();
    m_ui.tabWidget->setCurrentIndex(0);
}

void KopfSteuerung::onNeuesProtokollOk()
{
    std::optional<QStringList> namen;
    if (!m_ui.chkSpielerBeibehalten->isChecked()) {
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
    const int tischNr = m_ui.leNeuTischNr->text().toInt();
    const DienstErgebnis ergebnis =
        m_dienst.neuesProtokoll(tischNr, m_ui.leNeuSerie->text().toInt(), namen);
    if (!ergebnis.ok()) {
        warnen(ergebnis.fehler);
        return;
    }
    if (namen && namen->size() < 3)
        warnen(QStringLiteral("es muessen mindestens 3 Spieler eingetragen werden!"));
    emit protokollVorbereitet();
    setzeLaufzustand(false);
    setTabWidgetNeuToHide();
    m_lblListe->setText(QStringLiteral("Erstliste Tisch %1").arg(tischNr));
}

void KopfSteuerung::onStartSpiel()
{
    if (QMessageBox::question(
            m_fenster, QStringLiteral("FRAGE"),
            QStringLiteral("Sind Mitglied- und Preisskat-Eintragungen korrekt?\nSerie Starten?"),
            QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    const DienstErgebnis ergebnis = m_dienst.serieStarten();
    if (!ergebnis.ok()) {
        warnen(ergebnis.fehler);
        return;
    }
    setzeLaufzustand(true);
    m_ui.tabWidget->setCurrentWidget(m_ui.tabSpieleintrag);
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
    onSpielerDoubleClicked(m_ui.lvRegistrierteSpieler->currentIndex());
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
