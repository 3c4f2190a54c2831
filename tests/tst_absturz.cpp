// Kills a process that enters games at random moments, again and again, and
// checks after every kill that the list lost nothing it had confirmed: an
// intact database numbered 1..n holding every confirmed game exactly, and a
// journal and a backup copy that still read. KARTULO_KILLS sets the number of
// kills (30 by default), KARTULO_KILL_SEED the random sequence.

#include "absturz/spielfolge.h"
#include "core/files/skatjornal.h"
#include "core/files/xmlprotokoll.h"
#include "helpers/testumgebung.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QThread>

namespace {

// What a look at the files after a kill found; empty text when all is well.
struct Befund
{
    QString fehler;
    int spiele = 0;
};

Befund pruefen(int bestaetigt)
{
    Befund befund;
    const QString verbindung = QStringLiteral("pruefung");
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), verbindung);
        db.setDatabaseName(TestUmgebung::datenbankDatei());
        QSqlQuery query(db);
        if (!db.open() || !query.exec(QStringLiteral("PRAGMA integrity_check")) || !query.next() ||
            query.value(0).toString() != QLatin1String("ok")) {
            befund.fehler = QStringLiteral("Datenbank nicht intakt");
        } else if (query.exec(QStringLiteral("SELECT (SELECT count(*) FROM Settings) || ' ' || "
                                             "(SELECT count(*) FROM Teilnehmer)")) &&
                   query.next() && query.value(0).toString() != QLatin1String("1 4") &&
                   bestaetigt > 0) {
            // The first game stores header and seats with it.
            befund.fehler = QStringLiteral("Kopf und Sitze: %1").arg(query.value(0).toString());
        } else if (query.exec(QStringLiteral("SELECT * FROM SpielListe ORDER BY rowid"))) {
            while (query.next() && befund.fehler.isEmpty()) {
                const SpielEintrag gelesen = SpielEintrag::ausRecord(query.record());
                ++befund.spiele;
                if (gelesen != spielFuerZeile(befund.spiele))
                    befund.fehler = QStringLiteral("Zeile %1 falsch oder an falscher Stelle")
                                        .arg(befund.spiele);
            }
        }
    }
    QSqlDatabase::removeDatabase(verbindung);
    if (befund.fehler.isEmpty() && (befund.spiele < bestaetigt || befund.spiele > bestaetigt + 1))
        befund.fehler = QStringLiteral("%1 Spiele gespeichert, %2 bestaetigt")
                            .arg(befund.spiele)
                            .arg(bestaetigt);
    if (!befund.fehler.isEmpty())
        return befund;

    SkatJornal jornal;
    jornal.setPath(TestUmgebung::datenVerzeichnis() + QStringLiteral("/jornal"));
    if (QFile::exists(SkatJornal::dateiPfad(jornal.path(), SkatJornal::Json)) &&
        (!jornal.load(SkatJornal::Json) || jornal.eintraege().size() > befund.spiele))
        befund.fehler = QStringLiteral("Jornal unlesbar oder zu lang");

    QFile kopie(TestUmgebung::datenVerzeichnis() + QStringLiteral("/xmlsicherheitskopie.xml"));
    if (befund.fehler.isEmpty() && kopie.open(QIODevice::ReadOnly)) {
        const auto gelesen = XmlProtokoll::lesen(kopie.readAll());
        const auto *daten = std::get_if<XmlDaten>(&gelesen);
        if (!daten || daten->spiele.size() > befund.spiele)
            befund.fehler = QStringLiteral("Sicherheitskopie unlesbar oder zu lang");
        for (int i = 0; daten && befund.fehler.isEmpty() && i < daten->spiele.size(); ++i) {
            if (daten->spiele.at(i) != spielFuerZeile(i + 1))
                befund.fehler = QStringLiteral("Sicherheitskopie: Spiel %1 falsch").arg(i + 1);
        }
    }
    return befund;
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
    const int toetungen = qEnvironmentVariableIsSet("KARTULO_KILLS")
                              ? qEnvironmentVariableIntValue("KARTULO_KILLS")
                              : 30;
    const quint32 saat = qEnvironmentVariableIsSet("KARTULO_KILL_SEED")
                             ? quint32(qEnvironmentVariableIntValue("KARTULO_KILL_SEED"))
                             : 20261122u;
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
        const Befund befund = pruefen(bestaetigt);
        QVERIFY2(
            befund.fehler.isEmpty(),
            qPrintable(
                QStringLiteral("Saat %1, Runde %2: %3").arg(saat).arg(runde).arg(befund.fehler)));
        bestaetigt = befund.spiele;
        // A list of hundreds of games makes each entry slower; start a new one.
        if (bestaetigt > 300) {
            TestUmgebung::allesLoeschen();
            QVERIFY(QDir().mkpath(TestUmgebung::datenVerzeichnis()));
            bestaetigt = 0;
        }
    }
    qInfo("%d Toetungen (Saat %u), %d davon beim Eintragen; %d bestaetigte Spiele, keines "
          "verloren.",
          toetungen, saat, beiDerArbeit, gesamt);
}

KARTULO_TEST_MAIN(TstAbsturz)
#include "tst_absturz.moc"
