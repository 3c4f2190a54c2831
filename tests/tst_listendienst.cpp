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

// The list as the database holds it: its games, header rows and participant rows.
auto inDatei()
{
    return std::tuple(gespeichert(), zeilen("Settings"), zeilen("Teilnehmer"));
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
            append(QMetaEnum::fromType<ListenAenderung::Art>().valueToKey(a.art) +
                   QStringLiteral(":%1").arg(a.zeile));
        });
    }
};

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
    void init() { TestUmgebung::allesLoeschen(); }
    void oeffnen_data();
    void oeffnen();
    void halbAngelegt();
    void eintragen();
    void listenEnde_data();
    void listenEnde();
    void aendernUndEntfernen();
    void schreibfehler_data();
    void schreibfehler();
    void gesperrt_data();
    void gesperrt();
    void neuesProtokoll();
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

void TstListenDienst::oeffnen_data()
{
    Faelle::laden("oeffnen.tsv");
}

void TstListenDienst::oeffnen()
{
    QFETCH(QStringList, statements);
    QFETCH(QByteArray, inhalt);
    QFETCH(bool, gesperrt);
    QFETCH(QString, zustand);
    QFETCH(QStringList, fehlerText);
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
    const auto vorher = inDatei();
    {
        std::optional<Sperre> sperre;
        if (gesperrt)
            QVERIFY(sperre.emplace(Sperre::Ausschliesslich).gehalten());
        ListenDienst dienst(TestUmgebung::datenVerzeichnis(), m_einstellungen);
        Meldungen meldungen(dienst);
        QCOMPARE(name(dienst.oeffnen()), zustand);
        QCOMPARE(meldungen, QStringList{"ListeNeu:0"});
        if (!dienst.benutzbar()) {
            // Nothing is written into a file Kartulo cannot use, nothing breaks, and the
            // scorer is told what to do about it.
            QVERIFY(!dienst.fehler().isEmpty());
            for (const QString &teil : fehlerText)
                QVERIFY2(dienst.fehlerText().contains(teil), qPrintable(dienst.fehlerText()));
            QCOMPARE(dienst.spielEintragen(spiel(1, 24)).art, EintragErgebnis::Fehler);
            QVERIFY(!dienst.neuesProtokoll(1, 1, QStringList{"Eva"}).ok());
            // A reset only looks again.
            sperre.reset();
            QVERIFY(dienst.zuruecksetzen().ok());
        }
        QTEST(name(dienst.zustand()), "danach");
        // Games without a registry stay in the file, but are no list to continue.
        if (dienst.zustand() == Zustand::OhneSpieler)
            QVERIFY(dienst.spiele().isEmpty());
        else
            QCOMPARE(dienst.spiele(), gespeichert());
        // A saved list comes back with its header and its seats.
        if (dienst.zustand() == Zustand::Gespeichert)
            QCOMPARE(QStringList({QString::number(dienst.kopf().tischNr),
                                  QString::number(dienst.listenTyp()),
                                  QString::number(dienst.geber()), dienst.teilnehmerName(2)}),
                     QStringList({"7", "3", "1", "Clara"}));
    }
    if (zustand == QLatin1String("Neu"))
        QCOMPARE(inDatei(), std::tuple(QVector<SpielEintrag>(), 0, 0));
    else
        QCOMPARE(inDatei(), vorher);
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
    QCOMPARE(gespeichert(), abend);
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
    QCOMPARE(dritte.art, anzahl == 2 ? EintragErgebnis::ListenEnde : EintragErgebnis::Eingetragen);
    if (anzahl != 2)
        QCOMPARE(dritte.zeile, 3);
    QTEST(QStringList(meldungen), "meldungen");
    QTEST(zeilen("SpielListe"), "spiele");
    QCOMPARE(dienst.spiele(), gespeichert());
}

