// The player file and the manager's player entries: how lines become names,
// which characters a name loses, and what a short or odd entry gives.

#include "helpers/testumgebung.h"
#include "players/spielerdatei.h"

namespace {

// The bytes of a literal, NUL bytes included.
template <size_t N> QByteArray roh(const char (&text)[N])
{
    return QByteArray(text, static_cast<int>(N - 1));
}

} // namespace

class TstSpielerDatei : public QObject
{
    Q_OBJECT

private slots:
    void dateiName();
    void namenAusDatei_data();
    void namenAusDatei();
    void ausListenEintrag_data();
    void ausListenEintrag();
    void verboteneZeichen_data();
    void verboteneZeichen();
    void bereinigt_data();
    void bereinigt();
};

void TstSpielerDatei::dateiName()
{
    QCOMPARE(SpielerDatei::dateiName(), QStringLiteral("KartuloSpieler.txt"));
}

void TstSpielerDatei::namenAusDatei_data()
{
    QTest::addColumn<QByteArray>("inhalt");
    QTest::addColumn<QStringList>("namen");

    QTest::newRow("leer") << QByteArray() << QStringList();
    QTest::newRow("nur Leerzeilen") << QByteArray("\n\r\n  \n\t\n") << QStringList();
    QTest::newRow("Gross vor klein") << QByteArray("b\nA\na\n") << QStringList{"A", "a", "b"};
    QTest::newRow("alle Grossen vorn") << QByteArray("b\na\nanna\nA\nBernd\nB\n")
                                       << QStringList{"A", "B", "Bernd", "a", "anna", "b"};
    QTest::newRow("ohne letzten Zeilenvorschub")
        << QByteArray("Zoe Zander\nAnna Alt") << QStringList{"Anna Alt", "Zoe Zander"};
    QTest::newRow("CRLF") << QByteArray("Bernd Bach\r\nAnna Alt\r\n")
                          << QStringList{"Anna Alt", "Bernd Bach"};
    QTest::newRow("BOM") << QByteArray("\xEF\xBB\xBF"
                                       "Zoe\nAnna\n")
                         << QStringList{"Anna", "Zoe"};
    QTest::newRow("BOM und CRLF") << QByteArray("\xEF\xBB\xBF"
                                                "Anna\r\n")
                                  << QStringList{"Anna"};
    QTest::newRow("Leerzeilen und Blanks")
        << QByteArray("\n  Anna Alt  \n\n\t\nBernd\n\n") << QStringList{"Anna Alt", "Bernd"};
    QTest::newRow("NUL beendet die Zeile")
        << roh("Anna\0Rest\nBernd\0\0\0\n") << QStringList{"Anna", "Bernd"};
    QTest::newRow("NUL am Zeilenanfang") << roh("\0Anna\nBernd\n") << QStringList{"Bernd"};
    QTest::newRow("NUL vor CR") << roh("Anna\0\r\nBernd\r\0\n") << QStringList{"Anna", "Bernd"};
    // UTF-8 sorts by code unit, so umlauts come after every ASCII letter.
    QTest::newRow("Umlaute") << QByteArray("\xC3\x96zdemir\nZimmer\nM\xC3\xBCller\n")
                             << QStringList{QStringLiteral("M\u00FCller"), QStringLiteral("Zimmer"),
                                            QStringLiteral("\u00D6zdemir")};
    QTest::newRow("Doppelte bleiben") << QByteArray("Anna\nAnna\n") << QStringList{"Anna", "Anna"};
    QTest::newRow("40 Zeichen") << QByteArray("Anna Annabella Alexandra Amalia Alterman-Xyz\n")
                                << QStringList{"Anna Annabella Alexandra Amalia Alterman"};
    QTest::newRow("verbotene Zeichen")
        << QByteArray("Anna|Alt\nB@rnd\n$Carl:\n|@$:\n") << QStringList{"AnnaAlt", "Brnd", "Carl"};
    QTest::newRow("Blank nach verbotenem Zeichen") << QByteArray(": Anna\n") << QStringList{"Anna"};
}

void TstSpielerDatei::namenAusDatei()
{
    QFETCH(QByteArray, inhalt);
    QTEST(SpielerDatei::namenAusDatei(inhalt), "namen");
}

