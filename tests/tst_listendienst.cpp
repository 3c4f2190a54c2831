// The list being kept: opening, every change with its journal entry and its
// announcement, and that a change that cannot be stored leaves database,
// memory and journal as they were; and the settings store.

#include "core/db/statements.h"
#include "core/service/einstellungen.h"
#include "core/service/listendienst.h"
#include "core/standings/spielmodus.h"
#include "helpers/faelle.h"
#include "helpers/testprotokoll.h"
#include "helpers/testumgebung.h"

#include <QRegularExpression>
#include <QSettings>

using namespace TestProtokoll;
using Zustand = ProtokollDatenbank::Zustand;

namespace {

using S = SpielEintrag;

QString name(Zustand zustand)
{
    return QStringList{"Unbenutzbar", "Fremd", "Neu", "OhneSpieler", "Gespeichert"}.value(
        int(zustand));
}

SpielEintrag spiel(int sitz, int wert)
{
    SpielEintrag e;
    e.setze(S::Spiel, 12);
    e.setze(S::Mit, 1);
    e.setze(wert > 0 ? S::Gewonnen : S::Verloren, qAbs(wert));
    e.setze(static_cast<S::Spalte>(S::Spieler1 + sitz), wert);
    return e;
}

// Numbers, declarer columns and (from the database) header and participant rows.
QString alsText(const QVector<QList<int>> &spalten)
{
    QStringList teile;
    for (const QList<int> &werte : spalten) {
        QStringList texte;
        for (int wert : werte)
            texte << QString::number(wert);
        teile << texte.join(QLatin1Char(' '));
    }
    return teile.join(QLatin1String(" | "));
}

// The list as the database holds it, read through a connection of its own.
QString gespeichert(bool mitKopf = true)
{
    QVector<QList<int>> spalten;
    for (const char *name : {"Zeile", "Spieler1", "Spieler2", "Spieler3"})
        spalten << spalte("SpielListe", QLatin1String(name));
    if (mitKopf)
        spalten << QList<int>{zeilen("Settings"), zeilen("Teilnehmer")};
    return alsText(spalten);
}

QString imSpeicher(const ListenDienst &dienst)
{
    QVector<QList<int>> spalten(4);
    for (const SpielEintrag &e : dienst.spiele()) {
        for (int i = 0; i < 4; ++i)
            spalten[i] << e[i == 0 ? S::Zeile : static_cast<S::Spalte>(S::Spieler1 + i - 1)];
    }
    return alsText(spalten);
}

QByteArray jornal()
{
    QFile datei(TestUmgebung::datenVerzeichnis() + QStringLiteral("/jornal.json"));
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
}

// Records what the list announces, as "Art:zeile".
struct Meldungen : QStringList
{
    explicit Meldungen(ListenDienst &dienst)
    {
        QObject::connect(&dienst, &ListenDienst::geaendert, [this](const ListenAenderung &a) {
            append(QStringLiteral("%1:%2")
                       .arg(QLatin1String(
                           QMetaEnum::fromType<ListenAenderung::Art>().valueToKey(a.art)))
                       .arg(a.zeile));
        });
    }
};

// Makes every write of the kind fail inside the database, as a full disk or a lock would.
void sperren(const char *ereignis)
{
    QVERIFY(sql({QStringLiteral("CREATE TRIGGER sperre BEFORE %1 BEGIN SELECT RAISE(ABORT, "
                                "'gesperrt'); END")
                     .arg(QLatin1String(ereignis))}));
}

// The list on the test's data folder, opened.
struct Offen : ListenDienst
{
    explicit Offen(const Einstellungen &e) : ListenDienst(TestUmgebung::datenVerzeichnis(), e)
    {
        oeffnen();
    }
};

} // namespace

class TstListenDienst : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void oeffnen_data();
    void oeffnen();
    void halbAngelegt();
    void eintragen();
    void listenEnde_data();
    void listenEnde();
    void aendernUndEntfernen_data();
    void aendernUndEntfernen();
    void schreibfehler_data();
    void schreibfehler();
    void gesperrt_data();
    void gesperrt();
    void besetztBeimOeffnen();
    void neuesProtokoll();
    void protokollErsetzen();
    void archiv_data();
    void archiv();
    void nummern_data();
    void nummern();
    void sitze();
    void anweisungen_data();
    void anweisungen();
    void einstellungen();

private:
    Einstellungen m_einstellungen;
};

