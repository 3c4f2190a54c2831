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
    for (const char *knopf :
         {spiel.typ, "tbMit", "tb1", spiel.gewonnen ? "tbGewonnen" : "tbVerloren"})
        klick(fenster, knopf);
    if (spiel.sitz >= 0)
        klick(fenster, qPrintable(QStringLiteral("tbSpieler%1").arg(spiel.sitz + 1)));
    kind<QLineEdit>(fenster, "leReizwert")->setText(spiel.reizung);
    klick(fenster, "pbFertig");
    klick(fenster, "pbInListeEintragen");
}

QString text(QObject *fenster, const char *name)
{
    QObject *w = kind<QWidget>(fenster, name);
    return w->property(qobject_cast<QComboBox *>(w) ? "currentText" : "text").toString();
}

QStringList texte(QObject *fenster, std::initializer_list<const char *> namen)
{
    QStringList texte;
    for (const char *name : namen)
        texte << text(fenster, name);
    return texte;
}

QAbstractItemModel *modell(QObject *fenster, const char *ansicht)
{
    return kind<QAbstractItemView>(fenster, ansicht)->model();
}

QStringList zellen(const QAbstractItemModel *modell, int spalte)
{
    QStringList texte;
    for (int zeile = 0; zeile < modell->rowCount(); ++zeile)
        texte << modell->index(zeile, spalte).data().toString();
    return texte;
}

QString seite(QObject *fenster)
{
    return kind<QTabWidget>(fenster, "tabWidget")->currentWidget()->objectName();
}

void neuSeite(QWidget *fenster, const QStringList &namen, const char *knopf, const QString &tisch,
              const QString &serie)
{
    if (kind<QTabWidget>(fenster, "tabWidget")->indexOf(kind<QWidget>(fenster, "tabNeu")) < 0)
        kind<QAction>(fenster, "actionNeu")->trigger();
    for (int i = 0; i < 4; ++i)
        fenster->findChild<QLineEdit *>(QStringLiteral("leNeuSpieler%1").arg(i + 1))
            ->setText(namen.value(i));
    kind<QLineEdit>(fenster, "leNeuTischNr")->setText(tisch);
    kind<QLineEdit>(fenster, "leNeuSerie")->setText(serie);
    klick(fenster, knopf);
}

void zweitlisteTisch(MainWindow &fenster, const QString &tisch)
{
    if (!kind<QDockWidget>(&fenster, "DockZweitliste"))
        fenster.startZweitProtokoll();
    kind<QDockWidget>(&fenster, "DockZweitliste")->findChild<QLineEdit *>()->setText(tisch);
    fenster.onZweitListenTischNrOk();
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

bool mitSpielen(int spiele, int modus, QStringList statements)
{
    for (const SpielEintrag &e : TestProtokoll::abend(spiele, 4))
        statements << Sql::spielEinfuegen(e);
    return TestProtokoll::anlegen(4, 48, modus) && TestProtokoll::sql(statements);
}

} // namespace Fenster
