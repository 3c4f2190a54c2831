// Bad input at every place that takes text: empty, a megabyte, bytes that are
// no UTF-8, control characters, and text that looks like a statement or a
// message of its own. docs/robustness.md lists the places with their tests.

#include "app/files/dockfileview.h"
#include "app/mainwindow.h"
#include "app/players/namensdelegate.h"
#include "app/widgets/eingabedock.h"
#include "core/db/protokolldatenbank.h"
#include "core/files/skatjornal.h"
#include "core/files/xmlprotokoll.h"
#include "core/link/nachricht.h"
#include "helpers/fensterhilfe.h"
#include "helpers/meldungsbeantworter.h"
#include "helpers/testprotokoll.h"
#include "velmora/protokoll.h"

#include <QCborValue>
#include <QJsonDocument>
#include <QtWidgets>

using namespace Fenster;

Q_DECLARE_METATYPE(SkatJornal::Form)

namespace {

const QString Einschleusung = QStringLiteral("x'; DROP TABLE SpielListe; --");
const QString Steuerzeichen = QStringLiteral("A") + QChar(u'\0') + QStringLiteral("B\x1b\t\r\nC");
const QString Megabyte(1 << 20, QLatin1Char('x'));
// 39 letters and a playing card: a field of 40 keeps half of the card.
const QString Karte = QString(39, QLatin1Char('a')) + QStringLiteral(u"\U0001F0A1");

} // namespace

class TstRobustheit : public QObject
{
    Q_OBJECT

private slots:
    // The first window installs Qt's German texts, which the scorer reads in
    // the reasons of a refused file too.
    void initTestCase() { MainWindow(); }
    void init() { TestUmgebung::allesLoeschen(); }
    void eingefuegt_data();
    void eingefuegt();
    void docks_data();
    void docks();
    void anweisungen_data();
    void anweisungen();
    void neueNamen_data();
    void neueNamen();
    void teilnehmerTabelle_data();
    void teilnehmerTabelle();
    void spielerDatei_data();
    void spielerDatei();
    void xmlDatei_data();
    void xmlDatei();
    void langeListe();
    void jornal_data();
    void jornal();
    void vomDraht_data();
    void vomDraht();
};

void TstRobustheit::eingefuegt_data()
{
    QTest::addColumn<QString>("feld");    // "dock/field" for the input docks
    QTest::addColumn<QString>("eingabe"); // null: everything selected is deleted
    QTest::addColumn<QString>("danach");  // null: the field refuses it and keeps its text
    // Each field with the number of characters it keeps of a pasted text (-1:
    // none) and whether it stays empty when emptied; a money field shows its
    // value again at once (when it has the focus: once it is left, tst_tablett).
    struct Feld
    {
        const char *name;
        int grenze;
        bool leer;
    };
    const Feld felder[] = {{"leNeuSpieler1", 40, true},
                           {"leNeuTischNr", 32767, true},
                           {"leListenName", 40, true},
                           {"cmbGruppenId", 32767, true},
                           {"leKartengeld", -1, false},
                           {"leGewSpieleAbzglVerlSpiele", -1, false},
                           {"leReizwert", -1, false},
                           {"spbTischNr", -1, false},
                           {"spbSerie", -1, false},
                           {"spbSpielAnzahl", -1, false},
                           {"deDatum", -1, false},
                           {"DockZeitLimit/leWert", -1, true},
                           {"DockBierlachs/leWert", -1, true},
                           {"DockZweitliste/leWert", -1, true}};
    for (const Feld &f : felder) {
        QTest::addRow("%s leer", f.name) << f.name << QString() << (f.leer ? "" : QString());
        for (const auto &[art, text] : {std::pair{"1 MB", Megabyte},
                                        {"Steuerzeichen", Steuerzeichen},
                                        {"Einschleusung", Einschleusung}})
            QTest::addRow("%s %s", f.name, art)
                << f.name << text << (f.grenze < 0 ? QString() : text.left(f.grenze));
    }
}

