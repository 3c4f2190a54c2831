#include "app/standings/modussteuerung.h"

#include "app/widgets/eingabedock.h"
#include "app/widgets/werkzeugleiste.h"
#include "core/service/einstellungen.h"
#include "core/service/listendienst.h"
#include "core/standings/spielmodus.h"
#include "core/standings/zeitlimit.h"

#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>

ModusSteuerung::ModusSteuerung(QObject *parent, ListenDienst &dienst, Einstellungen &einstellungen)
    : QObject(parent), m_lblModus(new QLabel(QStringLiteral("Turniermodus"))),
      m_leMeldungRot(new QLineEdit), m_dienst(dienst), m_einstellungen(einstellungen),
      m_blPunkte(dienst.kopf().blPunkte)
{
    m_lblModus->setObjectName(QStringLiteral("lblModus"));
    m_lblModus->setAlignment(Qt::AlignCenter);
    m_leMeldungRot->setObjectName(QStringLiteral("leMeldungRot"));
    m_leMeldungRot->setReadOnly(true);
    textFarbeSetzen(m_leMeldungRot, Qt::red);

    m_restZeitTimer.setParent(this);
    m_restZeitTimer.setObjectName(QStringLiteral("restZeitTimer"));
    // It starts with the wait to the stop time's schedule and then steps with it; to the
    // millisecond, since a coarse timer may land a second late and show one minute less.
    m_restZeitTimer.setTimerType(Qt::PreciseTimer);
    m_restZeitTimer.setInterval(Zeitlimit::schrittMs);
    connect(&m_restZeitTimer, &QTimer::timeout, this, [this] {
        if (m_restZeitTimer.interval() != Zeitlimit::schrittMs)
            m_restZeitTimer.setInterval(Zeitlimit::schrittMs);
        onZeigeRestZeitLimit();
    });
    connect(&m_dienst, &ListenDienst::geaendert, this, &ModusSteuerung::listeGeaendert);
}

void ModusSteuerung::listeGeaendert(const ListenAenderung &aenderung)
{
    const ListenKopf &kopf = m_dienst.kopf();
    if (kopf.blPunkte == m_blPunkte)
        return;
    m_blPunkte = kopf.blPunkte;
    // A Bierlachs list that sets its own points (its first game) shows them.
    if (aenderung.art == ListenAenderung::Kopf && kopf.modus == Spielmodus::Bierlachs)
        modusZeigen(Spielmodus::menuText(kopf.modus, kopf.blPunkte));
}

void ModusSteuerung::modusZeigen(const QString &text)
{
    m_lblModus->setText(text);
}

void ModusSteuerung::modusSetzen(int modus)
{
    ListenKopf kopf = m_dienst.kopf();
    kopf.modus = modus;
    m_dienst.kopfAendern(kopf);
    modusZeigen(Spielmodus::menuText(modus, kopf.blPunkte));
}

void ModusSteuerung::onSetModusTurnier()
{
    modusSetzen(Spielmodus::Turnier);
    if (!m_dockZeitLimit) {
        m_dockZeitLimit =
            new EingabeDock(QStringLiteral("DockZeitLimit"),
                            QStringLiteral("Zeitlimit pro Serie in Minuten eingeben..."),
                            m_zeitLimitMinuten, 0, 1000);
        connect(m_dockZeitLimit, &EingabeDock::ok, this, &ModusSteuerung::onZeitLimitOk);
        connect(m_dockZeitLimit, &EingabeDock::abbruch, this, &ModusSteuerung::onZeitLimitAbbruch);
        emit dockZeigen(m_dockZeitLimit);
    }
    m_dockZeitLimit->show();
}

void ModusSteuerung::onSetModusErgebnis()
{
    modusSetzen(Spielmodus::Ergebnis);
}

void ModusSteuerung::onSetModusBierlachs()
{
    modusSetzen(Spielmodus::Bierlachs);
    if (!m_dockBierlachs) {
        m_dockBierlachs = new EingabeDock(QStringLiteral("DockBierlachs"),
                                          QStringLiteral("Bierlachs Maximal Punkte eingeben..."),
                                          m_dienst.kopf().blPunkte, 100, 1000);
        connect(m_dockBierlachs, &EingabeDock::ok, this,
                &ModusSteuerung::onBierlachsModusMaxPunkteOk);
        connect(m_dockBierlachs, &EingabeDock::abbruch, this,
                &ModusSteuerung::onBierlachsModusMaxPunkteAbbruch);
        emit dockZeigen(m_dockBierlachs);
    }
    m_dockBierlachs->show();
}

