#include "helpers/fensterhilfe.h"

#include "core/db/protokolldatenbank.h"

#include <QSqlQuery>
#include <QtWidgets>

namespace Fenster {

void klick(QWidget *fenster, const char *name)
{
    if (auto *knopf = kind<QAbstractButton>(fenster, name))
        knopf->click();
    else
        qWarning("kein Knopf %s", name);
}

void eingeben(QWidget *fenster, const Spiel &spiel)
{
    klick(fenster, spiel.typ);
    klick(fenster, "tbMit");
    klick(fenster, "tb1");
    klick(fenster, spiel.gewonnen ? "tbGewonnen" : "tbVerloren");
    if (spiel.sitz >= 0)
        klick(fenster, qPrintable(QStringLiteral("tbSpieler%1").arg(spiel.sitz + 1)));
    kind<QLineEdit>(fenster, "leReizwert")->setText(spiel.reizung);
    klick(fenster, "pbFertig");
    klick(fenster, "pbInListeEintragen");
}

QString text(QWidget *fenster, const char *name)
{
    return kind<QLineEdit>(fenster, name)->text();
}

QSettings einstellungen()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Ormindo"),
                     QStringLiteral("Kartulo"));
}

QStringList lesen(const QString &abfrage)
{
    QStringList werte;
    QSqlQuery query(QSqlDatabase::database(ProtokollDatenbank::verbindungsName()));
    query.exec(abfrage);
    while (query.next())
        werte << query.value(0).toString();
    return werte;
}

} // namespace Fenster
