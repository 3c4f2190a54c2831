// The XML protocol file: the document of a known list byte for byte against the files in
// data/, an empty list, names with markup characters and umlauts, whole lists there and
// back, damaged and foreign files with the line of the problem, what a file may leave out,
// recognising protocol files, the file writer when writing fails, and the import into
// kartulo.db with its rollback.

#include "db/protokolldatenbank.h"
#include "helpers/testumgebung.h"
#include "sheets/xmlprotokoll.h"

#include <QDir>
#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>

#include <csignal>
#include <sys/resource.h>

namespace {

using S = SpielEintrag;

// Games of every kind: suit, Grand and Null games, hand, schneider and schwarz (announced
// or not), open games, lost games and rounds passed in, so that every column of the file
// takes more than one value and a mixed-up attribute shows.
QVector<SpielEintrag> abend(int anzahl, int spieler)
{
    QVector<SpielEintrag> spiele;
    quint32 zufall = 20240503;
    auto naechste = [&zufall](int grenze) {
        zufall = zufall * 1103515245u + 12345u;
        return static_cast<int>((zufall >> 16) % static_cast<quint32>(grenze));
    };
    static const int reizwerte[] = {18, 20, 22, 23, 24, 27, 30, 33, 35, 36, 40, 44, 46, 48, 50};
    for (int i = 0; i < anzahl; ++i) {
        SpielEintrag e;
        e.setze(S::Zeile, i + 1);
        if (naechste(10) == 0) {
            e.setze(S::Eingepasst, true);
            spiele << e;
            continue;
        }
        const int geber = i % spieler;
        int sitz = naechste(spieler);
        if (spieler == 4 && sitz == geber)
            sitz = (sitz + 1) % 4;
        int wert = 0;
        const int art = naechste(10);
        if (art < 2) {
            static const int nullWerte[] = {23, 35, 46, 59};
            const int n = naechste(4);
            e.setze(S::Spiel, 23);
            e.setze(S::Hand, n == 1 || n == 3);
            e.setze(S::Offen, n >= 2);
            wert = nullWerte[n];
        } else {
            const int grund = art < 4 ? 24 : 9 + naechste(4);
            const int spitzen = 1 + naechste(4);
            e.setze(naechste(2) ? S::Mit : S::Ohne, spitzen);
            e.setze(S::Spiel, grund);
            int stufe = spitzen + 1;
            const bool hand = naechste(3) == 0;
            e.setze(S::Hand, hand);
            stufe += hand ? 1 : 0;
            const int extra = naechste(6);
            if (extra >= 3) {
                e.setze(S::Schneider, true);
                ++stufe;
            }
            if (hand && extra >= 4) {
                e.setze(S::AngSchneider, true);
                ++stufe;
            }
            if (extra >= 4) {
                e.setze(S::Schwarz, true);
                ++stufe;
            }
            if (hand && extra == 5) {
                e.setze(S::AngSchwarz, true);
                ++stufe;
                if (naechste(2)) {
                    e.setze(S::Offen, true);
                    ++stufe;
                }
            }
            wert = grund * stufe;
        }
        const bool verloren = naechste(4) == 0;
        e.setze(verloren ? S::Verloren : S::Gewonnen, verloren ? 2 * wert : wert);
        e.setze(static_cast<S::Spalte>(S::Spieler1 + sitz), verloren ? -2 * wert : wert);
        int reizung = 18;
        for (int r : reizwerte) {
            if (r <= wert && naechste(3) != 0)
                reizung = r;
        }
        e.setze(S::Reizung, reizung);
        spiele << e;
    }
    return spiele;
}

// A tournament list of four with a name of each kind that needs care in XML: "&", quotes,
// angle brackets, umlauts and an apostrophe (which stays as it is in a double-quoted
// attribute). Every cost differs from the others, so a swapped attribute shows.
XmlDaten turnierListe(int anzahlSpiele = 48)
{
    XmlDaten d;
    d.datum = QDate(2024, 5, 3);
    d.tischNr = 5;
    d.serie = 2;
    d.spielAnzahl = 48;
    d.modus = 0;
    d.kosten = QStringList{"1.20", "0.60", "1.10", "12.50", "20",  "35",
                           "45",   "0.50", "1.50", "2.50",  "3.50"};
    d.verein = QStringLiteral("Skatclub Grün-Weiß 1896 e.V.");
    d.gruppe = QStringLiteral("Herbst'24");
    d.spieler = {
        {1017, QStringLiteral("Anna Bergmann"), QStringLiteral("Ja"), QStringLiteral("Ja")},
        {233, QStringLiteral("Jörg \"Jo\" Weiß & Söhne"), QStringLiteral("Ja"),
         QStringLiteral("Nein")},
        {4, QStringLiteral("Carl <Köhler>"), QStringLiteral("Nein"), QStringLiteral("Ja")},
        {1290, QStringLiteral("Dora O'Neill"), QStringLiteral("Ja"), QStringLiteral("Ja")}};
    d.spiele = abend(anzahlSpiele, 4);
    return d;
}

// A result list of three that has just been started: no games yet, costs as typed with a
// decimal comma.
XmlDaten ergebnisListeOhneSpiele()
{
    XmlDaten d;
    d.datum = QDate(2024, 12, 31);
    d.tischNr = 12;
    d.serie = 1;
    d.spielAnzahl = 36;
    d.modus = 1;
    d.kosten = QStringList{"1,5", "1", "2", "10", "50", "30", "40", "0", "1,5", "2,5", "3"};
    d.verein = QStringLiteral("MeinVerein");
    d.gruppe = QString();
    d.spieler = {{11, QStringLiteral("Eva"), QStringLiteral("Ja"), QStringLiteral("Ja")},
                 {12, QStringLiteral("Max"), QStringLiteral("Nein"), QStringLiteral("Nein")},
                 {13, QStringLiteral("Ute"), QStringLiteral("Ja"), QStringLiteral("Nein")}};
    return d;
}

QString spielText(const SpielEintrag &spiel)
{
    QStringList werte;
    for (int spalte = 0; spalte < S::AnzahlSpalten; ++spalte)
        werte << QString::number(spiel.wert(spalte));
    return werte.join(QLatin1Char(' '));
}

// The first difference between two protocols, empty when they are equal; a failing
// comparison then names the field instead of printing two whole lists.
QString unterschied(const XmlDaten &a, const XmlDaten &b)
{
    const auto feld = [](const char *name, const auto &x, const auto &y) {
        return QStringLiteral("%1: %2 / %3").arg(QLatin1String(name), x, y);
    };
    if (a.datum != b.datum)
        return feld("datum", a.datum.toString(Qt::ISODate), b.datum.toString(Qt::ISODate));
    const QString kopfA =
        QStringLiteral("%1 %2 %3 %4").arg(a.tischNr).arg(a.serie).arg(a.spielAnzahl).arg(a.modus);
    const QString kopfB =
        QStringLiteral("%1 %2 %3 %4").arg(b.tischNr).arg(b.serie).arg(b.spielAnzahl).arg(b.modus);
    if (kopfA != kopfB)
        return feld("tisch serie anzahl modus", kopfA, kopfB);
    if (a.kosten != b.kosten)
        return feld("kosten", a.kosten.join(QLatin1Char('|')), b.kosten.join(QLatin1Char('|')));
    if (a.verein != b.verein || a.gruppe != b.gruppe)
        return feld("verein/gruppe", a.verein + QLatin1Char('/') + a.gruppe,
                    b.verein + QLatin1Char('/') + b.gruppe);
    if (a.spieler.size() != b.spieler.size())
        return feld("spieler", QString::number(a.spieler.size()),
                    QString::number(b.spieler.size()));
    for (int i = 0; i < a.spieler.size(); ++i) {
        const XmlSpieler &x = a.spieler.at(i);
        const XmlSpieler &y = b.spieler.at(i);
        const QString textA =
            QStringLiteral("%1|%2|%3|%4").arg(x.mgldNr).arg(x.name, x.mitglied, x.preisskat);
        const QString textB =
            QStringLiteral("%1|%2|%3|%4").arg(y.mgldNr).arg(y.name, y.mitglied, y.preisskat);
        if (textA != textB)
            return feld("spieler", textA, textB);
    }
    if (a.spiele.size() != b.spiele.size())
        return feld("spiele", QString::number(a.spiele.size()), QString::number(b.spiele.size()));
    for (int i = 0; i < a.spiele.size(); ++i) {
        if (a.spiele.at(i) != b.spiele.at(i))
            return feld("spiel", spielText(a.spiele.at(i)), spielText(b.spiele.at(i)));
    }
    return QString();
}

// A protocol as lines of text, for comparing read files against what they should give.
QStringList zusammenfassung(const XmlDaten &d)
{
    QStringList zeilen{
        QStringLiteral("kopf %1 %2 %3 %4 %5")
            .arg(d.datum.isValid() ? d.datum.toString(Qt::ISODate) : QStringLiteral("ungueltig"))
            .arg(d.tischNr)
            .arg(d.serie)
            .arg(d.spielAnzahl)
            .arg(d.modus),
        QStringLiteral("kosten ") + d.kosten.join(QLatin1Char('|')),
        QStringLiteral("verein \"%1\" gruppe \"%2\"").arg(d.verein, d.gruppe)};
    for (const XmlSpieler &s : d.spieler)
        zeilen << QStringLiteral("spieler %1|%2|%3|%4")
                      .arg(s.mgldNr)
                      .arg(s.name, s.mitglied, s.preisskat);
    for (const SpielEintrag &e : d.spiele)
        zeilen << QStringLiteral("spiel ") + spielText(e);
    return zeilen;
}

QString nullKosten()
{
    return QStringLiteral("kosten 0|0|0|0|0|0|0|0|0|0|0");
}

XmlDaten gelesen(const QByteArray &inhalt)
{
    const auto ergebnis = XmlProtokoll::lesen(inhalt);
    if (const auto *fehler = std::get_if<XmlFehler>(&ergebnis))
        qWarning("Zeile %lld: %s", fehler->zeile, qPrintable(fehler->text));
    return std::get_if<XmlDaten>(&ergebnis) ? std::get<XmlDaten>(ergebnis) : XmlDaten();
}

QByteArray dateiInhalt(const QString &pfad)
{
    QFile datei(pfad);
    if (!datei.open(QIODevice::ReadOnly))
        return QByteArray("<nicht lesbar>");
    return datei.readAll();
}

bool dateiAnlegen(const QString &pfad, const QByteArray &inhalt)
{
    QFile datei(pfad);
    return datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size();
}

// Every row of a table as text, in storage order; empty when the table cannot be read.
QStringList tabelle(const QSqlDatabase &db, const QString &name)
{
    QStringList zeilen;
    QSqlQuery query(db);
    query.exec(QStringLiteral("SELECT * FROM ") + name);
    while (query.next()) {
        QStringList werte;
        for (int i = 0; i < query.record().count(); ++i)
            werte << query.value(i).toString();
        zeilen << werte.join(QLatin1Char('|'));
    }
    return zeilen;
}

bool sql(const QSqlDatabase &db, const QString &statement)
{
    QSqlQuery query(db);
    if (query.exec(statement))
        return true;
    qWarning("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
    return false;
}

// A running list in kartulo.db that an import is to replace: header, three participants,
// three games and a registry the import must not touch.
bool alteListeAnlegen(ProtokollDatenbank &db)
{
    ListenKopf kopf;
    kopf.tischNr = 9;
    kopf.serie = 3;
    kopf.anzahlSpiele = 36;
    kopf.modus = 2;
    kopf.blPunkte = 300;
    kopf.datum = QDate(2023, 1, 2);
    kopf.gruppe = QStringLiteral("Alt");
    db.kopfSchreiben(kopf);
    for (const XmlSpieler &s : ergebnisListeOhneSpiele().spieler) {
        QSqlQuery query(db.verbindung());
        query.prepare(QStringLiteral(
            "INSERT INTO Teilnehmer (MgldNr, Name, Mitglied, Preisskat)VALUES (?, ?, ?, ?)"));
        query.addBindValue(s.mgldNr);
        query.addBindValue(s.name);
        query.addBindValue(s.mitglied);
        query.addBindValue(s.preisskat);
        if (!query.exec())
            return false;
    }
    for (const SpielEintrag &e : abend(3, 3))
        db.einfuegen(e);
    db.spielerEintragen(1, QStringLiteral("Registriert"), true, false);
    return db.anzahlEintraege() == 3 && tabelle(db.verbindung(), "Teilnehmer").size() == 3;
}

// Lets a write beyond the given size fail the way a full disk does (the write returns an
// error) instead of ending the program with SIGXFSZ. Root ignores permissions, not this.
class Dateigroessengrenze
{
public:
    explicit Dateigroessengrenze(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_alt);
        m_signal = std::signal(SIGXFSZ, SIG_IGN);
        rlimit neu = m_alt;
        neu.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &neu);
    }
    ~Dateigroessengrenze()
    {
        setrlimit(RLIMIT_FSIZE, &m_alt);
        std::signal(SIGXFSZ, m_signal);
    }
    Dateigroessengrenze(const Dateigroessengrenze &) = delete;
    Dateigroessengrenze &operator=(const Dateigroessengrenze &) = delete;

private:
    rlimit m_alt{};
    void (*m_signal)(int) = SIG_DFL;
};

