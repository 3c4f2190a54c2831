#include "helpers/fensterhilfe.h"

#include <QAbstractButton>
#include <QLineEdit>

namespace Fenster {

void klick(QWidget *fenster, const char *name)
{
    auto *knopf = fenster->findChild<QAbstractButton *>(QLatin1String(name));
    if (!knopf) {
        qWarning("kein Knopf %s", name);
        return;
    }
    knopf->click();
}

void eingeben(QWidget *fenster, const Spiel &spiel)
{
    klick(fenster, spiel.typ);
    klick(fenster, "tbMit");
    klick(fenster, "tb1");
    klick(fenster, spiel.gewonnen ? "tbGewonnen" : "tbVerloren");
    if (spiel.sitz >= 0)
        klick(fenster, qPrintable(QStringLiteral("tbSpieler%1").arg(spiel.sitz + 1)));
    fenster->findChild<QLineEdit *>(QStringLiteral("leReizwert"))->setText(spiel.reizung);
    klick(fenster, "pbFertig");
    klick(fenster, "pbInListeEintragen");
}

QString text(QWidget *fenster, const char *name)
{
    auto *feld = fenster->findChild<QLineEdit *>(QLatin1String(name));
    return feld ? feld->text() : QStringLiteral("<kein %1>").arg(QLatin1String(name));
}

QSettings einstellungen()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Ormindo"),
                     QStringLiteral("Kartulo"));
}

} // namespace Fenster
