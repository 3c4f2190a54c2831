#include "app/widgets/werkzeugleiste.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

void textFarbeSetzen(QLineEdit *feld, const QColor &farbe)
{
    // Under the application's style sheet a palette set on a widget is replaced by the one
    // saved when it was first polished; a style sheet of the widget's own is kept.
    feld->setStyleSheet(QStringLiteral("QLineEdit { color: %1; }").arg(farbe.name()));
}

Werkzeugleiste::Werkzeugleiste(QWidget *parent) : QToolBar(parent)
{
    setObjectName(QStringLiteral("toolBar"));
    setMovable(false);

    auto *inhalt = new QWidget(this);
    auto *layout = new QHBoxLayout(inhalt);
    layout->setContentsMargins(4, 2, 4, 2);

    lblListe = new QLabel(QStringLiteral("Liste"), inhalt);
    lblListe->setObjectName(QStringLiteral("lblListe"));
    pbReizung = new QPushButton(QStringLiteral("Reizung"), inhalt);
    pbReizung->setObjectName(QStringLiteral("pbReizung"));
    leReizwert = new QLineEdit(inhalt);
    leReizwert->setObjectName(QStringLiteral("leReizwert"));
    leReizwert->setReadOnly(true);
    leReizwert->setValidator(new QIntValidator(18, 264, leReizwert));
    leReizwert->setMaximumWidth(100);
    lblModus = new QLabel(QStringLiteral("Turniermodus"), inhalt);
    lblModus->setObjectName(QStringLiteral("lblModus"));
    lblModus->setAlignment(Qt::AlignCenter);
    leMeldungRot = new QLineEdit(inhalt);
    leMeldungRot->setObjectName(QStringLiteral("leMeldungRot"));
    leMeldungRot->setReadOnly(true);
    textFarbeSetzen(leMeldungRot, Qt::red);
    leMeldungGruen = new QLineEdit(inhalt);
    leMeldungGruen->setObjectName(QStringLiteral("leMeldungGruen"));
    leMeldungGruen->setReadOnly(true);
    textFarbeSetzen(leMeldungGruen, Qt::darkGreen);

    layout->addWidget(lblListe, 10);
    layout->addWidget(pbReizung, 10);
    layout->addWidget(leReizwert, 10);
    layout->addWidget(lblModus, 10);
    layout->addWidget(leMeldungRot, 20);
    layout->addWidget(leMeldungGruen, 40);
    addWidget(inhalt);
    breitenAnpassen();
}

void Werkzeugleiste::changeEvent(QEvent *event)
{
    QToolBar::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        breitenAnpassen();
}

void Werkzeugleiste::breitenAnpassen()
{
    // The countdown is the longest text of the red field; with the touch font the
    // stretch alone would cut it.
    const int rand = 16;
    leMeldungRot->setMinimumWidth(leMeldungRot->fontMetrics().horizontalAdvance(
                                      QStringLiteral("Verbleibende Zeit 120 Minuten")) +
                                  rand);
    leReizwert->setMinimumWidth(leReizwert->fontMetrics().horizontalAdvance(QStringLiteral("264")) +
                                rand);
}
