#include "helpers/fensterhilfe.h"

#include "helpers/testprotokoll.h"

#include <QtWidgets>

namespace Fenster {

detail::Vorbereitung::Vorbereitung(int spieler, int anzahlSpiele, int modus, int tischNr)
{
    if (spieler > 0 && !TestProtokoll::anlegen(spieler, anzahlSpiele, modus, tischNr))
        QTest::qFail("Die Liste wurde nicht angelegt.", __FILE__, __LINE__);
}

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

void neuSeite(QWidget *fenster, const QStringList &namen, const char *knopf, const QString &tisch,
              const QString &serie)
{
    auto *seiten = kind<QTabWidget>(fenster, "tabWidget");
    if (seiten->indexOf(kind<QWidget>(fenster, "tabNeu")) < 0)
        kind<QAction>(fenster, "actionNeu")->trigger();
    for (int i = 0; i < 4; ++i)
        fenster->findChild<QLineEdit *>(QStringLiteral("leNeuSpieler%1").arg(i + 1))
            ->setText(namen.value(i));
    kind<QLineEdit>(fenster, "leNeuTischNr")->setText(tisch);
    kind<QLineEdit>(fenster, "leNeuSerie")->setText(serie);
    klick(fenster, knopf);
}

void seiteZeigen(QWidget *fenster, const char *seite)
{
    kind<QTabWidget>(fenster, "tabWidget")->setCurrentWidget(kind<QWidget>(fenster, seite));
    QCoreApplication::processEvents();
}

QString status(MainWindow &fenster)
{
    return fenster.statusBar()->currentMessage();
}

} // namespace Fenster