void TstListenDienst::init()
{
    TestUmgebung::allesLoeschen();
}

void TstListenDienst::oeffnen_data()
{
    Faelle::laden("oeffnen.tsv");
}

void TstListenDienst::oeffnen()
{
    QFETCH(QStringList, statements);
    QFETCH(QByteArray, inhalt);
    QFETCH(QString, zustand);
    if (statements.value(0) == QLatin1String("*")) {
        QVERIFY(anlegen(3, 36, Spielmodus::Ergebnis, 7));
        QVERIFY(sql({Sql::spielEinfuegen(spiel(1, 24)), "UPDATE SpielListe SET Zeile = 1"}));
        statements.removeFirst();
    }
    QVERIFY(sql(statements));
    if (!inhalt.isEmpty()) {
        QFile datei(TestUmgebung::datenbankDatei());
        QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size());
    }
    const QString vorher = gespeichert();
    {
        ListenDienst dienst(TestUmgebung::datenVerzeichnis(), m_einstellungen);
        Meldungen meldungen(dienst);
        QCOMPARE(name(dienst.oeffnen()), zustand);
        QCOMPARE(meldungen, QStringList{"ListeNeu:0"});
        if (zustand == QLatin1String("Fremd")) {
            // Nothing is written into a file that is not Kartulo's, and nothing breaks.
            QVERIFY(!dienst.benutzbar() && !dienst.fehler().isEmpty());
            QCOMPARE(dienst.spielEintragen(spiel(1, 24)).art, EintragErgebnis::Fehler);
            QVERIFY(!dienst.neuesProtokoll(1, 1, QStringList{"Eva"}).ok());
            // A reset only looks again, and tells the scorer to move the file aside.
            QVERIFY(dienst.zuruecksetzen().ok() && !dienst.benutzbar());
            QVERIFY(dienst.fehlerText().contains(QLatin1String("beiseite")));
        } else if (zustand == QLatin1String("OhneSpieler")) {
            // Games without a registry stay in the file, but are no list to continue.
            QVERIFY(dienst.spiele().isEmpty());
        } else {
            QCOMPARE(imSpeicher(dienst), gespeichert(false));
        }
        // A saved list comes back with its header and its seats.
        if (zustand == QLatin1String("Gespeichert"))
            QCOMPARE(QStringList({QString::number(dienst.kopf().tischNr),
                                  QString::number(dienst.listenTyp()),
                                  QString::number(dienst.geber()), dienst.teilnehmerName(2)}),
                     QStringList({"7", "3", "1", "Clara"}));
    }
    if (zustand == QLatin1String("Neu"))
        QCOMPARE(gespeichert(), QStringLiteral(" |  |  |  | 0 0"));
    else
        QCOMPARE(gespeichert(), vorher);
    QFile datei(TestUmgebung::datenbankDatei());
    if (!inhalt.isEmpty() && datei.open(QIODevice::ReadOnly))
        QCOMPARE(datei.readAll(), inhalt);
}

// A first start that died while it made the tables, or another hand, left some of them: the
// others are made, a new list archives the games found, and the list can be kept.
void TstListenDienst::halbAngelegt()
{
    QVERIFY(sql({Sql::CreateSpielListe, Sql::spielEinfuegen(TestProtokoll::abend(1, 3).first())}));
    ListenDienst dienst(TestUmgebung::datenVerzeichnis(), m_einstellungen);
    QCOMPARE(dienst.oeffnen(), Zustand::OhneSpieler);
    QVERIFY(dienst.neuesProtokoll(1, 1, QStringList{"Eva", "Fritz", "Gerd"}).ok());
    QCOMPARE(zeilen("Spieler"), 3);
    QCOMPARE(QDir(dienst.archivVerzeichnis()).entryList(QDir::Files).size(), 1);
}