// What a field keeps when its text is deleted or a text is pasted over it:
// the fields of names and the club name cut at 40 characters, any other line
// edit at 32 767, the number fields and docks take nothing but digits, the bid
// field takes no key at all. The club name is stored as its field shows it.
void TstRobustheit::eingefuegt()
{
    QFETCH(QString, feld);
    QFETCH(QString, eingabe);
    QVERIFY(TestProtokoll::anlegen(4, 48));
    MeldungsBeantworter antworten;
    MainWindow fenster;
    const QString dock = feld.section(QLatin1Char('/'), 0, -2);
    if (dock == "DockZeitLimit")
        kind<QAction>(&fenster, "actionTurnier")->trigger();
    else if (dock == "DockBierlachs")
        kind<QAction>(&fenster, "actionBierlachs")->trigger();
    else if (dock == "DockZweitliste")
        fenster.startZweitProtokoll();
    QWidget *ort = dock.isEmpty() ? &fenster : kind<QWidget>(&fenster, qPrintable(dock));
    auto *widget = kind<QWidget>(ort, qPrintable(feld.section(QLatin1Char('/'), -1)));
    QVERIFY(widget);
    auto *zeile = qobject_cast<QLineEdit *>(widget) ? qobject_cast<QLineEdit *>(widget)
                                                    : widget->findChild<QLineEdit *>();
    const QString vorher = zeile->text();
    zeile->selectAll();
    if (eingabe.isNull()) {
        QTest::keyClick(zeile, Qt::Key_Delete);
    } else {
        QApplication::clipboard()->setText(eingabe);
        QTest::keyClick(zeile, Qt::Key_V, Qt::ControlModifier);
    }
    QFETCH(QString, danach);
    QCOMPARE(zeile->text(), danach.isNull() ? vorher : danach);
    if (feld == "leListenName")
        QCOMPARE(Fenster::einstellungen().value("vereinsname").toString(), zeile->text());
}

void TstRobustheit::docks_data()
{
    QTest::addColumn<QString>("aktion");
    QTest::addColumn<QString>("eingabe");
    QTest::addColumn<QString>("danach");
    QTest::newRow("Zeitlimit leer") << "actionTurnier"
                                    << ""
                                    << "Verbleibende Zeit 120 Minuten";
    QTest::newRow("Bierlachs unter 100") << "actionBierlachs"
                                         << "5"
                                         << "Bierlachs Modus - 5 Maxpunkte";
    QTest::newRow("Zweitliste leer") << "zweitliste"
                                     << ""
                                     << "Es wurde keine Tischnummer eingegeben!";
}

// An empty or short number confirmed in a dock: the time limit is 120
// minutes, a Bierlachs maximum below 100 is taken as typed (the field lets
// it through on the way to three digits), a second list needs a table.
void TstRobustheit::docks()
{
    QFETCH(QString, aktion);
    QFETCH(QString, eingabe);
    QVERIFY(TestProtokoll::anlegen(4, 48));
    MeldungsBeantworter antworten;
    MainWindow fenster;
    if (aktion == "zweitliste")
        fenster.startZweitProtokoll();
    else
        kind<QAction>(&fenster, qPrintable(aktion))->trigger();
    auto *dock = fenster.findChild<EingabeDock *>();
    QVERIFY(dock);
    kind<QLineEdit>(dock, "leWert")->clear();
    QTest::keyClicks(kind<QLineEdit>(dock, "leWert"), eingabe);
    klick(dock, "pbDockOk");
    if (aktion == "actionTurnier") {
        kind<QPushButton>(&fenster, "pbStartSpiel")->setEnabled(true);
        klick(&fenster, "pbStartSpiel");
    }
    const QStringList gezeigt =
        antworten.texte +
        QStringList{text(&fenster, "leMeldungRot"), kind<QLabel>(&fenster, "lblModus")->text()};
    QFETCH(QString, danach);
    QVERIFY2(gezeigt.contains(danach), qPrintable(gezeigt.join(" | ")));
}

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
        << Steuerzeichen << QString(Steuerzeichen).remove(QChar(u'\0')) << "A B    C";
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

