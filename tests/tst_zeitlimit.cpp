// The time limit of a series: the stop time and its stored text, the seconds left across
// midnight, what a countdown step shows (green, red, run out, further away than the limit)
// and when a stored stop time is resumed at start-up.

#include "helpers/testumgebung.h"
#include "standings/zeitlimit.h"

namespace {

QTime t(int h, int m, int s = 0)
{
    return QTime(h, m, s);
}

constexpr int Laeuft = ZeitAnzeige::Laeuft;
constexpr int Abgelaufen = ZeitAnzeige::Abgelaufen;
constexpr int Ueberschritten = ZeitAnzeige::Ueberschritten;

} // namespace

class TstZeitlimit : public QObject
{
    Q_OBJECT

private slots:
    void stopZeit_data();
    void stopZeit();
    void ausText_data();
    void ausText();
    void sekundenBis_data();
    void sekundenBis();
    void schritt_data();
    void schritt();
    void fortsetzen_data();
    void fortsetzen();
};

void TstZeitlimit::stopZeit_data()
{
    QTest::addColumn<QTime>("jetzt");
    QTest::addColumn<int>("limit");
    QTest::addColumn<QTime>("stop");
    QTest::addColumn<QString>("text");

    QTest::newRow("120 Minuten") << t(20, 0) << 120 << t(22, 0) << "22:00";
    QTest::newRow("Sekunden fallen weg") << t(20, 15, 42) << 120 << t(22, 15) << "22:15";
    QTest::newRow("einstellige Stunde") << t(7, 5) << 60 << t(8, 5) << "08:05";
    QTest::newRow("ueber Mitternacht") << t(23, 10) << 90 << t(0, 40) << "00:40";
    QTest::newRow("bis Mitternacht") << t(22, 59, 59) << 61 << t(0, 0) << "00:00";
    QTest::newRow("Limit 0") << t(22, 30) << 0 << t(22, 30) << "22:30";
    QTest::newRow("Limit 1000") << t(20, 0) << 1000 << t(12, 40) << "12:40";
    QTest::newRow("ungueltige Zeit") << QTime() << 120 << QTime() << "";
}

void TstZeitlimit::stopZeit()
{
    QFETCH(QTime, jetzt);
    QFETCH(int, limit);
    QFETCH(QTime, stop);
    const QTime zeit = Zeitlimit::stopZeit(jetzt, limit);
    QCOMPARE(zeit, stop);
    QCOMPARE(zeit.isValid(), stop.isValid());
    QTEST(Zeitlimit::alsText(zeit), "text");
    // What the store gets back after a restart is the very stop time that was running.
    const QTime gelesen = Zeitlimit::ausText(Zeitlimit::alsText(zeit));
    QCOMPARE(gelesen, zeit);
    QCOMPARE(gelesen.isValid(), zeit.isValid());
}

void TstZeitlimit::ausText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("gueltig");
    QTest::addColumn<QTime>("zeit");

    QTest::newRow("21:05") << "21:05" << true << t(21, 5);
    QTest::newRow("00:00") << "00:00" << true << t(0, 0);
    QTest::newRow("23:59") << "23:59" << true << t(23, 59);
    QTest::newRow("openend") << "openend" << false << QTime();
    QTest::newRow("leer") << "" << false << QTime();
    QTest::newRow("25:00") << "25:00" << false << QTime();
    QTest::newRow("24:00") << "24:00" << false << QTime();
    QTest::newRow("21:60") << "21:60" << false << QTime();
    QTest::newRow("9:5") << "9:5" << false << QTime();
    QTest::newRow("abc") << "abc" << false << QTime();
    QTest::newRow("mit Sekunden") << "21:05:30" << false << QTime();
    QTest::newRow("Leerzeichen davor") << " 21:05" << false << QTime();
    QTest::newRow("Zeilenende danach") << "21:05\n" << false << QTime();
    QTest::newRow("Vorzeichen") << "-1:05" << false << QTime();
}

void TstZeitlimit::ausText()
{
    QFETCH(QString, text);
    const QTime zeit = Zeitlimit::ausText(text);
    QTEST(zeit.isValid(), "gueltig");
    QTEST(zeit, "zeit");
}

void TstZeitlimit::sekundenBis_data()
{
    QTest::addColumn<QTime>("jetzt");
    QTest::addColumn<QTime>("stop");
    QTest::addColumn<int>("sekunden");

    QTest::newRow("16 Minuten") << t(20, 0) << t(20, 16) << 960;
    QTest::newRow("gleich") << t(20, 0) << t(20, 0) << 0;
    QTest::newRow("vorbei") << t(20, 20) << t(20, 16) << -240;
    QTest::newRow("Stop nach Mitternacht") << t(23, 50) << t(0, 40) << 3000;
    QTest::newRow("jetzt nach Mitternacht, Stop davor") << t(0, 10) << t(23, 50) << -1200;
    QTest::newRow("genau 12 Stunden voraus") << t(8, 0) << t(20, 0) << 12 * 3600;
    QTest::newRow("mehr als 12 Stunden voraus ist vorbei")
        << t(8, 0) << t(20, 0, 1) << -(12 * 3600 - 1);
    QTest::newRow("genau 12 Stunden zurueck") << t(20, 0) << t(8, 0) << -12 * 3600;
    QTest::newRow("mehr als 12 Stunden zurueck ist morgen")
        << t(20, 0, 1) << t(8, 0) << 12 * 3600 - 1;
    QTest::newRow("ohne Stopzeit") << t(20, 0) << QTime() << 0;
    QTest::newRow("ohne Uhrzeit") << QTime() << t(20, 0) << 0;
}