void TstSpielerDatei::ausListenEintrag_data()
{
    QTest::addColumn<QString>("eintrag");
    QTest::addColumn<bool>("gueltig");
    QTest::addColumn<int>("nummer");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("mitglied");
    QTest::addColumn<bool>("preisskat");

    QTest::newRow("vollstaendig") << "12|Anna Alt|Ja|Ja" << true << 12 << "Anna Alt" << true
                                  << true;
    QTest::newRow("kein Mitglied") << "7|Bernd|Nein|Ja" << true << 7 << "Bernd" << false << true;
    QTest::newRow("kein Preisskat") << "7|Bernd|Ja|Nein" << true << 7 << "Bernd" << true << false;
    QTest::newRow("ja klein") << "7|Bernd|ja|JA" << true << 7 << "Bernd" << false << false;
    QTest::newRow("Ja mit Blank") << "7|Bernd|Ja |true" << true << 7 << "Bernd" << false << false;
    QTest::newRow("leere Flags") << "7|Bernd||" << true << 7 << "Bernd" << false << false;
    QTest::newRow("Nummer unlesbar") << "x1|Carl|Ja|Ja" << true << 0 << "Carl" << true << true;
    QTest::newRow("Nummer leer") << "|Carl|Ja|Nein" << true << 0 << "Carl" << true << false;
    QTest::newRow("Nummer mit Blanks") << " 42 |Carl|Ja|Ja" << true << 42 << "Carl" << true << true;
    QTest::newRow("Name bereinigt")
        << "3|  D@ra $Dorn:  |Nein|Nein" << true << 3 << "Dra Dorn" << false << false;
    QTest::newRow("Name zu lang") << "3|Anna Annabella Alexandra Amalia Alterman-Xyz|Ja|Ja" << true
                                  << 3 << "Anna Annabella Alexandra Amalia Alterman" << true
                                  << true;
    QTest::newRow("Umlaut") << QStringLiteral("5|J\u00FCrgen|Ja|Ja") << true << 5
                            << QStringLiteral("J\u00FCrgen") << true << true;
    QTest::newRow("nur Nummer") << "9" << true << 9 << "" << true << true;
    QTest::newRow("ohne Flags") << "9|Emil" << true << 9 << "Emil" << true << true;
    QTest::newRow("ohne Preisskat") << "9|Emil|Nein" << true << 9 << "Emil" << false << true;
    QTest::newRow("ueberzaehlige Teile")
        << "9|Emil|Nein|Ja|Nein|x" << true << 9 << "Emil" << false << true;
    QTest::newRow("leer") << "" << false << 0 << "" << true << true;
    QTest::newRow("blank") << "  " << false << 0 << "" << true << true;
}

void TstSpielerDatei::ausListenEintrag()
{
    QFETCH(QString, eintrag);
    QFETCH(bool, gueltig);
    const std::optional<SpielerDatensatz> satz = SpielerDatei::ausListenEintrag(eintrag);
    QCOMPARE(satz.has_value(), gueltig);
    if (!satz)
        return;
    QTEST(satz->mgldNr, "nummer");
    QTEST(satz->name, "name");
    QTEST(satz->mitglied, "mitglied");
    QTEST(satz->preisskat, "preisskat");
}

void TstSpielerDatei::verboteneZeichen_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("zeichen");
    QTest::newRow("sauber") << "Anna Alt"
                            << "";
    QTest::newRow("leer") << ""
                          << "";
    QTest::newRow("Umlaute und Bindestrich")
        << QStringLiteral("J\u00FCrgen M\u00FCller-L\u00FCdt") << "";
    QTest::newRow("Strich") << "Anna|Alt"
                            << "|";
    QTest::newRow("Reihenfolge") << "a:b$c@d|e"
                                 << ":$@|";
    QTest::newRow("jedes einmal") << "@@Anna@:@:"
                                  << "@:";
    QTest::newRow("andere Satzzeichen") << "Anna (Alt), #1; 100%"
                                        << "";
}

void TstSpielerDatei::verboteneZeichen()
{
    QFETCH(QString, name);
    QTEST(SpielerDatei::verboteneZeichen(name), "zeichen");
}

void TstSpielerDatei::bereinigt_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("erwartet");
    const QString vierzig(40, QLatin1Char('x'));
    QTest::newRow("sauber") << "Anna Alt"
                            << "Anna Alt";
    QTest::newRow("Blanks aussen") << " \tAnna Alt \r"
                                   << "Anna Alt";
    QTest::newRow("Blanks innen bleiben") << "Anna  Alt"
                                          << "Anna  Alt";
    QTest::newRow("verbotene Zeichen") << "|Anna@Alt$:"
                                       << "AnnaAlt";
    QTest::newRow("nur verbotene Zeichen") << "|@$:"
                                           << "";
    QTest::newRow("genau 40") << vierzig << vierzig;
    QTest::newRow("41") << vierzig + "y" << vierzig;
    QTest::newRow("verbotene Zeichen zaehlen nicht") << "::" + vierzig << vierzig;
    QTest::newRow("Blank am Schnitt")
        << QString(39, QLatin1Char('x')) + " yz" << QString(39, QLatin1Char('x'));
    // U+1F0A1 (a playing card) is two code units; the cut must not split it.
    QTest::newRow("Schnitt in Ersatzpaar")
        << QString(39, QLatin1Char('x')) + QString::fromUcs4(U"\U0001F0A1")
        << QString(39, QLatin1Char('x'));
}

void TstSpielerDatei::bereinigt()
{
    QFETCH(QString, name);
    QTEST(SpielerDatei::bereinigt(name), "erwartet");
}

KARTULO_TEST_MAIN(TstSpielerDatei)
#include "tst_spielerdatei.moc"