void TstRobustheit::neueNamen_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("tisch");
    QTest::addColumn<QString>("teilnehmer");
    QTest::addColumn<int>("tischNr");
    QTest::newRow("leer") << "Eva"
                          << ""
                          << "Eva" << 0;
    QTest::newRow("1 MB") << Megabyte << Megabyte << QString(40, QLatin1Char('x')) << 0;
    QTest::newRow("halbes Zeichen") << Karte << "7" << QString(39, QLatin1Char('a')) << 7;
    QTest::newRow("Steuerzeichen") << Steuerzeichen << "7\t"
                                   << "A B    C" << 7;
    QTest::newRow("Einschleusung")
        << Einschleusung << "7'; DROP TABLE Settings; --" << Einschleusung << 0;
}

// The "Neu" page: a name is cut by its field and cleaned, then registered and
// seated; a table number that is no number is table 0.
void TstRobustheit::neueNamen()
{
    QFETCH(QString, name);
    QFETCH(QString, tisch);
    QVERIFY(TestProtokoll::anlegen(4, 48));
    MeldungsBeantworter antworten;
    MainWindow fenster;
    kind<QAction>(&fenster, "actionNeu")->trigger();
    const QStringList namen{name, "Bernd", "Clara"};
    for (int i = 0; i < namen.size(); ++i)
        fenster.findChild<QLineEdit *>(QStringLiteral("leNeuSpieler%1").arg(i + 1))
            ->setText(namen.at(i));
    kind<QLineEdit>(&fenster, "leNeuTischNr")->setText(tisch);
    kind<QLineEdit>(&fenster, "leNeuSerie")->setText("2");
    klick(&fenster, "pbOk");
    QCOMPARE(antworten.texte, QStringList{"Neues Protokoll?"});
    QTEST(lesen("SELECT Name FROM Teilnehmer").value(0), "teilnehmer");
    QTEST(lesen("SELECT Name FROM Spieler WHERE MgldNr = 1").value(0), "teilnehmer");
    QTEST(kind<QSpinBox>(&fenster, "spbTischNr")->value(), "tischNr");
    QCOMPARE(TestProtokoll::zeilen("SpielListe"), 0);
}

void TstRobustheit::teilnehmerTabelle_data()
{
    QTest::addColumn<QString>("eingabe");
    QTest::addColumn<QString>("name"); // null: refused, the old name stays
    QTest::newRow("leer") << ""
                          << "";
    QTest::newRow("1 MB") << Megabyte << QString(40, QLatin1Char('x'));
    QTest::newRow("halbes Zeichen") << Karte << QString(39, QLatin1Char('a'));
    QTest::newRow("Steuerzeichen") << Steuerzeichen << "A B    C";
    QTest::newRow("Trennzeichen") << "A:B" << QString();
    QTest::newRow("Einschleusung") << Einschleusung << Einschleusung;
}

// A name typed into the participants table is cleaned as on the "Neu" page;
// a separator of the network texts is refused with a warning.
void TstRobustheit::teilnehmerTabelle()
{
    QFETCH(QString, eingabe);
    QFETCH(QString, name);
    MeldungsBeantworter antworten;
    QStandardItemModel modell(1, 2);
    modell.setData(modell.index(0, 1), "Anna");
    QLineEdit feld(eingabe);
    NamensDelegate().setModelData(&feld, &modell, modell.index(0, 1));
    QCOMPARE(modell.index(0, 1).data().toString(), name.isNull() ? "Anna" : name);
    QCOMPARE(antworten.texte,
             name.isNull() ? QStringList{"Das Zeichen \":\" ist in Spielernamen nicht erlaubt."}
                           : QStringList());
}

