#include "app/files/dateisteuerung.h"

#include "app/files/dockfileview.h"
#include "core/files/xmlprotokoll.h"
#include "core/service/einstellungen.h"
#include "core/service/listendienst.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>

DateiSteuerung::DateiSteuerung(QWidget *eltern, bool grosserBildschirm, ListenDienst &dienst,
                               Einstellungen &einstellungen)
    : QObject(eltern), m_eltern(eltern), m_grosserBildschirm(grosserBildschirm), m_dienst(dienst),
      m_einstellungen(einstellungen)
{
    m_sicherheitskopieTimer.setParent(this);
    m_sicherheitskopieTimer.setObjectName(QStringLiteral("sicherheitskopieTimer"));
    m_sicherheitskopieTimer.setInterval(m_einstellungen.sicherheitskopieIntervallMs());
    connect(&m_sicherheitskopieTimer, &QTimer::timeout, this,
            &DateiSteuerung::onSicherheitsKopieSpeichern);
    m_sicherheitskopieTimer.start();
    connect(&m_dienst, &ListenDienst::geaendert, this, [this](const ListenAenderung &aenderung) {
        if (aenderung.art == ListenAenderung::Einstellungen)
            sicherungsIntervallNeu();
    });
}

void DateiSteuerung::warnen(const QString &text)
{
    QMessageBox::warning(m_eltern, QStringLiteral("WARNUNG"), text);
}

bool DateiSteuerung::xmlSpeichern(const QString &pfad)
{
    const DienstErgebnis ergebnis = m_dienst.xmlSpeichern(pfad);
    if (!ergebnis.ok())
        warnen(ergebnis.fehler);
    return ergebnis.ok();
}

void DateiSteuerung::sicherungsIntervallNeu()
{
    // Setting the interval restarts the timer; a cost typed must not put the backup off.
    const int intervall = m_einstellungen.sicherheitskopieIntervallMs();
    if (intervall != m_sicherheitskopieTimer.interval())
        m_sicherheitskopieTimer.setInterval(intervall);
}

void DateiSteuerung::onSicherheitsKopieSpeichern()
{
    // Silent: the next tick tries again.
    m_dienst.sicherungSchreiben();
}

void DateiSteuerung::onLoadXml()
{
    const QString verzeichnis = m_dienst.datenVerzeichnis();
    QDir().mkpath(verzeichnis);
    // On a tablet the picker dock is easier to hit than a file dialog.
    if (!m_grosserBildschirm) {
        if (m_dockFileView)
            return;
        m_dockFileView = new DockFileView(verzeichnis);
        m_dockFileView->setFeatures(QDockWidget::NoDockWidgetFeatures);
        emit dockZeigen(m_dockFileView);
        connect(m_dockFileView, &DockFileView::accept, this, &DateiSteuerung::onLoadXmlOk);
        connect(m_dockFileView, &DockFileView::reject, this, &DateiSteuerung::onLoadXmlAbbruch);
        m_dockFileView->show();
        return;
    }
    const QString pfad =
        QFileDialog::getOpenFileName(m_eltern, QStringLiteral("XML-Datei oeffnen..."), verzeichnis,
                                     QStringLiteral("XML-Dateien (*.xml)"));
    if (!pfad.isEmpty())
        importieren(pfad);
}

void DateiSteuerung::onLoadXmlOk()
{
    if (!m_dockFileView)
        return;
    const QString datei = m_dockFileView->ausgewaehlteDatei();
    m_dockFileView->hide();
    if (!datei.isEmpty())
        importieren(QStringLiteral("%1/%2").arg(m_dienst.datenVerzeichnis(), datei));
    onLoadXmlAbbruch();
}

void DateiSteuerung::onLoadXmlAbbruch()
{
    if (!m_dockFileView)
        return;
    m_dockFileView->hide();
    m_dockFileView->deleteLater();
    m_dockFileView = nullptr;
}

void DateiSteuerung::importieren(const QString &pfad)
{
    QFile datei(pfad);
    if (!datei.open(QIODevice::ReadOnly)) {
        warnen(QStringLiteral("Die Datei\n%1\nkann nicht gelesen werden.").arg(pfad));
        return;
    }
    const auto gelesen = XmlProtokoll::lesen(datei.readAll());
    if (const auto *fehler = std::get_if<XmlFehler>(&gelesen)) {
        warnen(QStringLiteral("Die Datei\n%1\nist kein lesbares Protokoll.\nZeile %2: %3\nDie "
                              "laufende Liste bleibt unveraendert.")
                   .arg(pfad)
                   .arg(fehler->zeile)
                   .arg(fehler->text));
        return;
    }
    const XmlDaten &daten = std::get<XmlDaten>(gelesen);
    const DienstErgebnis ergebnis =
        m_dienst.protokollErsetzen(daten.kopf, daten.spieler, daten.spiele);
    if (!ergebnis.ok()) {
        warnen(QStringLiteral("Das Protokoll\n%1\nkonnte nicht uebernommen werden.\n%2")
                   .arg(pfad, ergebnis.fehler));
        return;
    }
    m_einstellungen.kostenSetzen(daten.kosten);
    m_einstellungen.vereinsnameSetzen(daten.verein);
    emit protokollGeladen();
    if (!ergebnis.hinweis.isEmpty())
        emit hinweis(ergebnis.hinweis);
}