enum class Fehlschlag
{
    VerzeichnisFehlt,
    ZielIstVerzeichnis,
    VerzeichnisSchreibgeschuetzt,
    PlatteVoll
};

} // namespace

Q_DECLARE_METATYPE(XmlDaten)
Q_DECLARE_METATYPE(Fehlschlag)

class TstXmlProtokoll : public QObject
{
    Q_OBJECT

private slots:
    void vorlage_data();
    void vorlage();
    void ohneSpiele_data();
    void ohneSpiele();
    void zeichenImNamen_data();
    void zeichenImNamen();
    void rundreise_data();
    void rundreise();
    void modus_data();
    void modus();
    void fehler_data();
    void fehler();
    void fehlendeAngaben_data();
    void fehlendeAngaben();
    void istProtokoll_data();
    void istProtokoll();
    void dateiSchreiben_data();
    void dateiSchreiben();
    void dateiSchreibenFehlschlag_data();
    void dateiSchreibenFehlschlag();
    void ersetzen_data();
    void ersetzen();
    void ersetzenRollback_data();
    void ersetzenRollback();
    void ersetzenFremdeDatei();

private:
    QTemporaryDir verzeichnis;
};

void TstXmlProtokoll::vorlage_data()
{
    QTest::addColumn<XmlDaten>("daten");
    QTest::addColumn<QString>("datei");

    QTest::newRow("Turnierliste, 48 Spiele") << turnierListe() << "data/protokoll48.xml";
    QTest::newRow("Ergebnisliste ohne Spiele")
        << ergebnisListeOhneSpiele() << "data/protokoll_ohne_spiele.xml";
}

