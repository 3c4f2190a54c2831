// The game record: reading rows (null becomes 0), the statements it writes,
// the row message items, the declarer column, the panel it selects, and the
// description fragments with their uneven blanks.

#include "game/panelstellung.h"
#include "game/spielbeschreibung.h"
#include "game/spieleintrag.h"
#include "helpers/testumgebung.h"
#include "velmora/client.h"

#include <QSqlField>
#include <QSqlRecord>

namespace {

SpielEintrag eintrag(std::initializer_list<std::pair<SpielEintrag::Spalte, int>> werte)
{
    SpielEintrag e;
    for (const auto &[spalte, wert] : werte)
        e.setze(spalte, wert);
    return e;
}

} // namespace

Q_DECLARE_METATYPE(SpielEintrag)

class TstSpielEintrag : public QObject
{
    Q_OBJECT

private slots:
    void nullWirdNull();
    void statements();
    void zeilenNachricht();
    void spielerSpalte_data();
    void spielerSpalte();
    void panel_data();
    void panel();
    void fragmente_data();
    void fragmente();
    void beispielKreuzHand();
};

void TstSpielEintrag::nullWirdNull()
{
    QSqlRecord record;
    for (const QString &name : SpielEintrag::spaltenNamen())
        record.append(QSqlField(name, QVariant::Int));
    record.setValue(QStringLiteral("Zeile"), 7);
    record.setValue(QStringLiteral("Spiel"), 24);
    record.setValue(QStringLiteral("Spieler3"), -96);
    record.remove(record.indexOf(QStringLiteral("Reizung")));

    const SpielEintrag e = SpielEintrag::ausRecord(record);
    QCOMPARE(e[SpielEintrag::Zeile], 7);
    QCOMPARE(e[SpielEintrag::Spiel], 24);
    QCOMPARE(e[SpielEintrag::Spieler3], -96);
    QCOMPARE(e[SpielEintrag::Hand], 0);
    QCOMPARE(e[SpielEintrag::Reizung], 0);
}

void TstSpielEintrag::statements()
{
    // Grand without 1, lost, declarer in seat 2, row 5.
    const SpielEintrag e = eintrag({{SpielEintrag::Zeile, 5},
                                    {SpielEintrag::Spiel, 24},
                                    {SpielEintrag::Ohne, 1},
                                    {SpielEintrag::Verloren, 96},
                                    {SpielEintrag::Spieler2, -96},
                                    {SpielEintrag::Reizung, 23}});
    QCOMPARE(e.insertStatement(),
             QStringLiteral("insert into SpielListe (Zeile, Spiel, Mit, Ohne, Hand, Schneider, "
                            "AngSchneider, Schwarz, AngSchwarz, Offen, Gewonnen, Verloren, "
                            "Spieler1, Spieler2, Spieler3, Spieler4, Eingepasst, Reizung)VALUES "
                            "(5, 24, 0, 1, 0, 0, 0, 0, 0, 0, 0, 96, 0, -96, 0, 0, 0, 23)"));
    QCOMPARE(e.updateStatement(),
             QStringLiteral("UPDATE SpielListe SET Spiel = 24, Mit = 0, Ohne = 1, Hand = 0, "
                            "Schneider = 0, AngSchneider = 0, Schwarz = 0, AngSchwarz = 0, Offen = "
                            "0, Gewonnen = 0, Verloren = 96, Spieler1 = 0, Spieler2 = -96, "
                            "Spieler3 = 0, Spieler4 = 0, Eingepasst = 0, Reizung = 23 WHERE Zeile "
                            "= 5"));
}

void TstSpielEintrag::zeilenNachricht()
{
    const SpielEintrag e = eintrag({{SpielEintrag::Zeile, 3},
                                    {SpielEintrag::Spiel, 23},
                                    {SpielEintrag::Offen, 1},
                                    {SpielEintrag::Hand, 1},
                                    {SpielEintrag::Gewonnen, 59},
                                    {SpielEintrag::Spieler4, 59},
                                    {SpielEintrag::Reizung, 59}});
    QCOMPARE(Kartulo::mapFromSpiel(e.alsTupel()),
             QStringList({"23", "0", "0", "1", "0", "0", "0", "0", "1", "59", "0", "0", "0", "0",
                          "59", "0", "59"}));
    QCOMPARE(Kartulo::mapFromSpiel(SpielEintrag().alsTupel()).size(), 17);
}

void TstSpielEintrag::spielerSpalte_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("spalte");
    QTest::newRow("40") << 40 << "Spieler1";
    QTest::newRow("41") << 41 << "Spieler2";
    QTest::newRow("42") << 42 << "Spieler3";
    QTest::newRow("43") << 43 << "Spieler4";
    QTest::newRow("39") << 39 << "";
    QTest::newRow("44") << 44 << "";
    QTest::newRow("keiner") << -1 << "";
}