void TstListenDienst::eintragen()
{
    QVERIFY(anlegen(4, 48));
    // A game an earlier list left without a registry goes to the archive, not into this list.
    QVERIFY(sql({"DELETE FROM Settings", "DELETE FROM Teilnehmer WHERE Name = 'Dora'",
                 "DELETE FROM Spieler", Sql::spielEinfuegen(TestProtokoll::abend(1, 4).first())}));
    Offen dienst(m_einstellungen);
    QVERIFY(dienst.listenTypSetzen(4).ok());
    QVERIFY(dienst.serieStarten().ok());
    // The name typed for the new fourth seat is stored with the first game.
    dienst.teilnehmerModell()->setData(dienst.teilnehmerModell()->index(3, 1), "Dora");
    QVERIFY(sql({"DELETE FROM Settings"}));
    Meldungen meldungen(dienst);
    const QVector<SpielEintrag> abend = TestProtokoll::abend(6, 4);
    for (int i = 0; i < abend.size(); ++i) {
        const EintragErgebnis ergebnis = dienst.spielEintragen(abend.at(i));
        QCOMPARE(ergebnis.art, EintragErgebnis::Eingetragen);
        QCOMPARE(ergebnis.zeile, i + 1);
        QCOMPARE(dienst.geber(), (i + 1) % 4);
    }
    QCOMPARE(meldungen, QStringList({"SpielNeu:1", "SpielNeu:2", "SpielNeu:3", "SpielNeu:4",
                                     "SpielNeu:5", "SpielNeu:6"}));
    QCOMPARE(dienst.spiele(), abend);
    QCOMPARE(imSpeicher(dienst), gespeichert(false));
    QCOMPARE(spalte("Settings", "AnzahlSpiele"), QList<int>{48});
    QCOMPARE(zeilen("Teilnehmer"), 4);
    QCOMPARE(QDir(dienst.archivVerzeichnis()).entryList(QDir::Files).size(), 1);
    QVERIFY(dienst.teilnehmer().last().name == QLatin1String("Dora"));
    // One journal entry per game, with the declarer's and the dealer's name; the next series
    // starts an empty one.
    QCOMPARE(jornal().count("\"type\": \"normal\""), 6);
    QStringList geber;
    for (const QString &zeile : QString::fromUtf8(jornal()).split(QLatin1Char('\n')))
        if (zeile.contains(QLatin1String("\"geber\"")))
            geber << zeile.section(QLatin1Char('"'), 3, 3);
    QCOMPARE(geber, QStringList({"Anna", "Bernd", "Clara", "Dora", "Anna", "Bernd"}));
    QVERIFY(dienst.serieStarten().ok() && !jornal().contains("normal"));
}

void TstListenDienst::listenEnde_data()
{
    Faelle::laden("listenende.tsv");
}

void TstListenDienst::listenEnde()
{
    QFETCH(int, modus);
    QFETCH(int, anzahl);
    QVERIFY(anlegen(3, 2, modus));
    Offen dienst(m_einstellungen);
    QVERIFY(dienst.spielEintragen(spiel(0, 24)).art == EintragErgebnis::Eingetragen);
    // A Bierlachs list without points plays down from 500.
    QCOMPARE(dienst.kopf().blPunkte, modus == Spielmodus::Bierlachs ? 500 : 0);
    dienst.spielEintragen(spiel(1, 24));
    // The journal of the opened list goes on.
    QCOMPARE(jornal().count("\"type\": \"normal\""), 2);
    Meldungen meldungen(dienst);
    const EintragErgebnis dritte = dienst.spielEintragen(spiel(2, 24));
    QCOMPARE(dienst.kopf().anzahlSpiele, anzahl);
    if (anzahl == 2) {
        QCOMPARE(dritte.art, EintragErgebnis::ListenEnde);
        QCOMPARE(dienst.spiele().size(), 2);
        QCOMPARE(zeilen("SpielListe"), 2);
        QVERIFY(meldungen.isEmpty());
    } else {
        QCOMPARE(dritte.zeile, 3);
        QCOMPARE(meldungen, QStringList({"Kopf:0", "SpielNeu:3"}));
    }
}

void TstListenDienst::aendernUndEntfernen_data()
{
    QTest::addColumn<int>("zeile");
    QTest::newRow("erstes") << 1;
    QTest::newRow("letztes") << 5;
}