void ModusSteuerung::onZeitLimitOk()
{
    if (!m_dockZeitLimit)
        return;
    const QString text = m_dockZeitLimit->text();
    m_zeitLimitMinuten = text.isEmpty() ? 120 : text.toInt();
    m_dockZeitLimit->entfernen();
}

void ModusSteuerung::onZeitLimitAbbruch()
{
    if (m_dockZeitLimit)
        m_dockZeitLimit->entfernen();
}

void ModusSteuerung::onBierlachsModusMaxPunkteOk()
{
    if (!m_dockBierlachs || m_dockBierlachs->text().isEmpty())
        return;
    ListenKopf kopf = m_dienst.kopf();
    kopf.blPunkte = m_dockBierlachs->text().toInt();
    m_dockBierlachs->entfernen();
    m_dienst.kopfAendern(kopf);
    modusZeigen(Spielmodus::menuText(kopf.modus, kopf.blPunkte));
    QCoreApplication::processEvents();
}

void ModusSteuerung::onBierlachsModusMaxPunkteAbbruch()
{
    if (m_dockBierlachs)
        m_dockBierlachs->entfernen();
}

void ModusSteuerung::serieGestartet()
{
    const ListenKopf &kopf = m_dienst.kopf();
    if (kopf.modus == Spielmodus::Turnier)
        zeitLimitStarten();
    else if (kopf.modus == Spielmodus::Bierlachs && kopf.blPunkte > 0)
        modusZeigen(Spielmodus::menuText(kopf.modus, kopf.blPunkte));
}

void ModusSteuerung::wiederherstellen()
{
    const ListenKopf &kopf = m_dienst.kopf();
    modusZeigen(Spielmodus::wiederherstellungsText(kopf.modus, kopf.blPunkte));
    emit modusGewaehlt(kopf.modus);

    const QTime gespeichert = Zeitlimit::ausText(m_einstellungen.spielstopzeit());
    if (!gespeichert.isValid() || !Zeitlimit::fortsetzen(QTime::currentTime(), gespeichert))
        return;
    m_stopZeit = gespeichert;
    m_restZeitTimer.start(Zeitlimit::bisSchrittMs(QTime::currentTime(), m_stopZeit));
    onZeigeRestZeitLimit();
}

void ModusSteuerung::protokollGeladen()
{
    const int modus = m_dienst.kopf().modus;
    modusZeigen(Spielmodus::menuText(modus, m_dienst.kopf().blPunkte));
    emit modusGewaehlt(modus);
}

void ModusSteuerung::restZeitZeigen(const QString &text, bool rot)
{
    textFarbeSetzen(m_leMeldungRot, rot ? Qt::red : Qt::darkGreen);
    m_leMeldungRot->setText(text);
}

void ModusSteuerung::zeitLimitStarten()
{
    m_stopZeit = Zeitlimit::stopZeit(QTime::currentTime(), m_zeitLimitMinuten);
    restZeitZeigen(QStringLiteral("Verbleibende Zeit %1 Minuten").arg(m_zeitLimitMinuten), false);
    m_restZeitTimer.start(Zeitlimit::bisSchrittMs(QTime::currentTime(), m_stopZeit));
    m_einstellungen.spielstopzeitSetzen(Zeitlimit::alsText(m_stopZeit));
}

void ModusSteuerung::onZeigeRestZeitLimit()
{
    const ZeitAnzeige anzeige =
        Zeitlimit::schritt(QTime::currentTime(), m_stopZeit, m_zeitLimitMinuten);
    if (anzeige.zustand == ZeitAnzeige::Ueberschritten) {
        m_restZeitTimer.stop();
        m_leMeldungRot->setText(anzeige.text);
        return;
    }
    restZeitZeigen(anzeige.text, anzeige.rot);
    if (anzeige.zustand == ZeitAnzeige::Abgelaufen) {
        m_restZeitTimer.stop();
        QMessageBox::information(m_lblModus, QStringLiteral("INFO"),
                                 QStringLiteral("Spielzeit abgelaufen!"), QMessageBox::Ok);
    }
}
