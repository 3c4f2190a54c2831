// The paper score sheet: header, headings and names of the 3- and 4-player layouts, the
// lines below the headings (games, round separators, the footer with its colours) also
// after a refill, and the PDF.

#include "helpers/testumgebung.h"
#include "sheets/listview.h"
#include "sheets/pdfexport.h"
#include "sheets/spielblatt.h"

#include <QDebug>
#include <QFile>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsSimpleTextItem>
#include <QGraphicsTextItem>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextDocument>

namespace {

using S = SpielEintrag;
using Liste = QVector<SpielEintrag>;
using Fuss = std::array<QStringList, 8>;

// One text on the scene as the reader of the sheet sees it.
struct Text
{
    QString text;
    QRectF rect;
    QColor farbe;
    QGraphicsItem *item;
};

QVector<Text> alleTexte(const QGraphicsScene *scene)
{
    QVector<Text> texte;
    for (QGraphicsItem *item : scene->items()) {
        auto *einfach = qgraphicsitem_cast<QGraphicsSimpleTextItem *>(item);
        auto *text = qgraphicsitem_cast<QGraphicsTextItem *>(item);
        if (einfach || text)
            texte.append({einfach ? einfach->text() : text->toPlainText(),
                          item->sceneBoundingRect(), einfach ? einfach->brush().color() : QColor(),
                          item});
    }
    return texte;
}

const QStringList gedreht{
    "Spiel-Nr.", "Spielwert",      "Ohne",  "Handspiel", "Schneider",  "Schneider anges.",
    "Schwarz",   "Schwarz anges.", "Offen", "Mit",       "Eingepasst", "Reizung"};

// The headings by the middle of their column, left to right, "g" and "v" with the seat
// number ("g2"); `unten` becomes the bottom of the heading block.
QMap<qreal, QString> ueberschriften(const QVector<Text> &texte, qreal &unten)
{
    static const QRegularExpression unterKopf(QStringLiteral("^(Platz[1-4]|[-+gv])$"));
    QMap<qreal, QString> spalten;
    for (const Text &t : texte) {
        if (gedreht.contains(t.text) || unterKopf.match(t.text).hasMatch()) {
            spalten.insert(t.rect.center().x(), t.text);
            unten = std::max(unten, t.rect.bottom());
        }
    }
    int gruppe = 0;
    for (QString &name : spalten) {
        gruppe += name.startsWith(QLatin1String("Platz")) ? 1 : 0;
        if (name == QLatin1String("g") || name == QLatin1String("v"))
            name += QString::number(gruppe);
    }
    return spalten;
}

// The lines below the headings, top to bottom: the leftmost text, then "heading=text" of
// the others, left to right; "(rot)" marks red texts, "(cyan)" texts on a cyan band.
QStringList zeilenVon(const QGraphicsScene *scene)
{
    const QVector<Text> texte = alleTexte(scene);
    qreal kopfUnten = 0;
    const QMap<qreal, QString> spalten = ueberschriften(texte, kopfUnten);
    QRectF cyan;
    for (QGraphicsItem *item : scene->items()) {
        auto *rechteck = qgraphicsitem_cast<QGraphicsRectItem *>(item);
        if (rechteck && rechteck->brush() == QBrush(Qt::cyan))
            cyan |= rechteck->sceneBoundingRect();
    }
    QMap<int, QMap<qreal, Text>> nachY;
    for (const Text &t : texte) {
        if (t.rect.top() > kopfUnten && !t.text.isEmpty())
            nachY[qRound(t.rect.center().y())].insert(t.rect.center().x(), t);
    }
    QStringList zeilen;
    for (const QMap<qreal, Text> &zeile : qAsConst(nachY)) {
        QStringList teile;
        for (const Text &t : zeile) {
            const qreal x = t.rect.center().x(); // under the nearest heading
            auto spalte = spalten.lowerBound(x);
            if (spalte == spalten.cend() ||
                (spalte != spalten.cbegin() && x - (spalte - 1).key() < spalte.key() - x))
                --spalte;
            teile << (teile.isEmpty() ? QString() : spalte.value() + '=') + t.text +
                         (t.farbe == QColor(Qt::red) ? "(rot)" : "") +
                         (cyan.contains(t.rect.center()) ? "(cyan)" : "");
        }
        zeilen << teile.join(' ');
    }
    return zeilen;
}

SpielEintrag spiel(int zeile, int grund, int sitz, int wert, bool verloren, int reizung = 0)
{
    SpielEintrag e;
    e.setze(S::Zeile, zeile);
    e.setze(S::Spiel, grund);
    e.setze(verloren ? S::Verloren : S::Gewonnen, verloren ? 2 * wert : wert);
    e.setze(static_cast<S::Spalte>(S::Spieler1 + sitz), verloren ? -2 * wert : wert);
    e.setze(S::Reizung, reizung);
    return e;
}

// A won and a lost suit or Grand game, a passed-in round, a won and a lost Null game.
Liste bekannteSpiele()
{
    Liste liste{spiel(1, 12, 1, 48, false), spiel(2, 24, 0, 48, true, 24),
                spiel(3, 0, 0, 0, false, 18), spiel(4, 23, 2, 35, false),
                spiel(5, 23, 2, 46, true)};
    liste[0].setze(S::Mit, 2); // Kreuz with 2, Hand, won by seat 2
    liste[0].setze(S::Hand, true);
    liste[1].setze(S::Ohne, 1); // Grand without 1, lost by seat 1
    liste[2].setze(S::Eingepasst, true);
    liste[3].setze(S::Hand, true);  // Null Hand, won by seat 3
    liste[4].setze(S::Offen, true); // Null ouvert, lost by seat 3
    return liste;
}

// n games, each won by the seat whose turn it is.
Liste reihe(int n, int spieler)
{
    Liste liste;
    for (int i = 0; i < n; ++i)
        liste << spiel(i + 1, 10, i % spieler, 10 * (i + 1), false);
    return liste;
}

Fuss fussMuster(int spieler)
{
    Fuss fuss;
    for (int i = 0; i < 8 * spieler; ++i)
        fuss[size_t(i / spieler)] << QStringLiteral("r%1p%2").arg(i / spieler).arg(i % spieler + 1);
    return fuss;
}

const QVector<BlattSpieler> tisch{
    {"Carl Clausen", 1017}, {"Vorname Nachname", 233}, {"Anna", 4}, {"Dora Ehlers", 1290}};

std::unique_ptr<Spielblatt> blattFuer(int spieler, const BlattKopf &kopf = {{2026, 11, 14}, 2, 5})
{
    auto blatt = std::make_unique<Spielblatt>(spieler);
    blatt->leerZeichnen(kopf, tisch.mid(0, spieler), {});
    return blatt;
}

// Every item with its kind, text and place, for comparing two sheets.
QStringList abbild(const QGraphicsScene *scene)
{
    QStringList zeilen;
    for (QGraphicsItem *item : scene->items()) {
        const auto *text = qgraphicsitem_cast<QGraphicsSimpleTextItem *>(item);
        zeilen << QString();
        QDebug(&zeilen.last()) << item->type() << (text ? text->text() : QString())
                               << item->sceneBoundingRect();
    }
    zeilen.sort();
    return zeilen;
}

} // namespace