void TstListenDienst::aendernUndEntfernen()
{
    QFETCH(int, zeile);
    QVERIFY(anlegen(3, 36));
    Offen dienst(m_einstellungen);
    dienst.serieStarten();
    for (int wert = 1; wert <= 5; ++wert)
        dienst.spielEintragen(spiel(wert % 3, 10 * wert));
    Meldungen meldungen(dienst);

    SpielEintrag korrigiert = *dienst.spiel(zeile);
    korrigiert.setze(S::Spieler3, -99);
    QVERIFY(dienst.spielAendern(korrigiert).ok());
    QCOMPARE(*dienst.spiel(zeile), korrigiert);
    QVERIFY(dienst.spielEntfernen(zeile).ok());
    QCOMPARE(meldungen, QStringList({QStringLiteral("SpielGeaendert:%1").arg(zeile),
                                     QStringLiteral("SpielEntfernt:%1").arg(zeile)}));
    // The later games move up by one; memory and database agree.
    QStringList sitze{"0 10 0", "0 0 20", "30 0 0", "0 40 0", "0 0 50"};
    sitze.removeAt(zeile - 1);
    QStringList werte;
    for (const SpielEintrag &e : dienst.spiele())
        werte << QStringLiteral("%1 %2 %3")
                     .arg(e[S::Spieler1])
                     .arg(e[S::Spieler2])
                     .arg(e[S::Spieler3]);
    QCOMPARE(werte, sitze);
    QCOMPARE(spalte("SpielListe", "Zeile"), QList<int>({1, 2, 3, 4}));
    QCOMPARE(imSpeicher(dienst), gespeichert(false));
    QCOMPARE(dienst.geber(), 1);
    // The journal keeps the corrected state and the one before deletion.
    QCOMPARE(jornal().count("\"type\""), 7);
    QCOMPARE(jornal().count("ge\xEF\xBF\xBDndert"), 1);
    QCOMPARE(jornal().count("gel\xEF\xBF\xBDscht"), 1);
}

void TstListenDienst::schreibfehler_data()
{
    Faelle::laden("schreibfehler.tsv");
}

// A change that cannot be stored answers with the database's reason and changes nothing:
// not the file, not the list in memory, not the journal, and no one hears of it.
void TstListenDienst::schreibfehler()
{
    QFETCH(QString, ereignis);
    QFETCH(QString, aenderung);
    QVERIFY(anlegen(3, 36));
    Offen dienst(m_einstellungen);
    if (aenderung != QLatin1String("eintragen"))
        dienst.spielEintragen(spiel(1, 24));
    sperren(qPrintable(ereignis));
    const QString vorher = gespeichert();
    const QStringList registerVorher = dienst.spielerNamen();
    const QString speicherVorher = imSpeicher(dienst);
    const QByteArray jornalVorher = jornal();
    Meldungen meldungen(dienst);

    QString fehler;
    if (aenderung == QLatin1String("eintragen"))
        fehler = dienst.spielEintragen(spiel(1, 24)).fehler;
    else if (aenderung == QLatin1String("aendern"))
        fehler = dienst.spielAendern(*dienst.spiel(1)).fehler;
    else if (aenderung == QLatin1String("entfernen"))
        fehler = (dienst.spielEintragen(spiel(2, 36)), meldungen.clear(),
                  dienst.spielEntfernen(1).fehler);
    else if (aenderung == QLatin1String("neu"))
        fehler = dienst.neuesProtokoll(9, 9, QStringList{"Eva", "Fritz", "Gerd"}).fehler;
    else if (aenderung == QLatin1String("ersetzen"))
        fehler = dienst.protokollErsetzen({}, {{1, "Eva", "Ja", "Ja"}}, TestProtokoll::abend(3, 3))
                     .fehler;
    else if (aenderung == QLatin1String("sitze"))
        fehler = dienst.sitzeTauschen(0, 1).fehler;
    else if (aenderung == QLatin1String("listenTyp"))
        fehler = dienst.listenTypSetzen(4).fehler;
    else
        fehler = dienst.registerErsetzen({{1, "Eva", true, true}}).fehler;

    QVERIFY2(fehler.contains(TestUmgebung::datenbankDatei()) && fehler.contains("gesperrt"),
             qPrintable(fehler));
    QVERIFY(meldungen.isEmpty());
    // Deleting is tried on what was set up just before.
    if (aenderung != QLatin1String("entfernen")) {
        QCOMPARE(gespeichert(), vorher);
        QCOMPARE(imSpeicher(dienst), speicherVorher);
        QCOMPARE(jornal(), jornalVorher);
    }
    QCOMPARE(imSpeicher(dienst), gespeichert(false));
    QCOMPARE(dienst.spielerNamen(), registerVorher);
    QCOMPARE(dienst.teilnehmerName(0), QStringLiteral("Anna"));
    QCOMPARE(dienst.teilnehmer().first().mgldNr, 100);
    QCOMPARE(dienst.anzahlTeilnehmer(), zeilen("Teilnehmer"));
    // No transaction is left open, which would swallow every later change.
    QVERIFY(sql({"DROP TRIGGER sperre"}));
    QCOMPARE(dienst.spielEintragen(spiel(0, 12)).art, EintragErgebnis::Eingetragen);
}

