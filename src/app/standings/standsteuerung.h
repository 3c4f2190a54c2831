#pragma once

// The four score fields under the entry panel: each seat's running score
// (with Seeger-Fabian points in a tournament when so set), the declarer of the
// last game highlighted, and in a Bierlachs evening the points left per round
// with the round selector below the sheet. While a series runs the fields
// follow every change of the list.

#include <QComboBox>
#include <QGroupBox>
#include <QObject>

#include <memory>

namespace Ui {
class SpielstandGruppe;
}

class Einstellungen;
class ListenDienst;
class QLineEdit;
struct BierlachsRunde;
struct ListenAenderung;

class StandSteuerung : public QObject
{
    Q_OBJECT

public:
    StandSteuerung(QObject *parent, ListenDienst &dienst, const Einstellungen &einstellungen);
    ~StandSteuerung() override;

    // The score fields and the Bierlachs round selector, for whoever lays them out.
    QGroupBox *anzeige() const { return m_gruppe; }
    QComboBox *rundenWahl() const { return m_runden; }

    void punkteSetzen(int sitz, const QString &text);
    // Green behind the seat's field, white behind the others.
    void hervorheben(int sitz);
    void leeren();
    // Shows the Bierlachs round chosen on the selector.
    void rundeZeigen(int index);
    // After a game: asks for a new round when this game ended the Bierlachs round.
    void rundenEndePruefen();
    void laufzustandSetzen(bool laufend);

signals:
    // The lines of the four seats, for their fields.
    void zeilen(const QStringList &zeilen);
    // The scorer chose a Bierlachs round.
    void rundeGewaehlt(int index);
    void statusMeldung(const QString &text, int dauer);

protected:
    bool eventFilter(QObject *objekt, QEvent *ereignis) override;

private:
    void farbenSetzen(QLineEdit *feld, bool hervorgehoben) const;
    void listeGeaendert(const ListenAenderung &aenderung);
    void aktualisieren();
    void bierlachsRundeZeigen(const BierlachsRunde &runde);
    QList<QLineEdit *> felder() const;

    QGroupBox *m_gruppe;
    std::unique_ptr<Ui::SpielstandGruppe> m_ui;
    QComboBox *m_runden;
    ListenDienst &m_dienst;
    const Einstellungen &m_einstellungen;
    bool m_laeuft = false;
    int m_hervorgehoben = -1;
    // What the fields were last computed for, so a header edit that changes
    // neither leaves them alone.
    int m_modus = -1;
    int m_blPunkte = -1;
};
