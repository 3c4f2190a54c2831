#pragma once

// For the window tests: a window on a running list, widgets by name, the entry panel, "Neu".

#include "app/mainwindow.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"
#include "helpers/testumgebung.h"

#include <QString>

class QAbstractItemModel;

namespace Fenster {

using TestProtokoll::lesen;
using TestUmgebung::einstellungen;

namespace detail {
// Built before the window: it opens the list, and every box it opens meanwhile is answered.
struct Vorbereitung
{
    Vorbereitung(int spieler, int anzahlSpiele, int modus, int tischNr);
    MeldungsBeantworter antworten;
};
} // namespace detail

// The window of table 5 (unless named) on a running list of three or four
// players (none: a first start); see TestProtokoll::anlegen.
struct Probe : detail::Vorbereitung, MainWindow
{
    explicit Probe(int spieler = 0, int anzahlSpiele = 48, int modus = 0, int tischNr = 5)
        : Vorbereitung(spieler, anzahlSpiele, modus, tischNr)
    {
    }
};

// The child of the given type and object name, null when there is none.
template <typename T> T *kind(QObject *fenster, const char *name)
{
    return fenster->findChild<T *>(QLatin1String(name));
}

// Clicks the child button with the given object name.
void klick(QWidget *fenster, const char *name);

// One game as the scorer sets it on the panel: game type button, one jack
// "Mit", result, declarer seat (-1 for none) and bid text.
struct Spiel
{
    const char *typ = "tbKreuz";
    int sitz = 0;
    bool gewonnen = true;
    QString reizung;
};

// Sets the panel, presses "Fertig" and "Übernehmen".
void eingeben(QWidget *fenster, const Spiel &spiel);

// The text the named child shows: a field's, a label's, a button's, a spin box's or the
// current one of a combo box.
QString text(QObject *fenster, const char *name);
QStringList texte(QObject *fenster, std::initializer_list<const char *> namen);

// The model of the named item view, and one column of a model as texts.
QAbstractItemModel *modell(QObject *fenster, const char *ansicht);
QStringList zellen(const QAbstractItemModel *modell, int spalte = 0);

// The object name of the page shown.
QString seite(QObject *fenster);

// Opens the "Neu" page unless it is open, fills names, table and series and
// presses the button.
void neuSeite(QWidget *fenster, const QStringList &namen, const char *knopf,
              const QString &tisch = QStringLiteral("7"),
              const QString &serie = QStringLiteral("2"));

// Opens the second list's dock unless it is open, types the table and confirms it.
void zweitlisteTisch(MainWindow &fenster, const QString &tisch);

// Shows the page with the given object name.
void seiteZeigen(QWidget *fenster, const char *seite);

// The status line's message.
QString status(MainWindow &fenster);

// A running list of four with the first games of an evening, entered after the statements.
bool mitSpielen(int spiele, int modus = 0, QStringList statements = {});

} // namespace Fenster