// The files in data/ were checked by hand: attribute names and order, "ja"/"nein", the
// date, the escaped name characters and UTF-8 umlauts. Files from earlier evenings must
// keep opening, so the document may not drift.
void TstXmlProtokoll::vorlage()
{
    QFETCH(XmlDaten, daten);
    QFETCH(QString, datei);
    const QString vorlagePfad = QFINDTESTDATA(datei);
    QVERIFY2(!vorlagePfad.isEmpty(), qPrintable(datei));
    const QByteArray erwartet = dateiInhalt(vorlagePfad);

    const QString pfad = verzeichnis.filePath(QStringLiteral("vorlage.xml"));
    QVERIFY(XmlProtokoll::dateiSchreiben(pfad, XmlProtokoll::schreiben(daten)));
    const QByteArray geschrieben = dateiInhalt(pfad);
    // Line by line first, so that a difference is shown where it is.
    const QList<QByteArray> zeilen = geschrieben.split('\n');
    const QList<QByteArray> erwarteteZeilen = erwartet.split('\n');
    for (int i = 0; i < qMin(zeilen.size(), erwarteteZeilen.size()); ++i)
        QCOMPARE(zeilen.at(i), erwarteteZeilen.at(i));
    QCOMPARE(geschrieben, erwartet);
}

void TstXmlProtokoll::ohneSpiele_data()
{
    QTest::addColumn<XmlDaten>("daten");

    QTest::newRow("4 Spieler") << turnierListe(0);
    QTest::newRow("3 Spieler") << ergebnisListeOhneSpiele();
    XmlDaten ohneSpieler = turnierListe(0);
    ohneSpieler.spieler.clear();
    QTest::newRow("ohne Spieler") << ohneSpieler;
}

void TstXmlProtokoll::ohneSpiele()
{
    QFETCH(XmlDaten, daten);
    const QString text = XmlProtokoll::schreiben(daten);
    QVERIFY2(text.endsWith(QLatin1String("\n    <spiele/>\n</Kartulo>")), qPrintable(text));
    QVERIFY(!text.contains(QLatin1String("<spiel ")));
    const XmlDaten zurueck = gelesen(text.toUtf8());
    QCOMPARE(zurueck.spiele.size(), 0);
    QCOMPARE(zurueck.spieler.size(), daten.spieler.size());
}