void TstRobustheit::spielerDatei_data()
{
    QTest::addColumn<QByteArray>("inhalt");
    QTest::addColumn<QStringList>("namen");
    QTest::newRow("leer") << QByteArray() << QStringList();
    QTest::newRow("kein UTF-8") << QByteArray("J\xf6rg\nAnna\xff")
                                << QStringList{QStringLiteral(u"Anna\uFFFD"),
                                               QStringLiteral(u"J\uFFFDrg")};
    QTest::newRow("Steuerzeichen")
        << QByteArray("\x1b[31mAnna\tBerg\n") << QStringList{"[31mAnna Berg"};
    QTest::newRow("Einschleusung")
        << Einschleusung.toUtf8() + "\nA:B|C@D$E" << QStringList{"ABCDE", Einschleusung};
}

// "KartuloSpieler.txt" replaces the registry, an empty file too, with the
// names cleaned; NUL bytes, line ends, separators and the cut at 40 characters
// are in tst_dateien.
void TstRobustheit::spielerDatei()
{
    QFETCH(QByteArray, inhalt);
    QVERIFY(TestProtokoll::anlegen(4, 48));
    QFile datei(TestUmgebung::datenVerzeichnis() + "/../KartuloSpieler.txt");
    QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size());
    datei.close();
    MainWindow fenster;
    klick(&fenster, "pbSpielerAusTextdatei");
    QTEST(lesen("SELECT Name FROM Spieler"), "namen");
}

