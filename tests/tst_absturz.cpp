// Kills a process that enters games at random moments, again and again, and
// checks after every kill that the list lost nothing it had confirmed: an
// intact database numbered 1..n holding every confirmed game exactly, and a
// journal and a backup copy that still read. KARTULO_KILLS sets the number of
// kills (30 by default), KARTULO_KILL_SEED the random sequence.

#include "absturz/spielfolge.h"
#include "core/files/skatjornal.h"
#include "core/files/xmlprotokoll.h"
#include "helpers/testprotokoll.h"
#include "helpers/testumgebung.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

namespace {

// The first game that is not the writer's game of its number, 0 when all are.
int falschesSpiel(const QVector<SpielEintrag> &spiele)
{
    for (int i = 0; i < spiele.size(); ++i) {
        if (spiele.at(i) != spielFuerZeile(i + 1))
            return i + 1;
    }
    return 0;
}

// What a look at the files after a kill found, an empty text when all is well; spiele, the
// games confirmed, becomes the games stored.
QString pruefen(int &spiele)
{
    using namespace TestProtokoll;
    const QVector<SpielEintrag> liste = gespeichert();
    const int bestaetigt = std::exchange(spiele, liste.size());
    if (lesen(QStringLiteral("PRAGMA integrity_check")) != QStringList{"ok"})
        return QStringLiteral("Datenbank nicht intakt");
    // The first game stores header and seats with it.
    if (bestaetigt > 0 && (zeilen("Settings") != 1 || zeilen("Teilnehmer") != 4))
        return QStringLiteral("Kopf oder Sitze fehlen");
    if (const int zeile = falschesSpiel(liste))
        return QStringLiteral("Zeile %1 falsch oder an falscher Stelle").arg(zeile);
    if (spiele < bestaetigt || spiele > bestaetigt + 1)
        return QStringLiteral("%1 Spiele gespeichert, %2 bestaetigt").arg(spiele).arg(bestaetigt);

    SkatJornal jornal;
    jornal.setPath(TestUmgebung::datenVerzeichnis() + QStringLiteral("/jornal"));
    if (QFile::exists(SkatJornal::dateiPfad(jornal.path(), SkatJornal::Json)) &&
        (!jornal.load(SkatJornal::Json) || jornal.eintraege().size() > spiele))
        return QStringLiteral("Jornal unlesbar oder zu lang");

    QFile kopie(TestUmgebung::datenVerzeichnis() + QStringLiteral("/xmlsicherheitskopie.xml"));
    if (!kopie.open(QIODevice::ReadOnly))
        return QString();
    const auto gelesen = XmlProtokoll::lesen(kopie.readAll());
    const auto *daten = std::get_if<XmlDaten>(&gelesen);
    if (!daten || daten->spiele.size() > spiele)
        return QStringLiteral("Sicherheitskopie unlesbar oder zu lang");
    if (const int zeile = falschesSpiel(daten->spiele))
        return QStringLiteral("Sicherheitskopie: Spiel %1 falsch").arg(zeile);
    return QString();
}

} // namespace

class TstAbsturz : public QObject
{
    Q_OBJECT

private slots:
    void toetenUndNeustarten();
};

void TstAbsturz::toetenUndNeustarten()
{
    TestUmgebung::allesLoeschen();
    QVERIFY(QDir().mkpath(TestUmgebung::datenVerzeichnis()));
    const int toetungen = qEnvironmentVariable("KARTULO_KILLS", "30").toInt();
    const quint32 saat = qEnvironmentVariable("KARTULO_KILL_SEED", "20261122").toUInt();
    QRandomGenerator zufall(saat);
    int bestaetigt = 0;
    int gesamt = 0;
    int beiDerArbeit = 0;
    for (int runde = 1; runde <= toetungen; ++runde) {
        QProcess schreiber;
        schreiber.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        schreiber.start(QStringLiteral(KARTULO_SCHREIBER), {TestUmgebung::datenVerzeichnis()});
        QVERIFY(schreiber.waitForStarted());
        // From before the list is open to well into the entering.
        QThread::msleep(zufall.bounded(4) == 0 ? zufall.bounded(15) : zufall.bounded(150));
        schreiber.kill();
        QVERIFY(schreiber.waitForFinished());
        // A writer that gave up found a list it could not go on with.
        QVERIFY2(schreiber.exitStatus() == QProcess::CrashExit,
                 qPrintable(QStringLiteral("Runde %1: Schreiber endete mit %2")
                                .arg(runde)
                                .arg(schreiber.exitCode())));
        const QList<QByteArray> zeilen = schreiber.readAllStandardOutput().split('\n');
        for (const QByteArray &zeile : zeilen) {
            QVERIFY2(!zeile.startsWith("FEHLER"), zeile.constData());
            if (zeile.startsWith("OK ")) {
                bestaetigt = zeile.mid(3).toInt();
                ++gesamt;
            }
        }
        beiDerArbeit += zeilen.first().startsWith("BEREIT") ? 1 : 0;
        const QString fehler = pruefen(bestaetigt);
        QVERIFY2(
            fehler.isEmpty(),
            qPrintable(QStringLiteral("Saat %1, Runde %2: %3").arg(saat).arg(runde).arg(fehler)));
        // A list of hundreds of games makes each entry slower; start a new one.
        if (bestaetigt > 300) {
            TestUmgebung::allesLoeschen();
            QVERIFY(QDir().mkpath(TestUmgebung::datenVerzeichnis()));
            bestaetigt = 0;
        }
    }
    qInfo("%d Toetungen (Saat %u), %d beim Eintragen; %d Spiele bestaetigt, keines verloren.",
          toetungen, saat, beiDerArbeit, gesamt);
}

KARTULO_TEST_MAIN(TstAbsturz)
#include "tst_absturz.moc"