void TstXmlProtokoll::zeichenImNamen_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("imText");

    QTest::newRow("&") << "Anna & Bert" << QByteArray("name=\"Anna &amp; Bert\"");
    QTest::newRow("Anfuehrungszeichen")
        << "Jo \"Jockel\" Lang" << QByteArray("name=\"Jo &quot;Jockel&quot; Lang\"");
    QTest::newRow("spitze Klammern") << "<Carl>" << QByteArray("name=\"&lt;Carl&gt;\"");
    QTest::newRow("Apostroph") << "Dora O'Neill" << QByteArray("name=\"Dora O'Neill\"");
    QTest::newRow("Umlaute als UTF-8") << QStringLiteral("Jörg Weiß-Übel")
                                       << QByteArray("name=\"J\xc3\xb6rg Wei\xc3\x9f-\xc3\x9c"
                                                     "bel\"");
    QTest::newRow("Prozent") << "Ute %1" << QByteArray("name=\"Ute %1\"");
    // Attribute values lose line breaks and tabs unless they are written as references.
    QTest::newRow("Tabulator und Zeilenumbruch")
        << "Max\tMustermann\nJr." << QByteArray("name=\"Max&#9;Mustermann&#10;Jr.\"");
}

void TstXmlProtokoll::zeichenImNamen()
{
    QFETCH(QString, name);
    XmlDaten daten = ergebnisListeOhneSpiele();
    daten.spieler[1].name = name;
    daten.verein = name;
    const QByteArray text = XmlProtokoll::schreiben(daten).toUtf8();
    QFETCH(QByteArray, imText);
    QVERIFY2(text.contains(imText), text.constData());
    const XmlDaten zurueck = gelesen(text);
    QCOMPARE(zurueck.spieler.value(1).name, name);
    QCOMPARE(zurueck.verein, name);
}

void TstXmlProtokoll::rundreise_data()
{
    QTest::addColumn<XmlDaten>("daten");

    QTest::newRow("Turnierliste, 48 Spiele") << turnierListe();
    XmlDaten lang = turnierListe(1000);
    lang.modus = 1;
    lang.spielAnzahl = 1000;
    QTest::newRow("Ergebnisliste, 1000 Spiele") << lang;
    XmlDaten dreier = ergebnisListeOhneSpiele();
    dreier.spiele = abend(36, 3);
    QTest::newRow("3 Spieler, Kosten mit Komma") << dreier;
    QTest::newRow("ohne Spiele") << ergebnisListeOhneSpiele();
    XmlDaten ohneDatum = turnierListe(5);
    ohneDatum.datum = QDate();
    QTest::newRow("ohne Datum") << ohneDatum;
    // Rows deleted in the middle leave no gap in the table, but a file edited by hand may
    // have one; the numbers are taken as they are.
    XmlDaten luecke = turnierListe(4);
    luecke.spiele[2].setze(S::Zeile, 7);
    luecke.spiele[3].setze(S::Zeile, 8);
    QTest::newRow("Nummern mit Luecke") << luecke;
    XmlDaten grenzen = turnierListe(1);
    grenzen.tischNr = 2147483647;
    grenzen.serie = -3;
    grenzen.spiele[0].setze(S::Spieler2, -2147483647 - 1);
    QTest::newRow("Grenzwerte") << grenzen;
}

void TstXmlProtokoll::rundreise()
{
    QFETCH(XmlDaten, daten);
    const QString pfad = verzeichnis.filePath(QStringLiteral("rundreise.xml"));
    QVERIFY(XmlProtokoll::dateiSchreiben(pfad, XmlProtokoll::schreiben(daten)));
    const auto ergebnis = XmlProtokoll::lesen(dateiInhalt(pfad));
    QVERIFY(std::holds_alternative<XmlDaten>(ergebnis));
    QCOMPARE(unterschied(std::get<XmlDaten>(ergebnis), daten), QString());
}

void TstXmlProtokoll::modus_data()
{
    QTest::addColumn<int>("modus");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("gelesen");

    QTest::newRow("Turnier") << 0 << "Turnier" << 0;
    QTest::newRow("Ergebnis") << 1 << "Ergebnis" << 1;
    // The file knows only the two; a Bierlachs list comes back as a tournament.
    QTest::newRow("Bierlachs") << 2 << "Turnier" << 0;
    QTest::newRow("unbekannt") << -1 << "Turnier" << 0;
}

void TstXmlProtokoll::modus()
{
    QFETCH(int, modus);
    XmlDaten daten = turnierListe(0);
    daten.modus = modus;
    const QString dokument = XmlProtokoll::schreiben(daten);
    QFETCH(QString, text);
    QVERIFY2(dokument.contains(QStringLiteral(" modus=\"%1\" ").arg(text)), qPrintable(dokument));
    QTEST(gelesen(dokument.toUtf8()).modus, "gelesen");
}