void TstRobustheit::xmlDatei_data()
{
    QTest::addColumn<QByteArray>("inhalt");
    QTest::addColumn<QString>("gelesen");
    const auto spieler = [](const QByteArray &name, const QByteArray &kopf = {}) -> QByteArray {
        return kopf + "<Kartulo><spieler1 name=\"" + name + "\"/></Kartulo>";
    };
    QByteArray lawine = "<!DOCTYPE Kartulo [<!ENTITY e0 \"xxxxxxxxxx\">";
    for (int i = 1; i < 10; ++i)
        lawine += QStringLiteral("<!ENTITY e%1 \"%2\">")
                      .arg(i)
                      .arg(QStringLiteral("&e%1;").arg(i - 1).repeated(10))
                      .toUtf8();
    lawine += "]>";
    QTest::newRow("leer") << QByteArray(" \r\n") << "Zeile 1: Die Datei ist leer.";
    QTest::newRow("1 MB Name") << spieler(Megabyte.toUtf8())
                               << "Spieler: " + QString(40, QLatin1Char('x')) + ";";
    QTest::newRow("1 MB Spiele") << "<Kartulo><spiele>" + QByteArray("<spiel/>").repeated(130000) +
                                        "</spiele></Kartulo>"
                                 << "Spiele: 130000";
    QTest::newRow("kein UTF-8") << spieler("J\xf6rg")
                                << "Zeile 1: Die Datei ist kein gueltiges XML";
    QTest::newRow("Latin-1 angesagt")
        << spieler("J\xf6rg", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>")
        << QStringLiteral(u"Spieler: J\u00F6rg;");
    QTest::newRow("NUL-Byte") << QByteArray("<Kartulo>\0</Kartulo>", 20)
                              << "Zeile 1: Die Datei ist kein gueltiges XML";
    QTest::newRow("Verweis auf ESC")
        << spieler("A&#27;B") << QStringLiteral(u"(Ung\u00FCltige Zeichenreferenz.)");
    QTest::newRow("Tabulator, Zeilenende")
        << spieler("Anna&#9;Berg&#13;&#10;") << "Spieler: Anna Berg;";
    QTest::newRow("Entitaet") << spieler("&n;", "<!DOCTYPE Kartulo [<!ENTITY n \"Anna\">]>")
                              << "Spieler: Anna;";
    QTest::newRow("Entitaetenlawine") << spieler("&e9;", lawine) << "Entity-Expansions-Limit";
    QTest::newRow("externe Entitaet")
        << spieler("&n;", "<!DOCTYPE Kartulo [<!ENTITY n SYSTEM \"file:///etc/passwd\">]>")
        << "die externe Entity 'n' referenziert";
    QTest::newRow("Trennzeichen")
        << QByteArray("<Kartulo gruppe=\"A:B$C@D\"><spieler1 name=\"An|na@x$y:z\"/></Kartulo>")
        << "Spieler: Annaxyz; Gruppe: ABCD;";
    QTest::newRow("Einschleusung")
        << spieler("x&apos;; DROP TABLE SpielListe; --") << "Spieler: " + Einschleusung + ";";
}

// A protocol file is read whole or refused with its line; names and group
// come cleaned, entities of the file itself are expanded within a limit.
// Refused files leave the list as it was (tst_dateifenster).
void TstRobustheit::xmlDatei()
{
    QFETCH(QByteArray, inhalt);
    QFETCH(QString, gelesen);
    const auto ergebnis = XmlProtokoll::lesen(inhalt);
    QString text;
    if (const auto *fehler = std::get_if<XmlFehler>(&ergebnis)) {
        text = QStringLiteral("Zeile %1: %2").arg(fehler->zeile).arg(fehler->text);
    } else {
        const XmlDaten &daten = std::get<XmlDaten>(ergebnis);
        QStringList namen;
        for (const Teilnehmer &t : daten.spieler)
            namen << t.name;
        text = QStringLiteral("Spieler: %1; Gruppe: %2; Spiele: %3")
                   .arg(namen.join(QLatin1Char(',')), daten.kopf.gruppe)
                   .arg(daten.spiele.size());
    }
    QVERIFY2(text.contains(gelesen), qPrintable(text.left(200)));
}

// A file of 1 MB may hold 130 000 games. The overview takes them row by row;
// a cell filled into an empty row relaid the whole table out, which took
// minutes for such a file, and again at every start.
void TstRobustheit::langeListe()
{
    QVERIFY(TestProtokoll::anlegen(4, 48));
    XmlDaten daten;
    daten.spieler = {{1, "A", "Ja", "Ja"}, {2, "B", "Ja", "Ja"}, {3, "C", "Ja", "Ja"}};
    daten.spiele = TestProtokoll::abend(300, 3);
    QVERIFY(XmlProtokoll::dateiSchreiben(TestUmgebung::datenVerzeichnis() + "/lang.xml",
                                         XmlProtokoll::schreiben(daten)));
    MeldungsBeantworter antworten;
    MainWindow fenster;
    QAbstractItemModel *uebersicht = kind<QTableView>(&fenster, "tblViewUebersicht")->model();
    QSignalSpy neuAusgelegt(uebersicht, &QAbstractItemModel::layoutChanged);
    kind<QAction>(&fenster, "actionLaden")->trigger();
    klick(fenster.findChild<DockFileView *>(), "pbOk");
    QCOMPARE(uebersicht->rowCount(), 300);
    QCOMPARE(uebersicht->index(299, 0).data().toString(), QStringLiteral("300"));
    QCOMPARE(neuAusgelegt.count(), 0);
}

void TstRobustheit::jornal_data()
{
    QTest::addColumn<SkatJornal::Form>("form");
    QTest::addColumn<QByteArray>("inhalt");
    QTest::addColumn<QString>("spieler"); // null: the file is refused
    const auto json = [](const QByteArray &spieler) -> QByteArray {
        return "{\"skatliste\":{\"Datum\":\"\",\"tischnr\":1,\"seriennr\":1,\"spiele\":[{"
               "\"spieler\":\"" +
               spieler + "\"}]}}";
    };
    const auto cbor = [&](const QByteArray &spieler) {
        return QCborValue::fromJsonValue(QJsonDocument::fromJson(json("@@@@")).object())
            .toCbor()
            .replace("@@@@", spieler);
    };
    QTest::newRow("JSON leer") << SkatJornal::Json << QByteArray() << QString();
    QTest::newRow("CBOR leer") << SkatJornal::Binaer << QByteArray() << QString();
    QTest::newRow("JSON 1 MB") << SkatJornal::Json << json(Megabyte.toUtf8()) << Megabyte;
    QTest::newRow("JSON 200 000 Klammern")
        << SkatJornal::Json << QByteArray(200000, '[') << QString();
    QTest::newRow("CBOR 200 000 Ebenen")
        << SkatJornal::Binaer << QByteArray(200000, '\x81') << QString();
    QTest::newRow("CBOR Laenge 2^63")
        << SkatJornal::Binaer << QByteArray::fromHex("7b7fffffffffffffff") << QString();
    QTest::newRow("JSON kein UTF-8") << SkatJornal::Json << json("J\xf6rg") << QString();
    QTest::newRow("CBOR kein UTF-8") << SkatJornal::Binaer << cbor("J\xf6r") << QString();
    QTest::newRow("JSON Steuerzeichen") << SkatJornal::Json << json("A\\u0000B\x01\\u001b")
                                        << "A" + QString(QChar(u'\0')) + "B\x01\x1b";
    QTest::newRow("CBOR Steuerzeichen") << SkatJornal::Binaer << cbor(QByteArray("A\0\x1b\t", 4))
                                        << "A" + QString(QChar(u'\0')) + "\x1b\t";
    QTest::newRow("JSON Einschleusung")
        << SkatJornal::Json << json("x'; DROP TABLE SpielListe; --\\\"}]}}")
        << Einschleusung + "\"}]}}";
}

// The journal beside the list is read back only to be continued: a file
// that is not one is refused whole, deep nesting too, and the running list
// starts a journal of its own; names are kept as they are.
void TstRobustheit::jornal()
{
    QFETCH(SkatJornal::Form, form);
    QFETCH(QByteArray, inhalt);
    QFETCH(QString, spieler);
    QTemporaryDir ordner;
    QFile datei(SkatJornal::dateiPfad(ordner.filePath("jornal"), form));
    QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size());
    datei.close();
    SkatJornal jornal;
    jornal.setPath(ordner.filePath("jornal"));
    if (spieler.isNull())
        QTest::ignoreMessage(QtWarningMsg, "Kann Jornaldatei nicht laden.");
    QCOMPARE(jornal.load(form), !spieler.isNull());
    QCOMPARE(jornal.eintraege().value(0).spieler, spieler.isNull() ? QString() : spieler);
}