Q_DECLARE_METATYPE(Liste)
Q_DECLARE_METATYPE(BlattKopf)

class TstSpielblatt : public QObject
{
    Q_OBJECT

private slots:
    void leeresBlatt_data();
    void leeresBlatt();
    void zeilen_data();
    void zeilen();
    void pdf();
};

void TstSpielblatt::leeresBlatt_data()
{
    QTest::addColumn<int>("spieler");
    QTest::addColumn<BlattKopf>("kopf");
    QTest::addColumn<QStringList>("texte");
    QTest::addColumn<QString>("ueberschriften");
    QTest::addColumn<QString>("pdfName");

    const QString vorn =
        gedreht.mid(0, 10).join('|') + "|+|-|Platz1|g1|v1|Platz2|g2|v2|Platz3|g3|v3|";
    QTest::newRow("3 Spieler") << 3 << BlattKopf{{2026, 11, 14}, 2, 5}
                               << QStringList{"Datum: 14.11.2026", "Serie: 2", "Tisch-Nr: 5"}
                               << vorn + "Eingepasst|Reizung"
                               << "Skat14-11-2026_S2_T5.pdf";
    QTest::newRow("4 Spieler") << 4 << BlattKopf{{2026, 3, 1}, 10, 12}
                               << QStringList{"Datum: 01.03.2026", "Serie: 10", "Tisch-Nr: 12"}
                               << vorn + "Platz4|g4|v4|Eingepasst|Reizung"
                               << "Skat01-03-2026_S10_T12.pdf";
}