void TstXmlProtokoll::fehler_data()
{
    QTest::addColumn<QByteArray>("inhalt");
    QTest::addColumn<qint64>("zeile");
    QTest::addColumn<QString>("textTeil");

    const QByteArray kopf = "<?xml version=\"1.0\"?>\n"
                            "<Kartulo datum=\"03-05-2024\" tischnr=\"5\" serie=\"2\">\n";
    const QByteArray spieler = "    <spieler1 mgldnr=\"1\" name=\"Anna\"/>\n"
                               "    <spieler2 mgldnr=\"2\" name=\"Bert\"/>\n"
                               "    <spieler3 mgldnr=\"3\" name=\"Carl\"/>\n";
    const QByteArray spiel = "        <spiel nr=\"1\" spiel=\"12\" gewonnen=\"48\"/>\n";
    const QByteArray ende = "    </spiele>\n</Kartulo>\n";

    QTest::newRow("leere Datei") << QByteArray() << qint64(1) << "leer";
    QTest::newRow("nur Leerzeilen") << QByteArray("\n  \n\n") << qint64(1) << "leer";
    QTest::newRow("Tag nicht geschlossen")
        << kopf + spieler + "    <spiele>\n        <spiel nr=\"1\" spiel=\"12\">\n" + ende
        << qint64(8) << "Opening and ending tag mismatch";

    // The 48-game file cut in the middle of the row of game 19 (line 26).
    QFile vorlage(QFINDTESTDATA("data/protokoll48.xml"));
    QVERIFY(vorlage.open(QIODevice::ReadOnly));
    QByteArray abgeschnitten;
    for (int zeile = 1; zeile < 26; ++zeile)
        abgeschnitten += vorlage.readLine();
    abgeschnitten += vorlage.readLine().left(60);
    QTest::newRow("abgeschnitten") << abgeschnitten << qint64(26) << "bricht mitten";
    QTest::newRow("nach dem Kopf abgeschnitten") << kopf + spieler << qint64(6) << "bricht mitten";

    QTest::newRow("fremde Wurzel")
        << QByteArray("<?xml version=\"1.0\"?>\n<Protokoll datum=\"03-05-2024\">\n</Protokoll>\n")
        << qint64(2) << "Keine Kartulo-Protokolldatei";
    QTest::newRow("HTML-Datei") << QByteArray("<!DOCTYPE html>\n\n<html>\n<body/>\n</html>\n")
                                << qint64(3) << "Keine Kartulo-Protokolldatei";
    QTest::newRow("kein XML") << QByteArray("%PDF-1.4\n%\xe2\xe3\xcf\xd3\n") << qint64(1)
                              << "kein gueltiges XML";
    QTest::newRow("zweite Wurzel") << QByteArray("<Kartulo datum=\"03-05-2024\"/>\n\n<Kartulo/>\n")
                                   << qint64(3) << "kein gueltiges XML";

    QTest::newRow("tischnr abc")
        << QByteArray("<?xml version=\"1.0\"?>\n<Kartulo tischnr=\"abc\">\n</Kartulo>\n")
        << qint64(2) << "\"tischnr\" von <Kartulo> ist keine Zahl: \"abc\"";
    QTest::newRow("gewonnen abc im dritten Spiel")
        << kopf + spieler + "    <spiele>\n" + spiel + spiel +
               "        <spiel nr=\"3\" spiel=\"12\" gewonnen=\"abc\"/>\n" + ende
        << qint64(9) << "\"gewonnen\" von <spiel> ist keine Zahl: \"abc\"";
    QTest::newRow("mgldnr 12x") << kopf +
                                       "    <spieler1 mgldnr=\"12x\" name=\"Anna\"/>\n</Kartulo>\n"
                                << qint64(3) << "\"mgldnr\" von <spieler1>";
    QTest::newRow("reizung zu gross")
        << kopf + "<spiele>\n<spiel reizung=\"99999999999\"/>\n</spiele>\n</Kartulo>\n"
        << qint64(4) << "\"reizung\"";
    QTest::newRow("nr mit Komma") << kopf + "<spiele><spiel nr=\"1.5\"/></spiele></Kartulo>\n"
                                  << qint64(3) << "\"nr\"";
    QTest::newRow("Kosten abc") << QByteArray(
                                       "<?xml version=\"1.0\"?>\n\n<Kartulo platz3=\"abc\"/>\n")
                                << qint64(3) << "\"platz3\" von <Kartulo> ist keine Zahl";
    QTest::newRow("31. Februar")
        << QByteArray("<?xml version=\"1.0\"?>\n<Kartulo datum=\"31-02-2024\"/>\n") << qint64(2)
        << "\"datum\"";
    QTest::newRow("Datum in anderer Form")
        << QByteArray("<?xml version=\"1.0\"?>\n<Kartulo datum=\"2024-05-03\"/>\n") << qint64(2)
        << "\"datum\"";
    QTest::newRow("spieler2 vor spieler1")
        << kopf + "    <spieler2 name=\"Bert\"/>\n    <spieler1 name=\"Anna\"/>\n</Kartulo>\n"
        << qint64(3) << "<spieler2> steht an falscher Stelle";
    QTest::newRow("spieler1 doppelt")
        << kopf + "    <spieler1 name=\"Anna\"/>\n    <spieler1 name=\"Bert\"/>\n</Kartulo>\n"
        << qint64(4) << "<spieler1> steht an falscher Stelle";
}

void TstXmlProtokoll::fehler()
{
    QFETCH(QByteArray, inhalt);
    const auto ergebnis = XmlProtokoll::lesen(inhalt);
    const auto *fehler = std::get_if<XmlFehler>(&ergebnis);
    QVERIFY(fehler);
    QFETCH(QString, textTeil);
    QVERIFY2(fehler->text.contains(textTeil), qPrintable(fehler->text));
    QTEST(fehler->zeile, "zeile");
}

