// Two real instances on the link, each a process with its own list: the
// second pairs with the first, copies its games, is compared game by game,
// and is released again.

#include <QtTest>

namespace {

// A table process (kartulo_tisch), its output collected line by line.
class Tisch
{
public:
    Tisch()
    {
        m_prozess.setProgram(QStringLiteral(KARTULO_TISCH));
        m_prozess.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QObject::connect(&m_prozess, &QProcess::readyReadStandardOutput, [this] {
            while (m_prozess.canReadLine())
                zeilen << QString::fromUtf8(m_prozess.readLine()).trimmed();
        });
        m_prozess.start();
    }
    ~Tisch()
    {
        m_prozess.closeWriteChannel();
        if (!m_prozess.waitForFinished(5000))
            m_prozess.kill();
    }

    // Sends the command and waits until it is done.
    bool befehl(const QString &text)
    {
        const QString fertig = "OK " + text.section(' ', 0, 0);
        const int vorher = zeilen.count(fertig);
        m_prozess.write((text + '\n').toUtf8());
        QElapsedTimer uhr;
        uhr.start();
        while (zeilen.count(fertig) == vorher && uhr.elapsed() < 10000)
            QTest::qWait(10);
        return zeilen.count(fertig) > vorher;
    }

    // The last line of the given kind after the command that prints it.
    QString frage(const QString &text, const QString &art)
    {
        if (!befehl(text))
            return QString();
        const QStringList passend = zeilen.filter(QRegularExpression('^' + art + ' '));
        return passend.isEmpty() ? QString() : passend.last().mid(art.size() + 1);
    }

    QStringList boxen() const { return zeilen.filter(QRegularExpression("^BOX ")); }

    QStringList zeilen;

private:
    QProcess m_prozess;
};

} // namespace

class TstZweitliste : public QObject
{
    Q_OBJECT

private slots:
    void paarenVergleichenFreigeben();
    void ersteListeTrennt();
};

void TstZweitliste::paarenVergleichenFreigeben()
{
    Tisch erste;
    Tisch zweite;
    QVERIFY(erste.befehl("liste 5"));
    QVERIFY(erste.befehl("spiel tbKreuz 1 1"));
    QVERIFY(erste.befehl("spiel tbGrang 2 1"));
    QVERIFY(zweite.befehl("liste 5"));
    QTRY_COMPARE_WITH_TIMEOUT(zweite.frage("teilnehmer", "TEILNEHMER"), QStringLiteral("1"), 10000);

    // The second list pairs and gets the two games already entered.
    QVERIFY(zweite.befehl("zweitliste 5"));
    QTRY_COMPARE_WITH_TIMEOUT(zweite.frage("zeilen", "ZEILEN"), QStringLiteral("2"), 10000);
    QCOMPARE(zweite.frage("beschriftung", "LISTE"), QStringLiteral("Zweitliste Tisch 5"));

    // Game 3 the same on both: no message. Game 4 won on the first list, lost
    // on the second: one box per differing field, in table order.
    QVERIFY(zweite.befehl("spiel tbKreuz 3 1"));
    QVERIFY(erste.befehl("spiel tbKreuz 3 1"));
    QVERIFY(zweite.befehl("spiel tbKreuz 0 0"));
    QVERIFY(erste.befehl("spiel tbKreuz 0 1"));
    QTRY_COMPARE_WITH_TIMEOUT(zweite.boxen().filter("FEHLER").size(), 3, 15000);
    QCOMPARE(zweite.boxen().filter("FEHLER"),
             QStringList({"BOX FEHLER|Eintrag bei Spiel 4 Gewonnen 0 <> Gewonnen 24.",
                          "BOX FEHLER|Eintrag bei Spiel 4 Verloren 48 <> Verloren 0.",
                          "BOX FEHLER|Eintrag bei Spiel 4 Spieler1 -48 <> Spieler1 24."}));

    // Released, the list kept as a copy; the first list is told.
    QVERIFY(zweite.befehl("antwort ja"));
    QVERIFY(zweite.befehl("antwort nein"));
    QVERIFY(zweite.befehl("freigeben"));
    QCOMPARE(zweite.frage("beschriftung", "LISTE"), QStringLiteral("Kopie von Tisch 5"));
    QCOMPARE(zweite.frage("zeilen", "ZEILEN"), QStringLiteral("4"));
    QTRY_VERIFY_WITH_TIMEOUT(erste.boxen().contains("BOX INFO|ZweitListe hat sich abgemeldet."),
                             10000);
}

// The first list drops its second list on its own; a second list that comes
// later can then pair with it and gets every game. (Instances on one machine
// share an address, so the second list of the first pairing is gone before
// the next comes.)
void TstZweitliste::ersteListeTrennt()
{
    Tisch erste;
    QVERIFY(erste.befehl("liste 5"));
    QVERIFY(erste.befehl("spiel tbKreuz 1 1"));
    {
        Tisch zweite;
        QVERIFY(zweite.befehl("liste 5"));
        QTRY_COMPARE_WITH_TIMEOUT(zweite.frage("teilnehmer", "TEILNEHMER"), QStringLiteral("1"),
                                  10000);
        QVERIFY(zweite.befehl("zweitliste 5"));
        QTRY_COMPARE_WITH_TIMEOUT(zweite.frage("zeilen", "ZEILEN"), QStringLiteral("1"), 10000);
    }
    QVERIFY(erste.befehl("antwort ja"));
    QVERIFY(erste.befehl("leeren"));
    QVERIFY2(erste.boxen().contains("BOX FRAGE|Trennung von Zweitliste?"),
             qPrintable(erste.boxen().join(" / ")));
    QVERIFY(erste.befehl("spiel tbKreuz 2 1"));

    Tisch dritte;
    QVERIFY(dritte.befehl("liste 5"));
    QTRY_COMPARE_WITH_TIMEOUT(dritte.frage("teilnehmer", "TEILNEHMER"), QStringLiteral("1"), 10000);
    QVERIFY(dritte.befehl("zweitliste 5"));
    QTRY_COMPARE_WITH_TIMEOUT(dritte.frage("zeilen", "ZEILEN"), QStringLiteral("2"), 10000);
    QVERIFY(dritte.boxen().filter("Zweitliste!").isEmpty());
}

QTEST_GUILESS_MAIN(TstZweitliste)
#include "tst_zweitliste.moc"
