#include "app/link/verbindungssteuerung.h"

#include "ui_netzwerkgruppe.h"

#include "core/service/einstellungen.h"
#include "velmora/client.h"

#include <QLabel>
#include <QMessageBox>

namespace {
const QString titel = QStringLiteral("Verbindung");
} // namespace

VerbindungsSteuerung::VerbindungsSteuerung(QObject *parent, Client &client,
                                           Einstellungen &einstellungen)
    : QObject(parent), m_gruppe(new QGroupBox), m_ui(new Ui::NetzwerkGruppe), m_client(client),
      m_anzeige(new QLabel)
{
    m_ui->setupUi(m_gruppe);
    m_anzeige->setObjectName(QStringLiteral("lblVerbindungsart"));
    m_ui->leTurnierschluessel->setText(einstellungen.turnierschluessel());
    connect(m_ui->leTurnierschluessel, &QLineEdit::editingFinished, this, [this, &einstellungen] {
        einstellungen.turnierschluesselSetzen(m_ui->leTurnierschluessel->text());
    });
    connect(&einstellungen, &Einstellungen::turnierschluesselGeaendert, m_ui->leTurnierschluessel,
            &QLineEdit::setText);
    felderZeigen(m_client.linkSettings());
    connect(m_ui->cmbVerbindung, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &VerbindungsSteuerung::felderSchalten);
    connect(m_ui->pbVerbindungUebernehmen, &QPushButton::clicked, this,
            &VerbindungsSteuerung::verbindungUebernehmen);
    connect(&m_client, &Client::linkStateChanged, this, &VerbindungsSteuerung::stand);
    connect(&m_client, &Client::sendRefused, this, [this](const QString &grund) {
        emit statusMeldung(QStringLiteral("Server hat eine Nachricht abgelehnt: %1").arg(grund), 0);
    });
    stand(m_client.linkOpen(), QString());
}

VerbindungsSteuerung::~VerbindungsSteuerung() = default;

void VerbindungsSteuerung::felderZeigen(const LinkSettings &einstellungen)
{
    const bool veranstaltung = einstellungen.mode == LinkSettings::Mode::Venue;
    m_ui->cmbVerbindung->setCurrentIndex(veranstaltung ? 1 : 0);
    m_ui->leServer->setText(einstellungen.broker);
    m_ui->leKennung->setText(einstellungen.identity);
    m_ui->leZugangsschluessel->setText(QString::fromLatin1(einstellungen.key.toHex()));
    felderSchalten();
}

void VerbindungsSteuerung::felderSchalten()
{
    const bool veranstaltung = m_ui->cmbVerbindung->currentIndex() == 1;
    m_ui->leServer->setEnabled(veranstaltung);
    m_ui->leKennung->setEnabled(veranstaltung);
    m_ui->leZugangsschluessel->setEnabled(veranstaltung);
}

void VerbindungsSteuerung::fehler(const QString &text)
{
    QMessageBox::warning(m_gruppe, titel, text);
}

void VerbindungsSteuerung::verbindungUebernehmen()
{
    LinkSettings neu;
    if (m_ui->cmbVerbindung->currentIndex() == 1) {
        neu.mode = LinkSettings::Mode::Venue;
        neu.broker = m_ui->leServer->text().trimmed();
        neu.identity = m_ui->leKennung->text().trimmed();
        const auto schluessel = LinkSettings::keyFromText(m_ui->leZugangsschluessel->text());
        neu.key = schluessel.value_or(QByteArray());
        if (!neu.brokerAddress()) {
            fehler(QStringLiteral("Server \"%1\" ist keine gueltige Adresse.\n"
                                  "Beispiel: 192.168.1.10:8883")
                       .arg(neu.broker));
            return;
        }
        if (!LinkSettings::identityValid(neu.identity)) {
            fehler(QStringLiteral("Die Kennung steht auf dem Zettel der Turnierleitung, "
                                  "z. B. tisch07."));
            return;
        }
        if (!schluessel || neu.key.size() < 8) {
            fehler(QStringLiteral("Der Schluessel besteht aus den Ziffern 0-9 und Buchstaben "
                                  "a-f vom Zettel der Turnierleitung."));
            return;
        }
    } else {
        // The venue's data stay for the next evening at a venue.
        const LinkSettings alt = m_client.linkSettings();
        neu.broker = alt.broker;
        neu.identity = alt.identity;
        neu.key = alt.key;
    }
    if (!neu.save()) {
        fehler(QStringLiteral("Die Verbindung konnte nicht gespeichert werden; "
                              "es bleibt bei der bisherigen."));
        felderZeigen(m_client.linkSettings());
        return;
    }
    // The client says which link it now has; the label follows that.
    m_client.setLinkSettings(neu);
}

void VerbindungsSteuerung::stand(bool offen, const QString &grund)
{
    const LinkSettings einstellungen = m_client.linkSettings();
    QString text = QStringLiteral("Verbindung: LAN (ohne Server)");
    if (m_client.linkMode() == LinkSettings::Mode::Venue) {
        text = offen ? QStringLiteral("Verbindung: Veranstaltung, Server %1 als %2")
                           .arg(einstellungen.broker, einstellungen.identity)
                     : QStringLiteral("Verbindung: Veranstaltung, Server %1 nicht erreicht")
                           .arg(einstellungen.broker);
        if (!offen && !grund.isEmpty())
            text += QStringLiteral(" (%1)").arg(grund);
    }
    m_anzeige->setText(text);
}
