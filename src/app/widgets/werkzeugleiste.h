#pragma once

// The tool bar of the main window: the list's name, then the bid button and
// field, the mode label and the countdown field, which belong to the parts
// that fill them, and the green message field.

#include <QToolBar>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

class Werkzeugleiste : public QToolBar
{
    Q_OBJECT

public:
    explicit Werkzeugleiste(QWidget *parent = nullptr);

    // Places the other parts' widgets in their order after the list's name.
    void teileEinsetzen(QPushButton *reizung, QLineEdit *reizwert, QLabel *modus,
                        QLineEdit *meldung);
    void listeBenennen(const QString &text);

protected:
    void changeEvent(QEvent *event) override;

private:
    void breitenAnpassen();

    QHBoxLayout *m_layout;
    QLabel *m_lblListe;
    QLineEdit *m_leReizwert = nullptr;
    QLineEdit *m_leMeldungRot = nullptr;
};

// Gives the text of a read-only field the colour in every colour group.
void textFarbeSetzen(QLineEdit *feld, const QColor &farbe);