// The last game and then the first are corrected and deleted: the later games move up by
// one, memory and database agree, and the journal keeps each corrected state and the one
// before deletion.
void TstListenDienst::aendernUndEntfernen()
{
    QVERIFY(anlegen(3, 36));
    Offen dienst(m_einstellungen);
    dienst.serieStarten();
    for (int wert = 1; wert <= 5; ++wert)
        dienst.spielEintragen(spiel(wert % 3, 10 * wert));
    Meldungen meldungen(dienst);
    for (int zeile : {5, 1}) {
        SpielEintrag korrigiert = *dienst.spiel(zeile);
        korrigiert.setze(S::Spieler3, -99);
        QVERIFY(dienst.spielAendern(korrigiert).ok());
        QCOMPARE(*dienst.spiel(zeile), korrigiert);
        QVERIFY(dienst.spielEntfernen(zeile).ok());
    }
    QCOMPARE(meldungen, QStringList({"SpielGeaendert:5", "SpielEntfernt:5", "SpielGeaendert:1",
                                     "SpielEntfernt:1"}));
    QVector<SpielEintrag> bleiben{spiel(2, 20), spiel(0, 30), spiel(1, 40)};
    for (int i = 0; i < bleiben.size(); ++i)
        bleiben[i].setze(S::Zeile, i + 1);
    QCOMPARE(dienst.spiele(), bleiben);
    QCOMPARE(gespeichert(), bleiben);
    QCOMPARE(dienst.geber(), 0);
    QCOMPARE(jornal().count("\"type\""), 9);
    QCOMPARE(jornal().count("ge\xEF\xBF\xBDndert"), 2);
    QCOMPARE(jornal().count("gel\xEF\xBF\xBDscht"), 2);
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
    // Deleting is tried on the first of two games.
    if (aenderung == QLatin1String("entfernen"))
        dienst.spielEintragen(spiel(2, 36));
    // Every write of the kind fails inside the database, as a full disk or a lock would.
    QVERIFY(sql({QStringLiteral("CREATE TRIGGER sperre BEFORE %1 BEGIN SELECT RAISE(ABORT, "
                                "'gesperrt'); END")
                     .arg(ereignis)}));
    const auto vorher = inDatei();
    const QStringList registerVorher = dienst.spielerNamen();
    const QVector<SpielEintrag> speicherVorher = dienst.spiele();
    const QByteArray jornalVorher = jornal();
    Meldungen meldungen(dienst);

    const QStringList namen{"Eva", "Fritz", "Gerd"};
    const QVector<Teilnehmer> sitze{{1, "Eva", "Ja", "Ja"}};
    const QVector<SpielerDatensatz> spieler{{1, "Eva", true, true}};
    const QHash<QString, std::function<DienstErgebnis()>> aenderungen{
        {"eintragen", [&] { return dienst.spielEintragen(spiel(1, 24)).fehler; }},
        {"aendern", [&] { return dienst.spielAendern(*dienst.spiel(1)); }},
        {"entfernen", [&] { return dienst.spielEntfernen(1); }},
        {"neu", [&] { return dienst.neuesProtokoll(9, 9, namen); }},
        {"ersetzen", [&] { return dienst.protokollErsetzen({}, sitze, abend(3, 3)); }},
        {"sitze", [&] { return dienst.sitzeTauschen(0, 1); }},
        {"listenTyp", [&] { return dienst.listenTypSetzen(4); }},
        {"register", [&] { return dienst.registerErsetzen(spieler); }}};
    const QString fehler = aenderungen.value(aenderung)().fehler;
    QVERIFY2(fehler.contains(TestUmgebung::datenbankDatei()) && fehler.contains("gesperrt"),
             qPrintable(fehler));
    QVERIFY(meldungen.isEmpty());
    QCOMPARE(inDatei(), vorher);
    QCOMPARE(dienst.spiele(), speicherVorher);
    QCOMPARE(jornal(), jornalVorher);
    QCOMPARE(dienst.spiele(), gespeichert());
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
    Faelle::laden("gesperrt.tsv");
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
// number order whatever the storage order, and the next game one past the highest. A file
// keeps no Bierlachs points and, without a date, gets today's; its seats replace the list's,
// and the registry stays.
void TstListenDienst::nummern()
{
    QFETCH(QStringList, nummern);
    QFETCH(bool, hinweis);
    QVERIFY(anlegen(4, 48, Spielmodus::Ergebnis));
    const QVector<SpielEintrag> abend = TestProtokoll::abend(3, 3);
    QVector<SpielEintrag> spiele = abend;
    for (int i = 0; i < spiele.size(); ++i)
        spiele[i].setze(S::Zeile, nummern.at(i).toInt());
    QStringList statements;
    for (int i = spiele.size() - 1; i >= 0; --i)
        statements << Sql::spielEinfuegen(abend.at(i));
    QVERIFY(sql(statements));
    Offen dienst(m_einstellungen);
    QCOMPARE(dienst.spiele(), abend);
    QCOMPARE(dienst.spielEintragen(spiel(0, 24)).zeile, 4);

    ListenKopf kopf;
    kopf.blPunkte = 400;
    kopf.gruppe = QStringLiteral("Herbst's");
    const DienstErgebnis ergebnis = dienst.protokollErsetzen(
        kopf, {{7, "Eva", "Ja", "Nein"}, {8, "", "Nein", "Ja"}, {}}, spiele);
    QVERIFY(ergebnis.ok());
    QCOMPARE(ergebnis.hinweis.contains(QLatin1String("1 bis 3")), hinweis);
    QCOMPARE(dienst.spiele(), abend);
    QCOMPARE(gespeichert(), abend);
    QCOMPARE(spalte("Settings", "BlPunkte"), QList<int>{0});
    QCOMPARE(dienst.kopf().datum, QDate::currentDate());
    QCOMPARE(dienst.kopf().gruppe, QStringLiteral("Herbst's"));
    QCOMPARE(dienst.teilnehmer().at(1).mitglied, QStringLiteral("Nein"));
    QCOMPARE(QStringList({QString::number(dienst.listenTyp()), QString::number(dienst.geber()),
                          QString::number(zeilen("Spieler"))}),
             QStringList({"3", "0", "4"}));
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
    store.setValue("platz2", 4.5);
    store.setValue("Kartengeld", 0.7);
    store.setValue("VerlSpieleDerGegenSpieler3", 44);
    store.setValue("sicherheitskopieintervall", 9);
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