void TstListenDienst::gesperrt_data()
{
    QTest::addColumn<bool>("start");
    QTest::newRow("erstes Spiel") << false;
    QTest::newRow("Serienstart") << true;
}

// Another program holding a read lock, so the change fails only at its commit (a write lock
// on entering a game is in tst_listenfuehrung): the change fails with the driver's reason,
// and a name the scorer typed into the seating is stored once the file is free again.
void TstListenDienst::gesperrt()
{
    QFETCH(bool, start);
    QVERIFY(anlegen(3, 36));
    Offen dienst(m_einstellungen);
    dienst.teilnehmerModell()->setData(dienst.teilnehmerModell()->index(0, 1), "Anja");
    const auto versuchen = [&] {
        return start ? dienst.serieStarten().fehler : dienst.spielEintragen(spiel(1, 24)).fehler;
    };
    {
        Sperre sperre(Sperre::Lesen);
        QVERIFY(sperre.gehalten());
        const QString fehler = versuchen();
        QVERIFY2(fehler.contains(TestUmgebung::datenbankDatei()) && fehler.contains("locked"),
                 qPrintable(fehler));
    }
    QCOMPARE(dienst.teilnehmerName(0), QStringLiteral("Anja"));
    QCOMPARE(dienst.spiele().size(), 0);
    QVERIFY(versuchen().isNull());
    QCOMPARE(spalte("Teilnehmer", "Name = 'Anja'"), QList<int>({1, 0, 0}));
    QCOMPARE(zeilen("SpielListe"), start ? 0 : 1);
}

// A database another program holds at start is not taken for a foreign one: the scorer is
// told to end that program, and a reset afterwards opens the list as it was.
void TstListenDienst::besetztBeimOeffnen()
{
    QVERIFY(anlegen(3, 36));
    QVERIFY(sql({Sql::spielEinfuegen(spiel(1, 24))}));
    ListenDienst dienst(TestUmgebung::datenVerzeichnis(), m_einstellungen);
    {
        Sperre sperre(Sperre::Ausschliesslich);
        QVERIFY(sperre.gehalten());
        QCOMPARE(dienst.oeffnen(), Zustand::Unbenutzbar);
        QVERIFY2(dienst.fehlerText().contains(QLatin1String("anderen Programm")) &&
                     dienst.ausweg().startsWith(QLatin1String("Beenden Sie")),
                 qPrintable(dienst.fehlerText()));
    }
    QVERIFY(dienst.zuruecksetzen().ok());
    QCOMPARE(dienst.zustand(), Zustand::Gespeichert);
    QCOMPARE(dienst.spiele().size(), 1);
}

void TstListenDienst::neuesProtokoll()
{
    QVERIFY(anlegen(4, 48, Spielmodus::Bierlachs));
    QVERIFY(
        sql({"UPDATE Settings SET BlPunkte = 300", "INSERT INTO Spieler VALUES (1, 'Eva', 0, 0)"}));
    Offen dienst(m_einstellungen);
    dienst.spielEintragen(spiel(1, 24));
    Meldungen meldungen(dienst);
    // Known players keep number and flags; a new one gets the first free number.
    QVERIFY(dienst.neuesProtokoll(8, 3, QStringList{"Clara", "Eva", "O'Neill"}).ok());
    QCOMPARE(meldungen, QStringList{"ListeNeu:0"});
    QCOMPARE(QList<int>({zeilen("SpielListe"), zeilen("Settings")}), QList<int>({0, 0}));
    QCOMPARE(spalte("Teilnehmer", "MgldNr"), QList<int>({102, 1, 2}));
    QCOMPARE(dienst.teilnehmer().at(1).mitglied + dienst.teilnehmer().at(1).preisskat,
             QStringLiteral("NeinNein"));
    const ListenKopf &kopf = dienst.kopf();
    QCOMPARE(QStringList({QString::number(kopf.tischNr), QString::number(kopf.serie),
                          QString::number(kopf.anzahlSpiele), QString::number(kopf.blPunkte),
                          kopf.datum.toString(), dienst.teilnehmerName(2)}),
             QStringList({"8", "3", "36", "300", QDate::currentDate().toString(), "O'Neill"}));

    // Keeping the players empties only the list; outside Bierlachs the points go.
    ListenKopf ergebnis = kopf;
    ergebnis.modus = Spielmodus::Ergebnis;
    dienst.kopfAendern(ergebnis);
    QVERIFY(dienst.neuesProtokoll(9, 1, std::nullopt).ok());
    QCOMPARE(spalte("Teilnehmer", "MgldNr"), QList<int>({102, 1, 2}));
    QCOMPARE(dienst.kopf().blPunkte, 0);
}