void TstXmlProtokoll::fehlendeAngaben_data()
{
    QTest::addColumn<QByteArray>("inhalt");
    QTest::addColumn<QStringList>("erwartet");

    const QString leererKopf = QStringLiteral("kopf ungueltig 0 0 48 0");
    const QString ohneVerein = QStringLiteral("verein \"\" gruppe \"\"");
    const QString leeresSpiel = QStringLiteral(" 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0");

    QTest::newRow("nur die Wurzel")
        << QByteArray("<Kartulo/>") << QStringList{leererKopf, nullKosten(), ohneVerein};
    QTest::newRow("leere Attribute")
        << QByteArray("<Kartulo datum=\"\" tischnr=\"\" serie=\"\" modus=\"\" spielanzahl=\"\" "
                      "kartengeld=\"\" verein=\"\"><spieler1 mgldnr=\"\" name=\"\" mitglied=\"\" "
                      "preisskat=\"\"/></Kartulo>")
        << QStringList{leererKopf, nullKosten(), ohneVerein,
                       QStringLiteral("spieler 0|Spieler 1|Nein|Nein")};
    QTest::newRow("Spieler 2 ohne Namen")
        << QByteArray("<Kartulo tischnr=\"3\"><spieler1 mgldnr=\"5\" name=\"Anna\" mitglied=\"Ja\" "
                      "preisskat=\"Ja\"/><spieler2 mgldnr=\"7\" mitglied=\"Ja\"/></Kartulo>")
        << QStringList{QStringLiteral("kopf ungueltig 3 0 48 0"), nullKosten(), ohneVerein,
                       QStringLiteral("spieler 5|Anna|Ja|Ja"),
                       QStringLiteral("spieler 7|Spieler 2|Ja|Nein")};
    QTest::newRow("Spiele ohne Nummer")
        << QByteArray("<Kartulo><spiele><spiel spiel=\"12\"/><spiel nr=\"7\"/><spiel/>"
                      "</spiele></Kartulo>")
        << QStringList{leererKopf,
                       nullKosten(),
                       ohneVerein,
                       QStringLiteral("spiel 1 12 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0"),
                       QStringLiteral("spiel 7") + leeresSpiel,
                       QStringLiteral("spiel 8") + leeresSpiel};
    QTest::newRow("Kosten teils fehlend, mit Komma")
        << QByteArray("<Kartulo kartengeld=\"1,5\" preisskat=\"10.00\" platz4=\"-2\"/>")
        << QStringList{leererKopf, QStringLiteral("kosten 1,5|0|0|10.00|0|0|0|0|0|0|-2"),
                       ohneVerein};
    // Only "Ergebnis" makes a result list; the mode is written by Kartulo alone.
    QTest::newRow("modus klein geschrieben") << QByteArray("<Kartulo modus=\"ergebnis\"/>")
                                             << QStringList{leererKopf, nullKosten(), ohneVerein};
    QTest::newRow("modus Ergebnis")
        << QByteArray("<Kartulo modus=\"Ergebnis\"/>")
        << QStringList{QStringLiteral("kopf ungueltig 0 0 48 1"), nullKosten(), ohneVerein};
    // "ja" in any case is true, everything else false.
    QTest::newRow("Flags")
        << QByteArray("<Kartulo><spiele><spiel nr=\"1\" hand=\"Ja\" schneider=\"JA\" "
                      "angesschneider=\"nein\" schwarz=\"1\" angschwarz=\"true\" offen=\"ja\" "
                      "eingepasst=\"\"/></spiele></Kartulo>")
        << QStringList{leererKopf, nullKosten(), ohneVerein,
                       QStringLiteral("spiel 1 0 0 0 1 1 0 0 0 1 0 0 0 0 0 0 0 0")};
    QTest::newRow("unbekannte Elemente, Text und Kommentare")
        << QByteArray("<?xml version=\"1.0\"?>\n<!-- von Hand bearbeitet -->\n"
                      "<Kartulo tischnr=\"4\" farbe=\"blau\">Text<notiz>x<spiel nr=\"90\"/></notiz>"
                      "<spiel nr=\"91\"/><spieler1 name=\"Anna\"><extra/></spieler1>"
                      "<spiele><kommentar/><spiel nr=\"1\" spiel=\"9\"><extra nr=\"92\"/></spiel>"
                      "<?anweisung?></spiele><spieler2 name=\"Bert\"/><spieler3 name=\"Carl\"/>"
                      "<spieler4 name=\"Dora\"/><spieler5 name=\"Egon\"/></Kartulo>")
        << QStringList{QStringLiteral("kopf ungueltig 4 0 48 0"),
                       nullKosten(),
                       ohneVerein,
                       QStringLiteral("spieler 0|Anna|Nein|Nein"),
                       QStringLiteral("spieler 0|Bert|Nein|Nein"),
                       QStringLiteral("spieler 0|Carl|Nein|Nein"),
                       QStringLiteral("spieler 0|Dora|Nein|Nein"),
                       QStringLiteral("spiel 1 9 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0")};
    // Files copied through other machines: byte-order mark, CRLF, another encoding.
    QTest::newRow("BOM und CRLF")
        << QByteArray("\xef\xbb\xbf<?xml version=\"1.0\"?>\r\n<Kartulo datum=\"03-05-2024\" "
                      "verein=\"Grün\">\r\n    <spieler1 name=\"Jörg\"/>\r\n</Kartulo>\r\n")
        << QStringList{QStringLiteral("kopf 2024-05-03 0 0 48 0"), nullKosten(),
                       QStringLiteral("verein \"Grün\" gruppe \"\""),
                       QStringLiteral("spieler 0|Jörg|Nein|Nein")};
    QTest::newRow("Latin-1") << QByteArray(
                                    "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n"
                                    "<Kartulo><spieler1 name=\"J\xf6rg Wei\xdf\"/></Kartulo>\n")
                             << QStringList{leererKopf, nullKosten(), ohneVerein,
                                            QStringLiteral("spieler 0|Jörg Weiß|Nein|Nein")};
}

void TstXmlProtokoll::fehlendeAngaben()
{
    QFETCH(QByteArray, inhalt);
    const auto ergebnis = XmlProtokoll::lesen(inhalt);
    if (const auto *fehler = std::get_if<XmlFehler>(&ergebnis))
        QFAIL(qPrintable(QStringLiteral("Zeile %1: %2").arg(fehler->zeile).arg(fehler->text)));
    QTEST(zusammenfassung(std::get<XmlDaten>(ergebnis)), "erwartet");
}

