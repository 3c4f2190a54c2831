// Real instances on the link, each a process with its own list: the second
// pairs with the first, copies its games, is compared game by game, and is
// released again; and a manager that restarts in the middle of the evening
// has every table's standings back without a new game.

#include <QtTest>

namespace {

// A process whose output is collected line by line.
class Prozess
{
public:
    Prozess(const QString &programm, const QStringList &argumente)
    {
        m_prozess.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QObject::connect(&m_prozess, &QProcess::readyReadStandardOutput, [this] {
            while (m_prozess.canReadLine())
                zeilen << QString::fromUtf8(m_prozess.readLine()).trimmed();
        });
        m_prozess.start(programm, argumente);
    }

    QStringList zeilen;

protected:
    QProcess m_prozess;
};

// A table (kartulo_tisch), steered line by line.
class Tisch : public Prozess
{
public:
    Tisch() : Prozess(QStringLiteral(KARTULO_TISCH), {}) {}
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
};

// The manager as velmora-cli sees the link: one line per event.
class Manager : public Prozess
{
public:
    Manager() : Prozess(QStringLiteral(VELMORA_CLI), {"--name", "Tabulor"}) {}
    ~Manager()
    {
        m_prozess.kill();
        m_prozess.waitForFinished();
    }

    // Whether a message of that type arrived whose text holds the piece.
    bool hat(int typ, const QString &stueck) const
    {
        const QRegularExpression nachricht(QStringLiteral(" MSG \\S+ %1:").arg(typ));
        for (const QString &zeile : zeilen)
            if (nachricht.match(zeile).hasMatch() && zeile.contains(stueck))
                return true;
        return false;
    }
};

} // namespace

class TstZweitliste : public QObject
{
    Q_OBJECT

private slots:
    // The tables of this program find each other and no other test's.
    void initTestCase()
    {
        qputenv("VELMORA_UDP_PORT",
                QByteArray::number(30000 + QCoreApplication::applicationPid() % 20000));
    }
    void paarenVergleichenFreigeben();
    void ersteListeTrennt();
    void managerNeustart();
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

// Killed and started again, the manager gets each table's number and
// results at once: nobody enters a game meanwhile.
void TstZweitliste::managerNeustart()
{
    Tisch fuenf;
    Tisch sechs;
    QVERIFY(fuenf.befehl("liste 5"));
    QVERIFY(fuenf.befehl("spiel tbKreuz 1 1"));
    QVERIFY(sechs.befehl("liste 6"));
    QVERIFY(sechs.befehl("spiel tbGrang 2 1"));
    {
        Manager erster;
        QTRY_VERIFY_WITH_TIMEOUT(
            erster.hat(7, "Bernd|5|1|74|1|0|") && erster.hat(7, "Clara|6|1|98|1|0|"), 10000);
    }
    Manager zweiter;
    QElapsedTimer uhr;
    uhr.start();
    QTRY_VERIFY_WITH_TIMEOUT(
        zweiter.hat(7, "Bernd|5|1|74|1|0|") && zweiter.hat(7, "Clara|6|1|98|1|0|"), 5000);
    QVERIFY(zweiter.hat(12, "$5") && zweiter.hat(12, "$6"));
    qInfo("Staende wieder beim Manager nach %lld ms", uhr.elapsed());
}

QTEST_GUILESS_MAIN(TstZweitliste)
#include "tst_zweitliste.moc"
