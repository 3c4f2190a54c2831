#pragma once

// The "Spieleliste" tab: the paper score sheet of the list with its money
// account in tournament mode, the zoom buttons below it, the cost and point
// fields of the account on the settings tab, and the sheet as a PDF. The
// sheet follows every change of the list and of the account's values.

#include "core/service/einstellungen.h"

#include <QGroupBox>
#include <QObject>

#include <memory>

namespace Ui {
class BlattSeite;
class KostenGruppe;
} // namespace Ui

class ListenDienst;
class QLineEdit;
class Spielblatt;
struct ListenAenderung;

class BlattSteuerung : public QObject
{
    Q_OBJECT

public:
    // Builds the sheet on the page given and the account's group box.
    BlattSteuerung(QObject *parent, QWidget *seite, ListenDienst &dienst,
                   Einstellungen &einstellungen);
    ~BlattSteuerung() override;

    // The group box for the settings tab; whoever lays it out takes it over.
    QGroupBox *kostenGruppe() const { return m_kostenGruppe; }
    // Shows the Bierlachs round selector left of the zoom buttons.
    void rundenwahlEinsetzen(QWidget *wahl);

    void onZoomIn();
    void onZoomOut();
    // A value of the account as its field shows it, or as given.
    void kostenEingegeben(Einstellungen::Kosten wert);
    void kostenEingegeben(Einstellungen::Kosten wert, const QString &text);
    // Values pushed by the tournament manager: table, series and the twelve
    // cost fields joined with "|"; another table's or series' values are ignored.
    void kostenVomManager(const QStringList &werte);
    // The Bierlachs round the sheet shows; -1 for the newest.
    void rundeWaehlen(int index);
    // Writes the sheet as a one-page PDF into the data directory and answers
    // the path for the XML copy beside it; empty when a Bierlachs list, which
    // has no sheet to hand in, was asked for.
    QString pdfSpeichern(bool frageDateiname);
    QString pdfPfad() const;
    // The account once more, so its results go out again.
    void neuBerechnen() { fuellen(); }

signals:
    // Each player's result after every change of the account, in tournament mode.
    void ergebnisse(const QStringList &texte);
    void statusMeldung(const QString &text, int dauer);

protected:
    bool eventFilter(QObject *objekt, QEvent *ereignis) override;

private:
    void listeGeaendert(const ListenAenderung &aenderung);
    void kostenFelderEinrichten();
    void kostenFelderZeigen();
    QString kostenText(Einstellungen::Kosten wert) const;
    void kostenWertZeigen(Einstellungen::Kosten wert);
    bool kostenGueltig(Einstellungen::Kosten wert, QString text) const;
    // Shows the stored value again and says in the status bar what the field takes.
    void kostenZuruecksetzen(Einstellungen::Kosten wert);
    void kostenHinweis(Einstellungen::Kosten wert, const QString &zusatz);
    QLineEdit *kostenFeld(Einstellungen::Kosten wert) const;
    void kostenGeaendert(Einstellungen::Kosten wert);
    Spielblatt *aktuellesBlatt() const;
    void neuZeichnen();
    void kopfZeichnen();
    void fuellen();

    QWidget *m_seite;
    std::unique_ptr<Ui::BlattSeite> m_ui;
    QGroupBox *m_kostenGruppe;
    std::unique_ptr<Ui::KostenGruppe> m_kostenUi;
    ListenDienst &m_dienst;
    Einstellungen &m_einstellungen;
    std::unique_ptr<Spielblatt> m_blatt3;
    std::unique_ptr<Spielblatt> m_blatt4;
    double m_zoomFaktor = 1.0;
    int m_runde = -1;
};