void TstZeitlimit::sekundenBis()
{
    QFETCH(QTime, jetzt);
    QFETCH(QTime, stop);
    QTEST(Zeitlimit::sekundenBis(jetzt, stop), "sekunden");
}

void TstZeitlimit::schritt_data()
{
    QTest::addColumn<QTime>("jetzt");
    QTest::addColumn<QTime>("stop");
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("zustand");
    QTest::addColumn<int>("rest");
    QTest::addColumn<bool>("rot");
    QTest::addColumn<QString>("text");

    QTest::newRow("volles Limit") << t(20, 0) << t(22, 0) << 120 << Laeuft << 120 << false
                                  << "Verbleibende Zeit 120 Minuten";
    QTest::newRow("16 Minuten gruen")
        << t(20, 0) << t(20, 16) << 120 << Laeuft << 16 << false << "Verbleibende Zeit 16 Minuten";
    QTest::newRow("15 Minuten rot")
        << t(20, 0) << t(20, 15) << 120 << Laeuft << 15 << true << "Verbleibende Zeit 15 Minuten";
    // 15 minutes 59 seconds are 15 whole minutes.
    QTest::newRow("knapp 16 Minuten rot") << t(20, 0, 1) << t(20, 16) << 120 << Laeuft << 15 << true
                                          << "Verbleibende Zeit 15 Minuten";
    QTest::newRow("1 Minute") << t(20, 15) << t(20, 16) << 120 << Laeuft << 1 << true
                              << "Verbleibende Zeit 1 Minuten";
    QTest::newRow("59 Sekunden abgelaufen") << t(20, 15, 1) << t(20, 16) << 120 << Abgelaufen << 0
                                            << true << "Verbleibende Zeit 0 Minuten";
    QTest::newRow("genau 0 abgelaufen") << t(20, 16) << t(20, 16) << 120 << Abgelaufen << 0 << true
                                        << "Verbleibende Zeit 0 Minuten";
    // Rounded toward zero: 59 seconds late are still 0 minutes.
    QTest::newRow("59 Sekunden zu spaet") << t(20, 16, 59) << t(20, 16) << 120 << Abgelaufen << 0
                                          << true << "Verbleibende Zeit 0 Minuten";
    QTest::newRow("4 Minuten zu spaet") << t(20, 20) << t(20, 16) << 120 << Abgelaufen << -4 << true
                                        << "Verbleibende Zeit -4 Minuten";
    QTest::newRow("eine Minute ueber dem Limit") << t(20, 0) << t(22, 1) << 120 << Ueberschritten
                                                 << 121 << false << "Spielzeit ueberschritten!";
    // The limit was lowered after the stop time was stored.
    QTest::newRow("Limit gesenkt") << t(20, 0) << t(22, 0) << 60 << Ueberschritten << 120 << false
                                   << "Spielzeit ueberschritten!";
    QTest::newRow("Limit 0") << t(20, 0) << t(20, 0) << 0 << Abgelaufen << 0 << true
                             << "Verbleibende Zeit 0 Minuten";
    QTest::newRow("Stop nach Mitternacht")
        << t(23, 50) << t(0, 40) << 120 << Laeuft << 50 << false << "Verbleibende Zeit 50 Minuten";
    QTest::newRow("nach Mitternacht abgelaufen") << t(0, 10) << t(23, 50) << 120 << Abgelaufen
                                                 << -20 << true << "Verbleibende Zeit -20 Minuten";
}

void TstZeitlimit::schritt()
{
    QFETCH(QTime, jetzt);
    QFETCH(QTime, stop);
    QFETCH(int, limit);
    const ZeitAnzeige anzeige = Zeitlimit::schritt(jetzt, stop, limit);
    QTEST(static_cast<int>(anzeige.zustand), "zustand");
    QTEST(anzeige.restMinuten, "rest");
    QTEST(anzeige.rot, "rot");
    QTEST(anzeige.text, "text");
}

void TstZeitlimit::fortsetzen_data()
{
    QTest::addColumn<QTime>("jetzt");
    QTest::addColumn<QTime>("stop");
    QTest::addColumn<bool>("fortsetzen");

    QTest::newRow("eine Stunde voraus") << t(20, 0) << t(21, 0) << true;
    QTest::newRow("eine Sekunde voraus") << t(20, 59, 59) << t(21, 0) << true;
    QTest::newRow("genau jetzt") << t(21, 0) << t(21, 0) << false;
    QTest::newRow("vorbei") << t(21, 30) << t(21, 0) << false;
    QTest::newRow("nach Mitternacht voraus") << t(23, 30) << t(0, 30) << true;
    QTest::newRow("vor Mitternacht vorbei") << t(0, 30) << t(23, 30) << false;
    // Stopped yesterday evening, started again this morning.
    QTest::newRow("vom Vorabend") << t(9, 0) << t(22, 0) << false;
    QTest::newRow("openend") << t(20, 0) << Zeitlimit::ausText(QStringLiteral("openend")) << false;
}

void TstZeitlimit::fortsetzen()
{
    QFETCH(QTime, jetzt);
    QFETCH(QTime, stop);
    QTEST(Zeitlimit::fortsetzen(jetzt, stop), "fortsetzen");
}

KARTULO_TEST_MAIN(TstZeitlimit)
#include "tst_zeitlimit.moc"
