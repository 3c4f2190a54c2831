#include "app/game/dockreizung.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QToolButton>
#include <QVector>

namespace {

// Large enough to hit with a finger on the touch screens at the tables.
constexpr QSize knopfGroesse(48, 40);

} // namespace

const QVector<int> &DockReizung::reizWerte()
{
    static const QVector<int> werte{18,  20,  22,  23,  24,  27,  30,  33,  35,  36,  40,  44,  45,
                                    46,  48,  50,  54,  55,  59,  60,  63,  66,  70,  72,  77,  80,
                                    81,  84,  88,  90,  96,  99,  100, 108, 110, 117, 120, 121, 126,
                                    130, 132, 135, 140, 143, 144, 150, 153, 154, 156, 160, 162, 165,
                                    168, 170, 176, 180, 187, 192, 198, 204, 216, 240, 264, 0};
    return werte;
}

DockReizung::DockReizung(QWidget *parent) : QDockWidget(parent)
{
    setObjectName(QStringLiteral("DockReizung"));

    auto *flaeche = new QWidget(this);
    m_layout = new QGridLayout(flaeche);
    m_layout->setHorizontalSpacing(5);
    m_layout->setVerticalSpacing(5);
    m_buttonGroup = new QButtonGroup(this);

    const QVector<int> &werte = reizWerte();
    for (int i = 0; i < werte.size(); ++i) {
        const int wert = werte.at(i);
        auto *knopf = new QToolButton(flaeche);
        // 0 is the only value that is not a bid; it closes the dock without one.
        knopf->setText(wert == 0 ? QStringLiteral("Abbruch") : QStringLiteral("%1").arg(wert));
        knopf->setMinimumSize(knopfGroesse);
        knopf->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        m_buttonGroup->addButton(knopf, wert);
        m_layout->addWidget(knopf, i / spaltenProZeile, i % spaltenProZeile);
    }
    setWidget(flaeche);

    connect(m_buttonGroup, &QButtonGroup::idClicked, this, &DockReizung::onButtonClicked);
}

void DockReizung::onButtonClicked(int id)
{
    emit reizWertSelected(id);
}
