#include "app/widgets/eingabedock.h"

#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

EingabeDock::EingabeDock(const QString &name, const QString &text, int wert, int von, int bis)
{
    setObjectName(name);
    setFeatures(QDockWidget::NoDockWidgetFeatures);
    setAllowedAreas(Qt::TopDockWidgetArea);
    auto *inhalt = new QWidget(this);
    auto *layout = new QHBoxLayout(inhalt);
    m_feld = new QLineEdit(QStringLiteral("%1").arg(wert), inhalt);
    m_feld->setObjectName(QStringLiteral("leWert"));
    m_feld->setValidator(new QIntValidator(von, bis, m_feld));
    auto *pbOk = new QPushButton(QStringLiteral("Ok"), inhalt);
    pbOk->setObjectName(QStringLiteral("pbDockOk"));
    pbOk->setAutoDefault(true);
    auto *pbAbbruch = new QPushButton(QStringLiteral("Abbruch"), inhalt);
    pbAbbruch->setObjectName(QStringLiteral("pbDockAbbruch"));
    layout->addWidget(new QLabel(text, inhalt), 20);
    layout->addWidget(m_feld, 20);
    layout->addWidget(pbOk, 30);
    layout->addWidget(pbAbbruch, 30);
    connect(pbOk, &QPushButton::clicked, this, &EingabeDock::ok);
    connect(pbAbbruch, &QPushButton::clicked, this, &EingabeDock::abbruch);
    setWidget(inhalt);
}

QString EingabeDock::text() const
{
    return m_feld->text();
}

void EingabeDock::entfernen()
{
    hide();
    deleteLater();
}