// A file keeps no Bierlachs points and, without a date, gets today's; the registry stays.
void TstListenDienst::protokollErsetzen()
{
    QVERIFY(anlegen(4, 48));
    Offen dienst(m_einstellungen);
    ListenKopf kopf;
    kopf.blPunkte = 400;
    kopf.gruppe = QStringLiteral("Herbst's");
    const QVector<SpielEintrag> spiele = TestProtokoll::abend(5, 3);
    QVERIFY(
        dienst
            .protokollErsetzen(kopf, {{7, "Eva", "Ja", "Nein"}, {8, "", "Nein", "Ja"}, {}}, spiele)
            .ok());
    QCOMPARE(imSpeicher(dienst), gespeichert(false));
    QCOMPARE(spalte("Settings", "BlPunkte"), QList<int>{0});
    QCOMPARE(dienst.kopf().datum, QDate::currentDate());
    QCOMPARE(dienst.kopf().gruppe, QStringLiteral("Herbst's"));
    QCOMPARE(dienst.teilnehmer().at(1).mitglied, QStringLiteral("Nein"));
    QCOMPARE(QStringList({QString::number(dienst.listenTyp()), QString::number(dienst.geber()),
                          QString::number(zeilen("Spieler"))}),
             QStringList({"3", "2", "4"}));
}

void TstListenDienst::archiv_data()
{
    Faelle::laden("archiv.tsv");
}

// Before a list holding games is emptied it goes into the archive as a protocol file that
// loads again; where the archive cannot be written, the list is not emptied.
void TstListenDienst::archiv()
{
    QFETCH(QString, aenderung);
    QFETCH(bool, blockiert);
    QVERIFY(anlegen(3, 36, Spielmodus::Ergebnis, 7));
    Offen dienst(m_einstellungen);
    const QVector<SpielEintrag> abend = TestProtokoll::abend(4, 3);
    for (const SpielEintrag &e : abend)
        dienst.spielEintragen(e);
    QDir archiv(dienst.archivVerzeichnis());
    // A file where the folder should go.
    QFile sperre(archiv.path());
    QVERIFY(!blockiert || sperre.open(QIODevice::WriteOnly));
    const auto ausfuehren = [&] {
        if (aenderung == QLatin1String("neu"))
            return dienst.neuesProtokoll(8, 2, std::nullopt);
        if (aenderung == QLatin1String("zuruecksetzen"))
            return dienst.zuruecksetzen();
        return dienst.protokollErsetzen({}, dienst.teilnehmer(), TestProtokoll::abend(2, 3));
    };
    const DienstErgebnis ergebnis = ausfuehren();
    if (blockiert) {
        QVERIFY2(ergebnis.fehler.contains(archiv.path()), qPrintable(ergebnis.fehler));
        QCOMPARE(dienst.spiele(), abend);
        QCOMPARE(zeilen("SpielListe"), 4);
        return;
    }
    QVERIFY(ergebnis.ok());
    const QStringList dateien = archiv.entryList(QDir::Files);
    QCOMPARE(dateien.size(), 1);
    QVERIFY2(QRegularExpression("^Skat2026-11-20_S1_T7_\\d\\d-\\d\\d-\\d\\d\\.xml$")
                 .match(dateien.first())
                 .hasMatch(),
             qPrintable(dateien.first()));
    QFile datei(archiv.filePath(dateien.first()));
    QVERIFY(datei.open(QIODevice::ReadOnly));
    const auto gelesen = XmlProtokoll::lesen(datei.readAll());
    QVERIFY(std::holds_alternative<XmlDaten>(gelesen));
    QCOMPARE(std::get<XmlDaten>(gelesen).spiele, abend);
    QCOMPARE(std::get<XmlDaten>(gelesen).spieler.at(2).name, QStringLiteral("Clara"));
    // An empty list leaves nothing behind; a replaced one holds games again.
    QVERIFY(dienst.neuesProtokoll(9, 1, std::nullopt).ok());
    QCOMPARE(archiv.entryList(QDir::Files).size(), aenderung == "ersetzen" ? 2 : 1);
}