void TstXmlProtokoll::istProtokoll_data()
{
    QTest::addColumn<QByteArray>("inhalt");
    QTest::addColumn<bool>("erwartet");

    QTest::newRow("geschriebenes Protokoll")
        << XmlProtokoll::schreiben(turnierListe(2)).toUtf8() << true;
    QTest::newRow("Anfang reicht")
        << QByteArray("<?xml version=\"1.0\"?>\n<Kartulo datum=") << true;
    QTest::newRow("leer") << QByteArray() << false;
    QTest::newRow("andere XML-Datei")
        << QByteArray("<?xml version=\"1.0\"?>\n<Protokoll name=\"Kartulo\"/>") << false;
    // The start tag followed by a blank, as Kartulo writes it, and nothing else.
    QTest::newRow("ohne Attribute") << QByteArray("<Kartulo/>") << false;
    QTest::newRow("Zeilenumbruch nach dem Namen") << QByteArray("<Kartulo\ndatum=\"\"/>") << false;
    QTest::newRow("klein geschrieben") << QByteArray("<kartulo datum=\"\"/>") << false;
    QTest::newRow("anderer Name mit gleichem Anfang")
        << QByteArray("<KartuloListe datum=\"\"/>") << false;
}

void TstXmlProtokoll::istProtokoll()
{
    QFETCH(QByteArray, inhalt);
    QTEST(XmlProtokoll::istProtokoll(inhalt), "erwartet");
}

void TstXmlProtokoll::dateiSchreiben_data()
{
    QTest::addColumn<QByteArray>("alt");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("erwartet");

    QTest::newRow("neue Datei") << QByteArray() << QStringLiteral("<a>Jörg</a>")
                                << QByteArray("<a>J\xc3\xb6rg</a>\n");
    // A shorter copy must not keep the tail of the longer one before it.
    QTest::newRow("laengere Datei ersetzt")
        << QByteArray(5000, 'x') << QStringLiteral("kurz") << QByteArray("kurz\n");
    QTest::newRow("leerer Text") << QByteArray("alt") << QString() << QByteArray("\n");
}

void TstXmlProtokoll::dateiSchreiben()
{
    QFETCH(QByteArray, alt);
    QFETCH(QString, text);
    const QString pfad = verzeichnis.filePath(QStringLiteral("schreiben.xml"));
    QFile::remove(pfad);
    if (!alt.isEmpty())
        QVERIFY(dateiAnlegen(pfad, alt));
    QVERIFY(XmlProtokoll::dateiSchreiben(pfad, text));
    QTEST(dateiInhalt(pfad), "erwartet");
}

void TstXmlProtokoll::dateiSchreibenFehlschlag_data()
{
    QTest::addColumn<Fehlschlag>("fehlschlag");

    QTest::newRow("Verzeichnis fehlt") << Fehlschlag::VerzeichnisFehlt;
    QTest::newRow("Ziel ist ein Verzeichnis") << Fehlschlag::ZielIstVerzeichnis;
    QTest::newRow("Verzeichnis schreibgeschuetzt") << Fehlschlag::VerzeichnisSchreibgeschuetzt;
    QTest::newRow("Platte voll") << Fehlschlag::PlatteVoll;
}

