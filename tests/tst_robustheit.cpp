// Bad input at every place that takes text: empty, a megabyte, bytes that are
// no UTF-8, control characters, and text that looks like a statement or a
// message of its own. docs/robustness.md lists the places with their tests.

#include "core/db/protokolldatenbank.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"

#include <QtWidgets>

using namespace Fenster;

namespace {

const QString Einschleusung = QStringLiteral("x'; DROP TABLE SpielListe; --");
const QString Steuerzeichen = QStringLiteral("A") + QChar(u'\0') + QStringLiteral("B\x1b\t\r\nC");
const QString Megabyte(1 << 20, QLatin1Char('x'));

} // namespace

class TstRobustheit : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestUmgebung::allesLoeschen(); }
    void anweisungen_data();
    void anweisungen();
};

void TstRobustheit::anweisungen_data()
{
    QTest::addColumn<QString>("gruppe");
    QTest::addColumn<QString>("gespeichert");
    QTest::addColumn<QString>("name");
    QTest::newRow("leer") << ""
                          << ""
                          << "";
    QTest::newRow("1 MB") << Megabyte << Megabyte << QString(40, QLatin1Char('x'));
    QTest::newRow("halbes Zeichen")
        << QString(QChar(0xD800)) + "x" << QString(QChar(0xFFFD)) + "x" << QString();
    QTest::newRow("Steuerzeichen")
        << Steuerzeichen << QString(Steuerzeichen).remove(QChar(u'\0')) << "A B  C";
    QTest::newRow("Einschleusung") << Einschleusung << Einschleusung << Einschleusung;
}

// Group ids and player names are pasted into literal statements: a quote is
// doubled and a NUL, where SQLite would end the statement, is left out. Names
// reach the store cleaned (at most 40 characters, no control characters).
void TstRobustheit::anweisungen()
{
    QFETCH(QString, gruppe);
    QFETCH(QString, name);
    QDir().mkpath(TestUmgebung::datenVerzeichnis());
    ProtokollDatenbank db(TestUmgebung::datenVerzeichnis());
    QCOMPARE(db.oeffnen(), ProtokollDatenbank::Zustand::Neu);
    ListenKopf kopf;
    kopf.gruppe = gruppe;
    QVERIFY2(db.kopfSchreiben(kopf), qPrintable(db.fehler()));
    QTEST(db.kopfLesen().value_or(ListenKopf()).gruppe, "gespeichert");
    if (!name.isEmpty()) {
        const int nummer = db.spielerHinzufuegen({0, name, true, true});
        QVERIFY(nummer > 0);
        QCOMPARE(db.spielerHinzufuegen({0, name, true, true}), nummer);
        QCOMPARE(db.spielerNamen(), QStringList{name});
    }
    QCOMPARE(db.verbindung().tables().size(), 4);
}

KARTULO_TEST_MAIN(TstRobustheit)
#include "tst_robustheit.moc"
