#pragma once

// The four score fields under the entry panel: each seat's running score
// (with Seeger-Fabian points in a tournament when so set), the declarer of the
// last game highlighted, and in a Bierlachs evening the points left per round
// with the round selector below the sheet. While a series runs the fields
// follow every change of the list.

#include <QObject>

class Einstellungen;
class ListenDienst;
class QLineEdit;
class QMainWindow;
struct BierlachsRunde;
struct ListenAenderung;

namespace Ui {
class MainWindow;
}

class StandSteuerung : public QObject
{
    Q_OBJECT

public:
    StandSteuerung(QMainWindow *fenster, Ui::MainWindow &ui, ListenDienst &dienst,
                   const Einstellungen &einstellungen);

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

protected:
    bool eventFilter(QObject *objekt, QEvent *ereignis) override;

private:
    void farbenSetzen(QLineEdit *feld, bool hervorgehoben) const;
    void listeGeaendert(const ListenAenderung &aenderung);
    void aktualisieren();
    void bierlachsRundeZeigen(const BierlachsRunde &runde);
    QList<QLineEdit *> felder() const;

    QMainWindow *m_fenster;
    Ui::MainWindow &m_ui;
    ListenDienst &m_dienst;
    const Einstellungen &m_einstellungen;
    bool m_laeuft = false;
    int m_hervorgehoben = -1;
    // What the fields were last computed for, so a header edit that changes
    // neither leaves them alone.
    int m_modus = -1;
    int m_blPunkte = -1;
};