// The backup overwrites its last copy every few minutes: a write that fails must leave
// that copy as it was and no temporary file beside it.
void TstXmlProtokoll::dateiSchreibenFehlschlag()
{
    QFETCH(Fehlschlag, fehlschlag);
    QTemporaryDir ort;
    const QString altText = QStringLiteral("<Kartulo datum=\"01-01-2024\"/>");
    const QByteArray altInhalt = altText.toUtf8() + '\n';
    const QString text = XmlProtokoll::schreiben(turnierListe());
    QString pfad = ort.filePath(QStringLiteral("xmlsicherheitskopie.xml"));

    bool geschrieben = true;
    switch (fehlschlag) {
    case Fehlschlag::VerzeichnisFehlt:
        pfad = ort.filePath(QStringLiteral("fehlt/xmlsicherheitskopie.xml"));
        geschrieben = XmlProtokoll::dateiSchreiben(pfad, text);
        QVERIFY(!QFile::exists(pfad));
        QVERIFY(!QDir(ort.filePath(QStringLiteral("fehlt"))).exists());
        break;
    case Fehlschlag::ZielIstVerzeichnis:
        QVERIFY(QDir(ort.path()).mkdir(QStringLiteral("xmlsicherheitskopie.xml")));
        geschrieben = XmlProtokoll::dateiSchreiben(pfad, text);
        QVERIFY(QFileInfo(pfad).isDir());
        break;
    case Fehlschlag::VerzeichnisSchreibgeschuetzt: {
        QVERIFY(XmlProtokoll::dateiSchreiben(pfad, altText));
        QFile::setPermissions(ort.path(), QFile::ReadOwner | QFile::ExeOwner);
        const bool trotzdemSchreibbar = QFileInfo(ort.path()).isWritable();
        if (!trotzdemSchreibbar)
            geschrieben = XmlProtokoll::dateiSchreiben(pfad, text);
        QFile::setPermissions(ort.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        if (trotzdemSchreibbar)
            QSKIP("Permissions do not bind this user (root)");
        QCOMPARE(dateiInhalt(pfad), altInhalt);
        break;
    }
    case Fehlschlag::PlatteVoll: {
        QVERIFY(XmlProtokoll::dateiSchreiben(pfad, altText));
        {
            const Dateigroessengrenze grenze(4096);
            geschrieben = XmlProtokoll::dateiSchreiben(pfad, text);
        }
        QCOMPARE(dateiInhalt(pfad), altInhalt);
        break;
    }
    }
    QVERIFY(!geschrieben);
    // Only the old copy (or the directory standing in its way) is left.
    const QStringList eintraege =
        QDir(ort.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    QVERIFY2(eintraege.size() <= 1, qPrintable(eintraege.join(QLatin1String(", "))));
}

void TstXmlProtokoll::ersetzen_data()
{
    QTest::addColumn<XmlDaten>("daten");
    QTest::addColumn<QString>("settings");
    QTest::addColumn<QStringList>("teilnehmer");

    // BlPunkte are not in the file: an imported list starts without Bierlachs points.
    QTest::newRow("Turnierliste, 48 Spiele")
        << turnierListe() << "1|5|2|48|0|0|2024-05-03|Herbst'24"
        << QStringList{"1017|Anna Bergmann|Ja|Ja", "233|Jörg \"Jo\" Weiß & Söhne|Ja|Nein",
                       "4|Carl <Köhler>|Nein|Ja", "1290|Dora O'Neill|Ja|Ja"};
    QTest::newRow("Ergebnisliste ohne Spiele")
        << ergebnisListeOhneSpiele() << "1|12|1|36|1|0|2024-12-31|"
        << QStringList{"11|Eva|Ja|Ja", "12|Max|Nein|Nein", "13|Ute|Ja|Nein"};
}

void TstXmlProtokoll::ersetzen()
{
    QFETCH(XmlDaten, daten);
    QTemporaryDir ort;
    ProtokollDatenbank db(ort.path());
    QCOMPARE(db.oeffnen(), ProtokollDatenbank::Zustand::Neu);
    QVERIFY(alteListeAnlegen(db));
    const QStringList registerVorher = tabelle(db.verbindung(), "Spieler");

    QString fehler;
    QVERIFY2(db.protokollErsetzen(daten, &fehler), qPrintable(fehler));
    QFETCH(QString, settings);
    QCOMPARE(tabelle(db.verbindung(), "Settings"), QStringList{settings});
    QTEST(tabelle(db.verbindung(), "Teilnehmer"), "teilnehmer");
    QCOMPARE(db.spiele(), daten.spiele);
    QCOMPARE(tabelle(db.verbindung(), "Spieler"), registerVorher);
    // The header reads back through the program's own reader as well.
    const std::optional<ListenKopf> kopf = db.kopfLesen();
    QVERIFY(kopf);
    QCOMPARE(kopf->datum, daten.datum);
    QCOMPARE(kopf->modus, daten.modus);
    QCOMPARE(kopf->gruppe, daten.gruppe);
}

void TstXmlProtokoll::ersetzenRollback_data()
{
    QTest::addColumn<QString>("sabotage");
    QTest::addColumn<QString>("fehlerTeil");

    QTest::newRow("Tabelle Teilnehmer fehlt") << "DROP TABLE Teilnehmer"
                                              << "no such table: Teilnehmer";
    QTest::newRow("Kopfzeile abgelehnt")
        << "CREATE TRIGGER sperre BEFORE INSERT ON Settings BEGIN SELECT RAISE(ABORT, "
           "'Kopf gesperrt'); END"
        << "Kopf gesperrt";
    QTest::newRow("zweiter Teilnehmer abgelehnt")
        << "CREATE TRIGGER sperre BEFORE INSERT ON Teilnehmer WHEN NEW.MgldNr = 233 BEGIN "
           "SELECT RAISE(ABORT, 'Teilnehmer gesperrt'); END"
        << "Teilnehmer gesperrt";
    QTest::newRow("letztes Spiel abgelehnt")
        << "CREATE TRIGGER sperre BEFORE INSERT ON SpielListe WHEN NEW.Zeile = 48 BEGIN SELECT "
           "RAISE(ABORT, 'Spiel gesperrt'); END"
        << "Spiel gesperrt";
}

// Whatever statement fails, the running list is the one from before the import.
void TstXmlProtokoll::ersetzenRollback()
{
    QFETCH(QString, sabotage);
    QTemporaryDir ort;
    ProtokollDatenbank db(ort.path());
    QCOMPARE(db.oeffnen(), ProtokollDatenbank::Zustand::Neu);
    QVERIFY(alteListeAnlegen(db));
    QVERIFY(sql(db.verbindung(), sabotage));
    QStringList vorher;
    for (const char *name : {"SpielListe", "Settings", "Teilnehmer", "Spieler"})
        vorher << tabelle(db.verbindung(), QLatin1String(name)).join(QLatin1Char('\n'));

    QString fehler;
    QVERIFY(!db.protokollErsetzen(turnierListe(), &fehler));
    QFETCH(QString, fehlerTeil);
    QVERIFY2(fehler.contains(fehlerTeil), qPrintable(fehler));
    QStringList nachher;
    for (const char *name : {"SpielListe", "Settings", "Teilnehmer", "Spieler"})
        nachher << tabelle(db.verbindung(), QLatin1String(name)).join(QLatin1Char('\n'));
    QCOMPARE(nachher, vorher);
    QCOMPARE(db.anzahlEintraege(), 3);
    // No transaction is left open, which would swallow every later entry.
    QVERIFY(db.verbindung().transaction());
    QVERIFY(db.verbindung().rollback());
}

// A kartulo.db that is not Kartulo's is never written to, an import included.
void TstXmlProtokoll::ersetzenFremdeDatei()
{
    QTemporaryDir ort;
    const QByteArray fremd = "Das ist keine Datenbank.\n";
    QVERIFY(dateiAnlegen(ort.filePath(QStringLiteral("kartulo.db")), fremd));
    ProtokollDatenbank db(ort.path());
    QCOMPARE(db.oeffnen(), ProtokollDatenbank::Zustand::Fremd);
    QString fehler;
    QVERIFY(!db.protokollErsetzen(turnierListe(), &fehler));
    QVERIFY(!fehler.isEmpty());
    QCOMPARE(dateiInhalt(ort.filePath(QStringLiteral("kartulo.db"))), fremd);
}

KARTULO_TEST_MAIN(TstXmlProtokoll)
#include "tst_xmlprotokoll.moc"