// The header once each; the headings left to right in the order of the paper list, the
// feature headings turned upright, the 3-player sheet without a fourth group; every blank
// of a name a line break; the PDF named after the header.
void TstSpielblatt::leeresBlatt()
{
    QFETCH(int, spieler);
    QFETCH(BlattKopf, kopf);
    QFETCH(QStringList, texte);

    auto blatt = blattFuer(spieler, kopf);
    const QVector<Text> alle = alleTexte(blatt->scene());
    const QMap<QString, int> namensZeilen{{"Vorname\nNachname", 2}, {"Anna", 1}};
    QStringList gezeigt;
    for (const Text &t : alle) {
        gezeigt << t.text;
        if (gedreht.contains(t.text))
            QVERIFY2(t.rect.height() > t.rect.width(), qPrintable(t.text));
        if (namensZeilen.contains(t.text))
            QCOMPARE(qgraphicsitem_cast<QGraphicsTextItem *>(t.item)->document()->lineCount(),
                     namensZeilen.value(t.text));
    }
    for (const QString &text : texte + namensZeilen.keys())
        QVERIFY2(gezeigt.count(text) == 1, qPrintable(text));
    qreal unten = 0;
    QTEST(ueberschriften(alle, unten).values().join('|'), "ueberschriften");
    QTEST(pdfDateiName(kopf.datum, kopf.serie, kopf.tischNr), "pdfName");
}

void TstSpielblatt::zeilen_data()
{
    QTest::addColumn<int>("spieler");
    QTest::addColumn<Liste>("vorher");
    QTest::addColumn<bool>("mitFuss");
    QTest::addColumn<QStringList>("erwartet");

    QTest::newRow("4 Spieler, mit Fuss, vorher mehr Runden")
        << 4 << reihe(13, 4) << true
        << QStringList{"1 Spielwert=12 Handspiel=x Mit=2 +=48 Platz2=48 g2=1",
                       "2 Spielwert=24 Ohne=1 -=96 Platz1=-96 v1=1 Reizung=24",
                       "3 Eingepasst=1 Reizung=18",
                       "4 Spielwert=23 Handspiel=x +=35 Platz3=35 g3=1",
                       "Runde 1",
                       "5 Spielwert=23 Offen=x -=92 Platz3=-57 v3=1",
                       "Punkte gew. abzgl. verl. Spiele v1=r0p1 v2=r0p2 v3=r0p3 v4=r0p4",
                       "Punkte verl. Spiele Gegenspieler v1=r1p1 v2=r1p2 v3=r1p3 v4=r1p4",
                       "Gesamtpunkte = Endergebnis(cyan) v1=r2p1(cyan) v2=r2p2(cyan) "
                       "v3=r2p3(cyan) v4=r2p4(cyan)",
                       "Kartengeld v1=r3p1 v2=r3p2 v3=r3p3 v4=r3p4",
                       "Verlorene Spiele v1=r4p1 v2=r4p2 v3=r4p3 v4=r4p4",
                       "Platzgeld v1=r5p1 v2=r5p2 v3=r5p3 v4=r5p4",
                       "Preisskat v1=r6p1 v2=r6p2 v3=r6p3 v4=r6p4",
                       "Summe(rot) v1=r7p1(rot) v2=r7p2(rot) v3=r7p3(rot) v4=r7p4(rot)"};
    QTest::newRow("3 Spieler, vorher weniger Spiele, Fuss faellt weg")
        << 3 << reihe(2, 3) << false
        << QStringList{"1 Spielwert=12 Handspiel=x Mit=2 +=48 Platz2=48 g2=1",
                       "2 Spielwert=24 Ohne=1 -=96 Platz1=-96 v1=1 Reizung=24",
                       "3 Eingepasst=1 Reizung=18",
                       "Runde 1",
                       "4 Spielwert=23 Handspiel=x +=35 Platz3=35 g3=1",
                       "5 Spielwert=23 Offen=x -=92 Platz3=-57 v3=1"};
}