void TstListenDienst::nummern_data()
{
    Faelle::laden("nummern.tsv");
}

// Games get numbers 1 to n in any case: from a file in file order, from a database in
// number order whatever the storage order, and the next game one past the highest.
void TstListenDienst::nummern()
{
    QFETCH(QStringList, nummern);
    QFETCH(bool, hinweis);
    QVERIFY(anlegen(3, 36, Spielmodus::Ergebnis));
    QVector<SpielEintrag> spiele = TestProtokoll::abend(3, 3);
    for (int i = 0; i < spiele.size(); ++i)
        spiele[i].setze(S::Zeile, nummern.at(i).toInt());
    QStringList statements;
    for (int i = spiele.size() - 1; i >= 0; --i)
        statements << Sql::spielEinfuegen(TestProtokoll::abend(3, 3).at(i));
    QVERIFY(sql(statements));
    Offen dienst(m_einstellungen);
    QCOMPARE(dienst.spiele(), TestProtokoll::abend(3, 3));
    QCOMPARE(dienst.spielEintragen(spiel(0, 24)).zeile, 4);

    const DienstErgebnis ergebnis = dienst.protokollErsetzen({}, dienst.teilnehmer(), spiele);
    QVERIFY(ergebnis.ok());
    QCOMPARE(ergebnis.hinweis.contains(QLatin1String("1 bis 3")), hinweis);
    QCOMPARE(spalte("SpielListe", "Zeile"), QList<int>({1, 2, 3}));
    QCOMPARE(dienst.spiele(), TestProtokoll::abend(3, 3));
}

// A fourth seat comes back empty, numbered 4, member and prize skat "Ja"; the list has
// 36 or 48 games in a tournament and 10 in the other modes.
void TstListenDienst::sitze()
{
    QVERIFY(anlegen(4, 48));
    Offen dienst(m_einstellungen);
    QVERIFY(dienst.sitzeTauschen(2, 3).ok() && dienst.listenTypSetzen(3).ok());
    QCOMPARE(spalte("Teilnehmer", "MgldNr"), QList<int>({100, 101, 103}));
    QCOMPARE(dienst.kopf().anzahlSpiele, 36);
    // Asked twice, it still makes one fourth seat.
    QVERIFY(dienst.listenTypSetzen(4).ok() && dienst.listenTypSetzen(4).ok());
    const Teilnehmer vierter = dienst.teilnehmer().last();
    QCOMPARE(QStringList({QString::number(vierter.mgldNr), vierter.name, vierter.mitglied,
                          vierter.preisskat, QString::number(dienst.kopf().anzahlSpiele),
                          QString::number(dienst.anzahlTeilnehmer())}),
             QStringList({"4", "", "Ja", "Ja", "48", "4"}));
    // After the list's own changes a name typed into the table is announced again.
    Meldungen meldungen(dienst);
    dienst.teilnehmerModell()->setData(dienst.teilnehmerModell()->index(3, 1), "Dora");
    QCOMPARE(meldungen, QStringList{"Teilnehmer:0"});
    ListenKopf ergebnis = dienst.kopf();
    ergebnis.modus = Spielmodus::Ergebnis;
    dienst.kopfAendern(ergebnis);
    dienst.listenTypSetzen(3);
    QCOMPARE(dienst.kopf().anzahlSpiele, 10);
}

void TstListenDienst::anweisungen_data()
{
    Faelle::laden("anweisungen.tsv");
}

// Group ids and player names are pasted into literal statements: a quote is
// doubled and a NUL, where SQLite would end the statement, is left out. Names
// reach the store cleaned (at most 40 characters, no control characters).
void TstListenDienst::anweisungen()
{
    QFETCH(QString, gruppe);
    QFETCH(QString, name);
    QDir().mkpath(TestUmgebung::datenVerzeichnis());
    ProtokollDatenbank db(TestUmgebung::datenVerzeichnis());
    QCOMPARE(db.oeffnen(), Zustand::Neu);
    ListenKopf kopf;
    kopf.gruppe = gruppe;
    QVERIFY2(db.kopfSchreiben(kopf), qPrintable(db.fehler()));
    QTEST(db.kopfLesen().value_or(ListenKopf()).gruppe, "gespeichert");
    if (!name.isNull()) {
        const int nummer = db.spielerHinzufuegen({0, name, true, true});
        QVERIFY(nummer > 0);
        QCOMPARE(db.spielerHinzufuegen({0, name, true, true}), nummer);
        QCOMPARE(db.spielerNamen(), QStringList{name});
    }
    QCOMPARE(db.verbindung().tables().size(), 4);
}