void TstSpielEintrag::spielerSpalte()
{
    QFETCH(int, id);
    QFETCH(QString, spalte);
    QCOMPARE(::spielerSpalte(id), spalte);
}

void TstSpielEintrag::panel_data()
{
    QTest::addColumn<SpielEintrag>("e");
    QTest::addColumn<int>("typ");
    QTest::addColumn<int>("modus");
    QTest::addColumn<int>("anzahl");
    QTest::addColumn<int>("ergebnis");
    QTest::addColumn<QVector<int>>("spieler");
    QTest::addColumn<bool>("hand");
    QTest::addColumn<bool>("offen");

    QTest::newRow("Kreuz mit 2 Hand gewonnen")
        << eintrag({{SpielEintrag::Spiel, 12},
                    {SpielEintrag::Mit, 2},
                    {SpielEintrag::Hand, 1},
                    {SpielEintrag::Gewonnen, 48},
                    {SpielEintrag::Spieler2, 48}})
        << 53 << 20 << 2 << 30 << QVector<int>{41} << true << false;
    QTest::newRow("Grand ohne 1 verloren")
        << eintrag({{SpielEintrag::Spiel, 24},
                    {SpielEintrag::Ohne, 1},
                    {SpielEintrag::Verloren, 96},
                    {SpielEintrag::Spieler2, -96}})
        << 54 << 21 << 1 << 31 << QVector<int>{41} << false << false;
    QTest::newRow("Null ouvert verloren")
        << eintrag({{SpielEintrag::Spiel, 23},
                    {SpielEintrag::Offen, 1},
                    {SpielEintrag::Verloren, 92},
                    {SpielEintrag::Spieler4, -92}})
        << 55 << -1 << -1 << 31 << QVector<int>{43} << false << true;
    QTest::newRow("Karo") << eintrag({{SpielEintrag::Spiel, 9}, {SpielEintrag::Mit, 11}}) << 50
                          << 20 << 11 << -1 << QVector<int>{} << false << false;
    QTest::newRow("Herz") << eintrag({{SpielEintrag::Spiel, 10}}) << 51 << -1 << -1 << -1
                          << QVector<int>{} << false << false;
    QTest::newRow("Pik") << eintrag({{SpielEintrag::Spiel, 11}}) << 52 << -1 << -1 << -1
                         << QVector<int>{} << false << false;
    QTest::newRow("eingepasst") << eintrag({{SpielEintrag::Eingepasst, 1}}) << -1 << -1 << -1 << -1
                                << QVector<int>{} << false << false;
    QTest::newRow("fremder Grundwert") << eintrag({{SpielEintrag::Spiel, 18}}) << -1 << -1 << -1
                                       << -1 << QVector<int>{} << false << false;
}

void TstSpielEintrag::panel()
{
    QFETCH(SpielEintrag, e);
    const PanelStellung p = PanelStellung::ausEintrag(e);
    QTEST(p.spielTyp, "typ");
    QTEST(p.matadorModus, "modus");
    QTEST(p.matadorAnzahl, "anzahl");
    QTEST(p.ergebnis, "ergebnis");
    QTEST(p.spieler, "spieler");
    QTEST(p.hand, "hand");
    QTEST(p.offen, "offen");
}

void TstSpielEintrag::fragmente_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("erwartet");
    using namespace SpielBeschreibung;
    QTest::newRow("mit") << mit(2) << "Mit 2 Spiel 3 ";
    QTest::newRow("ohne") << ohne(4) << "Ohne 4 Spiel 5 ";
    QTest::newRow("hand") << hand(4) << " Hand 4 ";
    QTest::newRow("offen") << offen(5) << " Offen 5 ";
    QTest::newRow("schneider") << schneider(6) << " Schneider 6";
    QTest::newRow("schneider angesagt") << schneiderAngesagt(7) << " Angesagt 7";
    QTest::newRow("schwarz") << schwarz(8) << " Schwarz 8";
    QTest::newRow("schwarz angesagt") << schwarzAngesagt(9) << " Angesagt 9";
    QTest::newRow("wert") << wert(12, 48) << " x 12 = 48";
    QTest::newRow("verloren") << verloren(336) << " Verloren -336";
    QTest::newRow("spieler") << spieler(QStringLiteral("Anna")) << " Spieler Anna";
    QTest::newRow("eingepasst") << eingepasst() << "Eingepasst.";
}

void TstSpielEintrag::fragmente()
{
    QFETCH(QString, text);
    QFETCH(QString, erwartet);
    QCOMPARE(text, erwartet);
}

void TstSpielEintrag::beispielKreuzHand()
{
    using namespace SpielBeschreibung;
    const QString text = mit(2) + hand(4) + wert(12, 48) + spieler(QStringLiteral("Anna"));
    QCOMPARE(text, QStringLiteral("Mit 2 Spiel 3  Hand 4  x 12 = 48 Spieler Anna"));
}

KARTULO_TEST_MAIN(TstSpielEintrag)
#include "tst_spieleintrag.moc"
