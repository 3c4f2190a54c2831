#pragma once

// The tool bar of the main window: list label, bid button and field, mode
// label and the two message fields. The window's parts each use the widgets
// that concern them.

#include <QToolBar>

class QLabel;
class QLineEdit;
class QPushButton;

class Werkzeugleiste : public QToolBar
{
    Q_OBJECT

public:
    explicit Werkzeugleiste(QWidget *parent = nullptr);

    QLabel *lblListe;
    QPushButton *pbReizung;
    QLineEdit *leReizwert;
    QLabel *lblModus;
    QLineEdit *leMeldungRot;
    QLineEdit *leMeldungGruen;

protected:
    void changeEvent(QEvent *event) override;

private:
    void breitenAnpassen();
};

// Gives the text of a read-only field the colour in every colour group.
void textFarbeSetzen(QLineEdit *feld, const QColor &farbe);