// Texts under their headings, the declarer's running points and count of won ("g") or lost
// ("v") games; a separator after every round (a passed-in game counts), none after the last
// game; the footer values at the end of their seat's group, final points on cyan, sum red.
// Filled over another list, the sheet is exactly a fresh one: nothing is added twice.
void TstSpielblatt::zeilen()
{
    QFETCH(int, spieler);
    QFETCH(Liste, vorher);
    QFETCH(bool, mitFuss);

    auto blatt = blattFuer(spieler);
    blatt->zeilenFuellen(vorher, fussMuster(spieler));
    blatt->zeilenFuellen(bekannteSpiele(), mitFuss ? fussMuster(spieler) : Fuss());
    QTEST(zeilenVon(blatt->scene()), "erwartet");
    auto frisch = blattFuer(spieler);
    frisch->zeilenFuellen(bekannteSpiele(), mitFuss ? fussMuster(spieler) : Fuss());
    QCOMPARE(abbild(blatt->scene()), abbild(frisch->scene()));
    QCOMPARE(blatt->scene()->sceneRect(), frisch->scene()->sceneRect());
}

// One A4 portrait page with the sheet as text, in which the names of the table can be found.
void TstSpielblatt::pdf()
{
    auto blatt = blattFuer(4);
    blatt->zeilenFuellen(reihe(48, 4), fussMuster(4));
    ListView ansicht;
    ansicht.setScene(blatt->scene());
    QTemporaryDir verzeichnis;
    const QString pfad = verzeichnis.filePath(QStringLiteral("Skat.pdf"));
    QVERIFY(pdfSchreiben(&ansicht, pfad));
    QFile datei(pfad);
    QVERIFY(datei.open(QIODevice::ReadOnly));
    const QString inhalt = QString::fromLatin1(datei.readAll().replace('\0', ' '));
    QCOMPARE(inhalt.count(QStringLiteral("/Type /Page\n")), 1);
    QVERIFY(inhalt.contains(QRegularExpression("/MediaBox \\[0 0 595(\\.0+)? 842(\\.0+)?\\]")));

    const QString pdftotext = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    if (pdftotext.isEmpty())
        QSKIP("pdftotext is not installed");
    QProcess prozess;
    prozess.start(pdftotext, {pfad, QStringLiteral("-")});
    QVERIFY(prozess.waitForFinished());
    const QString text = QString::fromUtf8(prozess.readAllStandardOutput());
    for (const char *name : {"Carl", "Clausen", "Vorname", "Nachname", "Anna", "Dora", "Ehlers"})
        QVERIFY2(text.contains(QLatin1String(name)), name);
}

KARTULO_TEST_MAIN(TstSpielblatt)
#include "tst_spielblatt.moc"