void TstListenDienst::einstellungen()
{
    QSettings store = TestUmgebung::einstellungen();
    for (auto [key, wert] : {std::pair{"platz2", QVariant(4.5)},
                             {"Kartengeld", QVariant(0.7)},
                             {"VerlSpieleDerGegenSpieler3", QVariant(44)},
                             {"sicherheitskopieintervall", QVariant(9)}})
        store.setValue(QLatin1String(key), wert);
    Einstellungen einstellungen;
    einstellungen.laden(QStringLiteral("/daten"));
    store.sync();
    // Stored values are read; missing keys are created with their default, the card money
    // under its lower-case key; the backup interval is always five minutes.
    const KostenWerte &k = einstellungen.kosten();
    QCOMPARE(
        QStringList({QString::number(k.platz2), QString::number(k.kartengeld),
                     QString::number(k.verlSpieleDerGegenSpieler3),
                     QString::number(k.verlSpieleDerGegenSpieler4), QString::number(k.preisskat)}),
        QStringList({"4.5", "0.7", "44", "30", "10"}));
    QCOMPARE(store.value("VerlSpielAb6").toDouble(), 2.0);
    QCOMPARE(store.value("databasepath").toString(), QStringLiteral("/daten"));
    QCOMPARE(einstellungen.sicherheitskopieIntervallMs(), 300000);
    QVERIFY(einstellungen.mitFabianpunkten());
    QCOMPARE(einstellungen.vereinsname(), QStringLiteral("MeinVerein"));
    for (const char *key : {"spielstandmitfabianpunkten", "vereinsname", "platz1", "platz3",
                            "platz4", "VerlSpiel1Bis5", "Preisskat", "GewSpieleMinusVerlSpiele"})
        QVERIFY2(store.contains(QLatin1String(key)), key);

    // A value typed into its field is written under its own key at once.
    QStringList geaendert;
    connect(&einstellungen, &Einstellungen::kostenGeaendert, this,
            [&](Einstellungen::Kosten wert) { geaendert << QString::number(int(wert)); });
    einstellungen.kostenSetzen(Einstellungen::Kosten::Kartengeld, QStringLiteral("1,5"));
    einstellungen.kostenSetzen(Einstellungen::Kosten::VerlSpieleDerGegenSpieler4,
                               QStringLiteral("25"));
    QCOMPARE(geaendert, QStringList({"4", "10"}));
    QCOMPARE(store.value("Kartengeld").toDouble(), 1.5);
    QCOMPARE(store.value("VerlSpieleDerGegenSpieler4").toInt(), 25);
    KostenWerte alle;
    alle.platz1 = 0.25;
    einstellungen.kostenSetzen(alle);
    QCOMPARE(store.value("platz1").toDouble(), 0.25);
    QCOMPARE(store.value("Kartengeld").toDouble(), 1.0);
    QVERIFY(einstellungen.kosten() == alle);

    // Every change of the store or the registry is announced once by the list; a value
    // set again and a name the registry knows are no change.
    QVERIFY(anlegen(3, 36));
    Offen dienst(einstellungen);
    Meldungen meldungen(dienst);
    einstellungen.mitFabianpunktenSetzen(false);
    QVERIFY(dienst.registerErsetzen({{1, "Eva", true, true}}).ok());
    einstellungen.sicherheitskopieIntervallSetzen(5);
    einstellungen.sicherheitskopieIntervallSetzen(7);
    dienst.spielerHinzufuegen({0, "Eva", true, true});
    QCOMPARE(dienst.spielerHinzufuegen({0, "Fritz", true, true}), 2);
    einstellungen.vereinsnameSetzen(QStringLiteral("Karo Sieben"));
    QCOMPARE(meldungen, QStringList({"Einstellungen:0", "Register:0", "Einstellungen:0",
                                     "Register:0", "Einstellungen:0"}));
}

KARTULO_TEST_MAIN(TstListenDienst)
#include "tst_listendienst.moc"