void TstRobustheit::vomDraht_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("gelesen");
    QTest::newRow("1 MB") << "7:1.2.3.4:G$" + QByteArray("a@").repeated(1 << 19)
                          << "Typ 7, 524289 Eintraege";
    QTest::newRow("kein UTF-8") << QByteArray("12:1.2.3.4:G$\xff") << "kein UTF-8";
    QTest::newRow("ueberlang") << QByteArray("12:1.2.3.4:G$\xc0\xaf") << "kein UTF-8";
    QTest::newRow("Surrogat") << QByteArray("12:1.2.3.4:G$\xed\xa0\x80") << "kein UTF-8";
    QTest::newRow("abgeschnitten") << QByteArray("12:1.2.3.4:G$\xe2\x99") << "kein UTF-8";
    QTest::newRow("Steuerzeichen")
        << QByteArray("12:1.2.3.4:G\x1b$\0\t\r\n", 18) << "Typ 12, 1 Eintraege";
}

// The text of a MESSAGE frame on its way from the link to the window: bytes
// that are no UTF-8 close the link, then the text must be one message. What
// each type does with its items is in nachrichten(); frames and hellos are in
// tst_velmora_protokoll and tst_velmora_netz.
void TstRobustheit::vomDraht()
{
    QFETCH(QByteArray, bytes);
    const std::optional<QString> text = Velmora::utf8Lesen(bytes);
    const std::optional<Nachricht> nachricht = text ? Nachricht::lesen(*text) : std::nullopt;
    const QString gelesen = !text        ? QStringLiteral("kein UTF-8")
                            : !nachricht ? QStringLiteral("keine Nachricht")
                                         : QStringLiteral("Typ %1, %2 Eintraege")
                                               .arg(nachricht->typ)
                                               .arg(nachricht->inhalt.size());
    QTEST(gelesen, "gelesen");
}

KARTULO_TEST_MAIN(TstRobustheit)
#include "tst_robustheit.moc"
