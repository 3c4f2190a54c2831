#include "app/widgets/werkzeugleiste.h"

#include <QEvent>
#include <QHBoxLayout>
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
    m_layout = layout;
    layout->setContentsMargins(4, 2, 4, 2);

    m_lblListe = new QLabel(QStringLiteral("Liste"), inhalt);
    m_lblListe->setObjectName(QStringLiteral("lblListe"));

    layout->addWidget(m_lblListe, 10);
    addWidget(inhalt);
}

void Werkzeugleiste::teileEinsetzen(QPushButton *reizung, QLineEdit *reizwert, QLabel *modus,
                                    QLineEdit *meldung)
{
    m_layout->insertWidget(1, reizung, 10);
    m_layout->insertWidget(2, reizwert, 10);
    m_layout->insertWidget(3, modus, 10);
    m_layout->insertWidget(4, meldung, 20);
    m_leReizwert = reizwert;
    m_leMeldungRot = meldung;
    breitenAnpassen();
}

void Werkzeugleiste::listeBenennen(const QString &text)
{
    m_lblListe->setText(text);
}

void Werkzeugleiste::changeEvent(QEvent *event)
{
    QToolBar::changeEvent(event);
    if (event->type() == QEvent::FontChange && m_leReizwert)
        breitenAnpassen();
}

void Werkzeugleiste::breitenAnpassen()
{
    // The countdown is the longest text of the red field; with the touch font the
    // stretch alone would cut it.
    const int rand = 16;
    m_leMeldungRot->setMinimumWidth(m_leMeldungRot->fontMetrics().horizontalAdvance(
                                        QStringLiteral("Verbleibende Zeit 120 Minuten")) +
                                    rand);
    m_leReizwert->setMinimumWidth(
        m_leReizwert->fontMetrics().horizontalAdvance(QStringLiteral("264")) + rand);
}
