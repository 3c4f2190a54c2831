// The paper score sheet: header, headings and seat groups of the 3- and 4-player layouts,
// the texts under each column for known games, round separators, the footer with its
// coloured rows, the rules block, refills that replace rather than add, the sheet filling
// one A4 page, and the PDF with its name, page size and text.

#include "helpers/testumgebung.h"
#include "sheets/listview.h"
#include "sheets/pdfexport.h"
#include "sheets/spielblatt.h"

#include <QBrush>
#include <QFile>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsSimpleTextItem>
#include <QGraphicsTextItem>
#include <QProcess>
#include <QRegularExpression>
#include <QScroller>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>

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
    QGraphicsItem *item = nullptr;
};

QVector<Text> alleTexte(const QGraphicsScene *scene)
{
    QVector<Text> texte;
    for (QGraphicsItem *item : scene->items()) {
        if (!item->isVisible())
            continue;
        if (auto *einfach = qgraphicsitem_cast<QGraphicsSimpleTextItem *>(item))
            texte.append(
                {einfach->text(), item->sceneBoundingRect(), einfach->brush().color(), item});
        else if (auto *text = qgraphicsitem_cast<QGraphicsTextItem *>(item))
            texte.append(
                {text->toPlainText(), item->sceneBoundingRect(), text->defaultTextColor(), item});
    }
    return texte;
}

QStringList nurTexte(const QGraphicsScene *scene)
{
    QStringList texte;
    for (const Text &t : alleTexte(scene))
        texte << t.text;
    return texte;
}

const QStringList &merkmalsUeberschriften()
{
    static const QStringList texte{
        "Spiel-Nr.",        "Spielwert", "Ohne",           "Handspiel", "Schneider",
        "Schneider anges.", "Schwarz",   "Schwarz anges.", "Offen",     "Mit"};
    return texte;
}

bool istUeberschrift(const QString &text)
{
    static const QRegularExpression platz(QStringLiteral("^Platz[1-4]$"));
    return merkmalsUeberschriften().contains(text) || platz.match(text).hasMatch() ||
           QStringList{"+", "-", "g", "v", "Eingepasst", "Reizung"}.contains(text);
}

// A column of the sheet: its heading ("g" and "v" with the seat number, e.g. "g2") and
// the middle of the heading, under which the texts of the column stand.
struct Spalte
{
    QString name;
    qreal mitte = 0;
};

// The headings left to right.
QVector<Text> ueberschriftenVonLinks(const QGraphicsScene *scene)
{
    QVector<Text> kopf;
    for (const Text &t : alleTexte(scene)) {
        if (istUeberschrift(t.text))
            kopf << t;
    }
    std::sort(kopf.begin(), kopf.end(), [](const Text &a, const Text &b) {
        return a.rect.center().x() < b.rect.center().x();
    });
    return kopf;
}

QVector<Spalte> spalten(const QGraphicsScene *scene)
{
    QVector<Spalte> ergebnis;
    int gruppe = 0;
    for (const Text &t : ueberschriftenVonLinks(scene)) {
        if (t.text.startsWith(QLatin1String("Platz")))
            ++gruppe;
        const bool unterspalte = t.text == QLatin1String("g") || t.text == QLatin1String("v");
        ergebnis.append(
            {unterspalte ? t.text + QString::number(gruppe) : t.text, t.rect.center().x()});
    }
    return ergebnis;
}

QString spalteBei(const QVector<Spalte> &alle, qreal x)
{
    QString name;
    qreal abstand = 1e9;
    for (const Spalte &s : alle) {
        if (qAbs(s.mitte - x) < abstand) {
            abstand = qAbs(s.mitte - x);
            name = s.name;
        }
    }
    return name;
}

// Bottom of the heading block: the lowest heading.
qreal kopfUnten(const QGraphicsScene *scene)
{
    qreal unten = 0;
    for (const Text &t : alleTexte(scene)) {
        if (istUeberschrift(t.text))
            unten = std::max(unten, t.rect.bottom());
    }
    return unten;
}

// The cell with the game number under "Spiel-Nr."; null when the row is not drawn.
const Text *spielNrZelle(const QVector<Text> &texte, const QVector<Spalte> &alle,
                         qreal unterDemKopf, int zeile)
{
    for (const Text &t : texte) {
        if (t.text == QString::number(zeile) && t.rect.top() > unterDemKopf &&
            spalteBei(alle, t.rect.center().x()) == QLatin1String("Spiel-Nr."))
            return &t;
    }
    return nullptr;
}

// The row of game `zeile` as "heading=text" of every text on it, left to right.
QString zeilenText(const QGraphicsScene *scene, int zeile)
{
    const QVector<Text> texte = alleTexte(scene);
    const QVector<Spalte> alle = spalten(scene);
    const Text *nr = spielNrZelle(texte, alle, kopfUnten(scene), zeile);
    if (!nr)
        return QStringLiteral("Zeile fehlt");
    QVector<Text> inDerZeile;
    for (const Text &t : texte) {
        if (qAbs(t.rect.center().y() - nr->rect.center().y()) < 4)
            inDerZeile << t;
    }
    std::sort(inDerZeile.begin(), inDerZeile.end(), [](const Text &a, const Text &b) {
        return a.rect.center().x() < b.rect.center().x();
    });
    QStringList teile;
    for (const Text &t : qAsConst(inDerZeile))
        teile << spalteBei(alle, t.rect.center().x()) + QLatin1Char('=') + t.text;
    return teile.join(QLatin1Char(' '));
}

// The footer row labelled `beschriftung`: "label: Platz1=... Platz2=..." with each text
// assigned to the seat group it stands in.
QString fussZeile(const QGraphicsScene *scene, const QString &beschriftung)
{
    const QVector<Text> texte = alleTexte(scene);
    QVector<qreal> platzMitten;
    for (const Text &t : texte) {
        if (t.text.startsWith(QLatin1String("Platz")) && istUeberschrift(t.text))
            platzMitten << t.rect.center().x();
    }
    std::sort(platzMitten.begin(), platzMitten.end());
    const auto label = std::find_if(texte.begin(), texte.end(),
                                    [&](const Text &t) { return t.text == beschriftung; });
    if (label == texte.end())
        return QStringLiteral("fehlt");
    QVector<Text> werte;
    for (const Text &t : texte) {
        if (t.item != label->item && qAbs(t.rect.center().y() - label->rect.center().y()) < 4)
            werte << t;
    }
    std::sort(werte.begin(), werte.end(), [](const Text &a, const Text &b) {
        return a.rect.center().x() < b.rect.center().x();
    });
    QStringList teile;
    for (const Text &t : qAsConst(werte)) {
        const auto gruppe = std::count_if(platzMitten.begin(), platzMitten.end(),
                                          [&](qreal x) { return x < t.rect.center().x(); });
        teile << QStringLiteral("Platz%1=%2").arg(gruppe).arg(t.text);
    }
    return beschriftung + QStringLiteral(": ") + teile.join(QLatin1Char(' '));
}

SpielEintrag spiel(int zeile, int grund, int sitz, int wert, bool verloren)
{
    SpielEintrag e;
    e.setze(S::Zeile, zeile);
    e.setze(S::Spiel, grund);
    e.setze(verloren ? S::Verloren : S::Gewonnen, verloren ? 2 * wert : wert);
    e.setze(static_cast<S::Spalte>(S::Spieler1 + sitz), verloren ? -2 * wert : wert);
    return e;
}

SpielEintrag eingepasst(int zeile, int reizung = 0)
{
    SpielEintrag e;
    e.setze(S::Zeile, zeile);
    e.setze(S::Eingepasst, true);
    e.setze(S::Reizung, reizung);
    return e;
}

// Games with every kind of cell: won and lost suit and Grand games, Null games, passed-in
// rounds, all feature marks; seats counted by the list's size.
Liste bekannteSpiele()
{
    Liste liste;
    SpielEintrag e = spiel(1, 12, 1, 48, false); // Kreuz with 2, Hand, won by seat 2
    e.setze(S::Mit, 2);
    e.setze(S::Hand, true);
    e.setze(S::Reizung, 36);
    liste << e;
    e = spiel(2, 24, 0, 48, true); // Grand without 1, lost by seat 1
    e.setze(S::Ohne, 1);
    e.setze(S::Reizung, 24);
    liste << e;
    liste << eingepasst(3);
    e = spiel(4, 23, 2, 35, false); // Null Hand, won by seat 3
    e.setze(S::Hand, true);
    e.setze(S::Reizung, 35);
    liste << e;
    e = spiel(5, 24, 1, 72, false); // Grand Hand with 1, won by seat 2
    e.setze(S::Mit, 1);
    e.setze(S::Hand, true);
    e.setze(S::Reizung, 48);
    liste << e;
    e = spiel(6, 23, 2, 46, true); // Null ouvert, lost by seat 3
    e.setze(S::Offen, true);
    e.setze(S::Reizung, 46);
    liste << e;
    liste << eingepasst(7, 18);
    // Pik without 3, Hand, Schneider and Schwarz announced and reached: 11 * 9.
    e = spiel(8, 11, 0, 99, false);
    e.setze(S::Ohne, 3);
    for (S::Spalte merkmal : {S::Hand, S::Schneider, S::AngSchneider, S::Schwarz, S::AngSchwarz})
        e.setze(merkmal, true);
    e.setze(S::Reizung, 99);
    liste << e;
    return liste;
}

// n games, each won for 10 by the seat whose turn it is.
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
    for (int r = 0; r < 8; ++r) {
        for (int p = 0; p < spieler; ++p)
            fuss[static_cast<size_t>(r)] << QStringLiteral("r%1p%2").arg(r).arg(p + 1);
    }
    return fuss;
}

BlattKopf kopf(const QDate &datum, int serie, int tischNr)
{
    BlattKopf k;
    k.datum = datum;
    k.serie = serie;
    k.tischNr = tischNr;
    return k;
}

const QVector<BlattSpieler> tisch{
    {"Anna Bergmann", 1017}, {"Bert Carstensen", 233}, {"Carl", 4}, {"Dora Ehlers", 1290}};

const QStringList regeln{"Punkte gew Spiele abzgl verl. Spiele * 50",
                         "Punkte verl. Spiele der Gegenspieler * 30",
                         "Kartengeld 1.0 Euro",
                         "Verlorene Spiele 1-5 1.0 ab 6 2.0 Euro",
                         "Startgeld 10.0 Euro 1. Serie",
                         "Platz: 1=0.0, 2=1.5, 3=2.5, 4=3.0 Euro"};

// A drawn empty sheet for the table's first `spieler` players.
std::unique_ptr<Spielblatt> blattFuer(int spieler)
{
    auto blatt = std::make_unique<Spielblatt>(spieler);
    blatt->leerZeichnen(kopf(QDate(2026, 11, 14), 2, 5), tisch.mid(0, spieler), regeln);
    return blatt;
}

// Every text with its place, for comparing two sheets.
QStringList abbild(const QGraphicsScene *scene)
{
    QStringList zeilen;
    for (const Text &t : alleTexte(scene))
        zeilen << QStringLiteral("%1 @ %2,%3")
                      .arg(t.text)
                      .arg(qRound(t.rect.left()))
                      .arg(qRound(t.rect.top()));
    for (QGraphicsItem *item : scene->items()) {
        if (auto *rechteck = qgraphicsitem_cast<QGraphicsRectItem *>(item))
            zeilen << QStringLiteral("Rechteck %1,%2 %3x%4")
                          .arg(qRound(rechteck->rect().left()))
                          .arg(qRound(rechteck->rect().top()))
                          .arg(qRound(rechteck->rect().width()))
                          .arg(qRound(rechteck->rect().height()));
    }
    zeilen.sort();
    return zeilen;
}

} // namespace

Q_DECLARE_METATYPE(Liste)

class TstSpielblatt : public QObject
{
    Q_OBJECT

private slots:
    void kopf_data();
    void kopf();
    void kopfNeuZeichnen();
    void ueberschriften_data();
    void ueberschriften();
    void ueberschriftenGedreht();
    void namen_data();
    void namen();
    void zellen_data();
    void zellen();
    void runden_data();
    void runden();
    void fuss_data();
    void fuss();
    void fussFarben();
    void ohneFuss();
    void beschreibungen();
    void nachfuellen_data();
    void nachfuellen();
    void eineSeite_data();
    void eineSeite();
    void pdfDateiName_data();
    void pdfDateiName();
    void pdf_data();
    void pdf();
    void pdfOhneZiel();
    void listViewZiehbar();
};

void TstSpielblatt::kopf_data()
{
    QTest::addColumn<QDate>("datum");
    QTest::addColumn<int>("serie");
    QTest::addColumn<int>("tischNr");
    QTest::addColumn<QStringList>("erwartet");

    QTest::newRow("14.11.2026") << QDate(2026, 11, 14) << 2 << 5
                                << QStringList{"Datum: 14.11.2026", "Serie: 2", "Tisch-Nr: 5"};
    QTest::newRow("einstellige Tage und Monate mit Null")
        << QDate(2026, 3, 1) << 10 << 12
        << QStringList{"Datum: 01.03.2026", "Serie: 10", "Tisch-Nr: 12"};
}

void TstSpielblatt::kopf()
{
    QFETCH(QDate, datum);
    QFETCH(int, serie);
    QFETCH(int, tischNr);
    QFETCH(QStringList, erwartet);

    for (int spieler : {3, 4}) {
        Spielblatt blatt(spieler);
        blatt.leerZeichnen(::kopf(datum, serie, tischNr), tisch.mid(0, spieler), regeln);
        const QStringList texte = nurTexte(blatt.scene());
        for (const QString &text : erwartet)
            QCOMPARE(texte.count(text), 1);
    }
}

// Changing series or table rewrites the header and nothing else.
void TstSpielblatt::kopfNeuZeichnen()
{
    auto blatt = blattFuer(4);
    blatt->zeilenFuellen(bekannteSpiele(), fussMuster(4));
    const QStringList vorher = nurTexte(blatt->scene());
    const QString zeile8 = zeilenText(blatt->scene(), 8);

    blatt->kopfZeichnen(::kopf(QDate(2027, 1, 2), 3, 11));
    const QStringList nachher = nurTexte(blatt->scene());
    QCOMPARE(nachher.size(), vorher.size());
    for (const QString &alt : QStringList{"Datum: 14.11.2026", "Serie: 2", "Tisch-Nr: 5"})
        QVERIFY2(!nachher.contains(alt), qPrintable(alt));
    for (const QString &neu : QStringList{"Datum: 02.01.2027", "Serie: 3", "Tisch-Nr: 11"})
        QCOMPARE(nachher.count(neu), 1);
    QCOMPARE(zeilenText(blatt->scene(), 8), zeile8);
    QCOMPARE(fussZeile(blatt->scene(), QStringLiteral("Summe")),
             QStringLiteral("Summe: Platz1=r7p1 Platz2=r7p2 Platz3=r7p3 Platz4=r7p4"));
}

void TstSpielblatt::ueberschriften_data()
{
    QTest::addColumn<int>("spieler");
    QTest::addColumn<QStringList>("erwartet");

    const QStringList vorn = merkmalsUeberschriften() + QStringList{"+", "-"};
    const QStringList drei{"Platz1", "g", "v", "Platz2", "g", "v", "Platz3", "g", "v"};
    const QStringList hinten{"Eingepasst", "Reizung"};
    QTest::newRow("3 Spieler") << 3 << vorn + drei + hinten;
    QTest::newRow("4 Spieler") << 4 << vorn + drei + QStringList{"Platz4", "g", "v"} + hinten;
}

// Left to right in the order of the paper list; the 3-player sheet has no fourth group.
void TstSpielblatt::ueberschriften()
{
    QFETCH(int, spieler);
    QFETCH(QStringList, erwartet);

    auto blatt = blattFuer(spieler);
    QStringList gefunden;
    for (const Text &t : ueberschriftenVonLinks(blatt->scene()))
        gefunden << t.text;
    QCOMPARE(gefunden, erwartet);
    QCOMPARE(nurTexte(blatt->scene()).contains("Platz4"), spieler == 4);
    QCOMPARE(blatt->spieler(), spieler);

    // The same after rows were drawn: the headings are the fixed part.
    blatt->zeilenFuellen(reihe(10, spieler), fussMuster(spieler));
    QCOMPARE(nurTexte(blatt->scene()).count("Spiel-Nr."), 1);
    QCOMPARE(nurTexte(blatt->scene()).count(QStringLiteral("Platz%1").arg(spieler)), 1);
}

// The feature headings read from bottom to top; the two long ones are set narrow so that
// they fit the column's height.
void TstSpielblatt::ueberschriftenGedreht()
{
    auto blatt = blattFuer(4);
    int gedreht = 0;
    for (const Text &t : alleTexte(blatt->scene())) {
        if (!merkmalsUeberschriften().contains(t.text) && t.text != QLatin1String("Eingepasst") &&
            t.text != QLatin1String("Reizung"))
            continue;
        ++gedreht;
        auto *item = qgraphicsitem_cast<QGraphicsTextItem *>(t.item);
        QVERIFY2(item, qPrintable(t.text));
        const QPointF lesrichtung =
            item->sceneTransform().map(QPointF(1, 0)) - item->sceneTransform().map(QPointF(0, 0));
        QVERIFY2(qAbs(lesrichtung.x()) < 1e-9 && lesrichtung.y() < 0, qPrintable(t.text));
        QVERIFY2(t.rect.height() > t.rect.width(), qPrintable(t.text));
        QCOMPARE(item->font().stretch() == 62, t.text.endsWith(QLatin1String("anges.")));
    }
    QCOMPARE(gedreht, merkmalsUeberschriften().size() + 2);
}

void TstSpielblatt::namen_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("zeilen");

    QTest::newRow("Vor- und Nachname") << "Vorname Nachname"
                                       << "Vorname\nNachname" << 2;
    QTest::newRow("ein Wort") << "Anna"
                              << "Anna" << 1;
    QTest::newRow("drei Teile") << "Anna Maria Schmidt"
                                << "Anna\nMaria\nSchmidt" << 3;
    QTest::newRow("lange Doppelnamen") << "Hans-Joachim-Maximilian Ehlers-Friedrichsen"
                                       << "Hans-Joachim-Maximilian\nEhlers-Friedrichsen" << 2;
    QTest::newRow("vier Teile") << "Anna Maria Luise Schmidt"
                                << "Anna\nMaria\nLuise\nSchmidt" << 4;
}

// Every blank of a name becomes a line break, and no name runs into the next group,
// however long it is.
void TstSpielblatt::namen()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(int, zeilen);

    QVector<BlattSpieler> spieler = tisch;
    spieler[1].name = name;
    Spielblatt blatt(4);
    blatt.leerZeichnen(::kopf(QDate(2026, 11, 14), 2, 5), spieler, regeln);

    const QVector<Text> texte = alleTexte(blatt.scene());
    const auto gefunden =
        std::find_if(texte.begin(), texte.end(), [&](const Text &t) { return t.text == text; });
    QVERIFY(gefunden != texte.end());
    auto *item = qgraphicsitem_cast<QGraphicsTextItem *>(gefunden->item);
    QVERIFY(item);
    int gezeigt = 0;
    for (QTextBlock block = item->document()->begin(); block.isValid(); block = block.next())
        gezeigt += block.layout()->lineCount();
    QCOMPARE(gezeigt, zeilen);

    // Within the group of seat 2: the groups are equally wide, so its edges lie halfway to
    // the middles of the neighbours' names.
    auto mitteVon = [&](const QString &gesucht) {
        for (const Text &t : texte) {
            if (t.text == gesucht)
                return t.rect.center().x();
        }
        return qreal(0);
    };
    const qreal links =
        (mitteVon(QStringLiteral("Anna\nBergmann")) + gefunden->rect.center().x()) / 2;
    const qreal rechts = (mitteVon(QStringLiteral("Carl")) + gefunden->rect.center().x()) / 2;
    QVERIFY(links > 0 && rechts > links);
    qreal textBreite = 0;
    for (QTextBlock block = item->document()->begin(); block.isValid(); block = block.next()) {
        for (int i = 0; i < block.layout()->lineCount(); ++i)
            textBreite = std::max(textBreite, block.layout()->lineAt(i).naturalTextWidth());
    }
    const qreal mitte = gefunden->rect.center().x();
    QVERIFY2(mitte - textBreite / 2 > links && mitte + textBreite / 2 < rechts,
             qPrintable(QStringLiteral("%1..%2 in %3..%4")
                            .arg(mitte - textBreite / 2)
                            .arg(mitte + textBreite / 2)
                            .arg(links)
                            .arg(rechts)));
    // Above the member number of its group.
    const auto startNr = std::find_if(texte.begin(), texte.end(), [](const Text &t) {
        return t.text == QLatin1String("StartNr: 233");
    });
    QVERIFY(startNr != texte.end());
    QVERIFY(gefunden->rect.top() + item->document()->size().height() <= startNr->rect.top());
}

void TstSpielblatt::zellen_data()
{
    QTest::addColumn<int>("spieler");
    QTest::addColumn<int>("zeile");
    QTest::addColumn<QString>("erwartet");

    QTest::newRow("Kreuz mit 2 Hand gewonnen")
        << 4 << 1 << "Spiel-Nr.=1 Spielwert=12 Handspiel=x Mit=2 +=48 Platz2=48 g2=1 Reizung=36";
    QTest::newRow("Grand ohne 1 verloren")
        << 4 << 2 << "Spiel-Nr.=2 Spielwert=24 Ohne=1 -=96 Platz1=-96 v1=1 Reizung=24";
    QTest::newRow("eingepasst ohne Reizung") << 4 << 3 << "Spiel-Nr.=3 Eingepasst=1";
    QTest::newRow("Null Hand gewonnen")
        << 4 << 4 << "Spiel-Nr.=4 Spielwert=23 Handspiel=x +=35 Platz3=35 g3=1 Reizung=35";
    QTest::newRow("Grand Hand mit 1, zweites Spiel des Sitzes")
        << 4 << 5 << "Spiel-Nr.=5 Spielwert=24 Handspiel=x Mit=1 +=72 Platz2=120 g2=2 Reizung=48";
    QTest::newRow("Null ouvert verloren")
        << 4 << 6 << "Spiel-Nr.=6 Spielwert=23 Offen=x -=92 Platz3=-57 v3=1 Reizung=46";
    QTest::newRow("zweimal eingepasst, mit Reizung")
        << 4 << 7 << "Spiel-Nr.=7 Eingepasst=2 Reizung=18";
    QTest::newRow("alle Merkmale")
        << 4 << 8
        << "Spiel-Nr.=8 Spielwert=11 Ohne=3 Handspiel=x Schneider=x Schneider anges.=x "
           "Schwarz=x Schwarz anges.=x +=99 Platz1=3 g1=1 Reizung=99";
    QTest::newRow("3 Spieler, Null ouvert verloren")
        << 3 << 6 << "Spiel-Nr.=6 Spielwert=23 Offen=x -=92 Platz3=-57 v3=1 Reizung=46";
    QTest::newRow("3 Spieler, alle Merkmale")
        << 3 << 8
        << "Spiel-Nr.=8 Spielwert=11 Ohne=3 Handspiel=x Schneider=x Schneider anges.=x "
           "Schwarz=x Schwarz anges.=x +=99 Platz1=3 g1=1 Reizung=99";
}

// Each text under the heading of its column; the declarer's group shows the running
// points and the running count of won ("g") or lost ("v") games.
void TstSpielblatt::zellen()
{
    QFETCH(int, spieler);
    QFETCH(int, zeile);
    QFETCH(QString, erwartet);

    auto blatt = blattFuer(spieler);
    blatt->zeilenFuellen(bekannteSpiele(), fussMuster(spieler));
    QCOMPARE(zeilenText(blatt->scene(), zeile), erwartet);
}

void TstSpielblatt::runden_data()
{
    QTest::addColumn<int>("spieler");
    QTest::addColumn<int>("spiele");
    QTest::addColumn<QStringList>("erwartet");

    QTest::newRow("4 Spieler, eine volle Runde") << 4 << 4 << QStringList();
    QTest::newRow("4 Spieler, ein Spiel der zweiten Runde")
        << 4 << 5 << QStringList{"Runde 1 nach 4 vor 5"};
    QTest::newRow("4 Spieler, drei volle Runden")
        << 4 << 12 << QStringList{"Runde 1 nach 4 vor 5", "Runde 2 nach 8 vor 9"};
    QTest::newRow("3 Spieler, drei volle Runden")
        << 3 << 9 << QStringList{"Runde 1 nach 3 vor 4", "Runde 2 nach 6 vor 7"};
    QTest::newRow("3 Spieler, 7 Spiele")
        << 3 << 7 << QStringList{"Runde 1 nach 3 vor 4", "Runde 2 nach 6 vor 7"};
    QTest::newRow("keine Spiele") << 4 << 0 << QStringList();
}

// A separator after every round (each player dealt once), never after the last row.
void TstSpielblatt::runden()
{
    QFETCH(int, spieler);
    QFETCH(int, spiele);
    QFETCH(QStringList, erwartet);

    auto blatt = blattFuer(spieler);
    Liste liste = reihe(spiele, spieler);
    if (spiele > 2)
        liste[1] = eingepasst(2); // a passed-in round is dealt as well
    blatt->zeilenFuellen(liste, fussMuster(spieler));

    const QVector<Text> texte = alleTexte(blatt->scene());
    const QVector<Spalte> alle = spalten(blatt->scene());
    const qreal unten = kopfUnten(blatt->scene());
    QVector<Text> trenner;
    for (const Text &t : texte) {
        if (t.text.startsWith(QLatin1String("Runde")))
            trenner << t;
    }
    std::sort(trenner.begin(), trenner.end(),
              [](const Text &a, const Text &b) { return a.rect.top() < b.rect.top(); });
    QStringList gefunden;
    for (const Text &t : qAsConst(trenner)) {
        // The games right above and right below the separator.
        int davor = 0, danach = 0;
        qreal abstandDavor = 1e9, abstandDanach = 1e9;
        for (int zeile = 1; zeile <= spiele; ++zeile) {
            const Text *nr = spielNrZelle(texte, alle, unten, zeile);
            QVERIFY(nr);
            const qreal dy = nr->rect.center().y() - t.rect.center().y();
            if (dy < 0 && -dy < abstandDavor) {
                abstandDavor = -dy;
                davor = zeile;
            }
            if (dy > 0 && dy < abstandDanach) {
                abstandDanach = dy;
                danach = zeile;
            }
        }
        gefunden << QStringLiteral("%1 nach %2 vor %3").arg(t.text).arg(davor).arg(danach);
    }
    QCOMPARE(gefunden, erwartet);
}

void TstSpielblatt::fuss_data()
{
    QTest::addColumn<int>("spieler");
    QTest::newRow("3 Spieler") << 3;
    QTest::newRow("4 Spieler") << 4;
}

// The eight rows below the last game, labelled on the left, each value in its seat's group.
void TstSpielblatt::fuss()
{
    QFETCH(int, spieler);

    auto blatt = blattFuer(spieler);
    blatt->zeilenFuellen(bekannteSpiele(), fussMuster(spieler));

    const QStringList beschriftungen{"Punkte gew. abzgl. verl. Spiele",
                                     "Punkte verl. Spiele Gegenspieler",
                                     "Gesamtpunkte = Endergebnis",
                                     "Kartengeld",
                                     "Verlorene Spiele",
                                     "Platzgeld",
                                     "Preisskat",
                                     "Summe"};
    QCOMPARE(Spielblatt::fussBeschriftungen(), beschriftungen);
    const QVector<Text> texte = alleTexte(blatt->scene());
    const QVector<Spalte> alle = spalten(blatt->scene());
    qreal oben = spielNrZelle(texte, alle, kopfUnten(blatt->scene()), 8)->rect.bottom();
    for (int r = 0; r < 8; ++r) {
        QStringList werte;
        for (int p = 1; p <= spieler; ++p)
            werte << QStringLiteral("Platz%1=r%2p%1").arg(p).arg(r);
        QCOMPARE(fussZeile(blatt->scene(), beschriftungen.at(r)),
                 beschriftungen.at(r) + QStringLiteral(": ") + werte.join(QLatin1Char(' ')));
        // Top to bottom, below the last game.
        const auto label = std::find_if(texte.begin(), texte.end(), [&](const Text &t) {
            return t.text == beschriftungen.at(r);
        });
        QVERIFY2(label->rect.top() >= oben, qPrintable(beschriftungen.at(r)));
        oben = label->rect.bottom();
    }
}

// The final points stand on a cyan band in dark text; the sum row is red, the others not.
void TstSpielblatt::fussFarben()
{
    auto blatt = blattFuer(4);
    blatt->zeilenFuellen(bekannteSpiele(), fussMuster(4));
    const QVector<Text> texte = alleTexte(blatt->scene());

    QList<QGraphicsRectItem *> baender;
    for (QGraphicsItem *item : blatt->scene()->items()) {
        auto *rechteck = qgraphicsitem_cast<QGraphicsRectItem *>(item);
        if (rechteck && rechteck->brush().color() == QColor(Qt::cyan) &&
            rechteck->brush().style() == Qt::SolidPattern)
            baender << rechteck;
    }
    QCOMPARE(baender.size(), 1);
    const QRectF band = baender.first()->sceneBoundingRect();

    int aufDemBand = 0, rot = 0;
    for (const Text &t : texte) {
        const bool gesamt = t.text == QLatin1String("Gesamtpunkte = Endergebnis") ||
                            QRegularExpression("^r2p\\d$").match(t.text).hasMatch();
        const bool summe = t.text == QLatin1String("Summe") ||
                           QRegularExpression("^r7p\\d$").match(t.text).hasMatch();
        QCOMPARE(band.contains(t.rect.center()), gesamt);
        if (gesamt) {
            ++aufDemBand;
            QVERIFY(t.farbe.lightness() < 100);
        }
        QCOMPARE(t.farbe == QColor(Qt::red), summe);
        rot += summe ? 1 : 0;
    }
    QCOMPARE(aufDemBand, 5);
    QCOMPARE(rot, 5);
}

// Result and Bierlachs lists have no account: nothing below the last game but the rules.
void TstSpielblatt::ohneFuss()
{
    auto blatt = blattFuer(4);
    blatt->zeilenFuellen(bekannteSpiele(), fussMuster(4));
    blatt->zeilenFuellen(bekannteSpiele(), Fuss());

    const QStringList texte = nurTexte(blatt->scene());
    for (const QString &beschriftung : Spielblatt::fussBeschriftungen())
        QVERIFY2(!texte.contains(beschriftung), qPrintable(beschriftung));
    for (QGraphicsItem *item : blatt->scene()->items()) {
        auto *rechteck = qgraphicsitem_cast<QGraphicsRectItem *>(item);
        QVERIFY(!rechteck || rechteck->brush().color() != QColor(Qt::cyan));
    }
    QCOMPARE(abbild(blatt->scene()), [] {
        auto frisch = blattFuer(4);
        frisch->zeilenFuellen(bekannteSpiele(), Fuss());
        return abbild(frisch->scene());
    }());
}

// The six lines describing the money rules: in the order given, rewritten one by one, and
// always below the frame, which ends with the footer or the last game.
void TstSpielblatt::beschreibungen()
{
    auto blatt = blattFuer(4);
    QList<QGraphicsTextItem *> zeilen = blatt->beschreibungen();
    QCOMPARE(zeilen.size(), 6);
    for (int i = 0; i < 6; ++i)
        QCOMPARE(zeilen.at(i)->toPlainText(), regeln.at(i));

    blatt->beschreibungSetzen(1, QStringLiteral("Punkte verl. Spiele der Gegenspieler * 40"));
    blatt->beschreibungSetzen(5, QStringLiteral("Platz: 1=0.0, 2=2.0, 3=2.5, 4=3.0"));
    blatt->beschreibungSetzen(-1, QStringLiteral("daneben"));
    blatt->beschreibungSetzen(6, QStringLiteral("daneben"));
    QStringList erwartet = regeln;
    erwartet[1] = QStringLiteral("Punkte verl. Spiele der Gegenspieler * 40");
    erwartet[5] = QStringLiteral("Platz: 1=0.0, 2=2.0, 3=2.5, 4=3.0");
    QStringList gezeigt;
    for (QGraphicsTextItem *zeile : blatt->beschreibungen())
        gezeigt << zeile->toPlainText();
    QCOMPARE(gezeigt, erwartet);
    QVERIFY(!nurTexte(blatt->scene()).contains("daneben"));

    for (const Fuss &fuss : {fussMuster(4), Fuss()}) {
        blatt->zeilenFuellen(reihe(48, 4), fuss);
        QCOMPARE(blatt->beschreibungen(), zeilen); // the same items, moved
        qreal letzte = 0;
        for (const Text &t : alleTexte(blatt->scene())) {
            if (!regeln.contains(t.text) && !erwartet.contains(t.text))
                letzte = std::max(letzte, t.rect.bottom());
        }
        QSet<QPair<int, int>> plaetze;
        for (QGraphicsTextItem *zeile : blatt->beschreibungen()) {
            QVERIFY(zeile->sceneBoundingRect().top() > letzte);
            QVERIFY(blatt->scene()->sceneRect().contains(zeile->sceneBoundingRect()));
            plaetze.insert({qRound(zeile->pos().x()), qRound(zeile->pos().y())});
        }
        QCOMPARE(plaetze.size(), 6);
    }
}

void TstSpielblatt::nachfuellen_data()
{
    QTest::addColumn<int>("spieler");
    QTest::addColumn<Liste>("vorher");
    QTest::addColumn<Liste>("nachher");
    QTest::addColumn<bool>("fussVorher");
    QTest::addColumn<bool>("fussNachher");

    Liste ohneErstes = bekannteSpiele().mid(1);
    for (int i = 0; i < ohneErstes.size(); ++i)
        ohneErstes[i].setze(S::Zeile, i + 1);
    QTest::newRow("ein Spiel dazu") << 4 << reihe(11, 4) << reihe(12, 4) << true << true;
    QTest::newRow("dasselbe noch einmal") << 4 << reihe(12, 4) << reihe(12, 4) << true << true;
    QTest::newRow("letztes geloescht") << 4 << reihe(13, 4) << reihe(12, 4) << true << true;
    QTest::newRow("erstes geloescht, alle rutschen nach")
        << 4 << bekannteSpiele() << ohneErstes << true << true;
    QTest::newRow("andere Spiele") << 3 << reihe(9, 3) << bekannteSpiele() << true << true;
    QTest::newRow("alles geloescht") << 3 << bekannteSpiele() << Liste() << true << true;
    QTest::newRow("Fuss faellt weg") << 4 << reihe(12, 4) << reihe(12, 4) << true << false;
    QTest::newRow("Fuss kommt dazu") << 4 << reihe(12, 4) << reihe(13, 4) << false << true;
}

// A refill leaves exactly what a fresh sheet with the new list shows: rows, separators
// and footer are replaced, never added to.
void TstSpielblatt::nachfuellen()
{
    QFETCH(int, spieler);
    QFETCH(Liste, vorher);
    QFETCH(Liste, nachher);
    QFETCH(bool, fussVorher);
    QFETCH(bool, fussNachher);

    auto blatt = blattFuer(spieler);
    blatt->zeilenFuellen(vorher, fussVorher ? fussMuster(spieler) : Fuss());
    blatt->zeilenFuellen(nachher, fussNachher ? fussMuster(spieler) : Fuss());

    auto frisch = blattFuer(spieler);
    frisch->zeilenFuellen(nachher, fussNachher ? fussMuster(spieler) : Fuss());
    QCOMPARE(abbild(blatt->scene()), abbild(frisch->scene()));
    QCOMPARE(blatt->scene()->items().size(), frisch->scene()->items().size());
    QCOMPARE(blatt->scene()->sceneRect(), frisch->scene()->sceneRect());
    QCOMPARE(blatt->scene()->itemsBoundingRect(), frisch->scene()->itemsBoundingRect());
}

void TstSpielblatt::eineSeite_data()
{
    QTest::addColumn<int>("spieler");
    QTest::addColumn<int>("spiele");
    QTest::newRow("Dreierliste, 36 Spiele") << 3 << 36;
    QTest::newRow("Viererliste, 48 Spiele") << 4 << 48;
}

// A full tournament list with footer and rules fits one A4 page: the sheet has the page's
// proportions, so the PDF fills it, and nothing lies outside it.
void TstSpielblatt::eineSeite()
{
    QFETCH(int, spieler);
    QFETCH(int, spiele);

    auto blatt = blattFuer(spieler);
    blatt->zeilenFuellen(reihe(spiele, spieler), fussMuster(spieler));
    const QRectF seite = blatt->scene()->sceneRect();
    QVERIFY2(qAbs(seite.height() / seite.width() - 297.0 / 210.0) < 0.005,
             qPrintable(QStringLiteral("%1 x %2").arg(seite.width()).arg(seite.height())));
    const QRectF inhalt = blatt->scene()->itemsBoundingRect();
    QVERIFY2(seite.contains(inhalt), qPrintable(QStringLiteral("%1,%2 %3x%4")
                                                    .arg(inhalt.left())
                                                    .arg(inhalt.top())
                                                    .arg(inhalt.width())
                                                    .arg(inhalt.height())));
    // Not a strip in a big page: the drawing spans the page but for its margins.
    QVERIFY(inhalt.width() > 0.9 * seite.width());
    QVERIFY(inhalt.height() > 0.85 * seite.height());

    // A longer result list makes the sheet longer instead of running off the page.
    blatt->zeilenFuellen(reihe(200, spieler), Fuss());
    QVERIFY(blatt->scene()->sceneRect().contains(blatt->scene()->itemsBoundingRect()));
    QCOMPARE(zeilenText(blatt->scene(), 200).left(14), QStringLiteral("Spiel-Nr.=200 "));
}

void TstSpielblatt::pdfDateiName_data()
{
    QTest::addColumn<QDate>("datum");
    QTest::addColumn<int>("serie");
    QTest::addColumn<int>("tischNr");
    QTest::addColumn<QString>("erwartet");

    QTest::newRow("14.11.2026") << QDate(2026, 11, 14) << 2 << 5 << "Skat14-11-2026_S2_T5.pdf";
    QTest::newRow("01.03.2026") << QDate(2026, 3, 1) << 10 << 12 << "Skat01-03-2026_S10_T12.pdf";
}

void TstSpielblatt::pdfDateiName()
{
    QFETCH(QDate, datum);
    QFETCH(int, serie);
    QFETCH(int, tischNr);
    QTEST(::pdfDateiName(datum, serie, tischNr), "erwartet");
}

void TstSpielblatt::pdf_data()
{
    QTest::addColumn<int>("spieler");
    QTest::addColumn<double>("zoom");
    QTest::newRow("Viererliste") << 4 << 1.0;
    QTest::newRow("Dreierliste") << 3 << 1.0;
    QTest::newRow("Viererliste, vergroessert") << 4 << 2.4;
}

// One A4 portrait page with the sheet as text: the names, the header and the footer can
// be found (and searched for) in the file, whatever the zoom of the view.
void TstSpielblatt::pdf()
{
    QFETCH(int, spieler);
    QFETCH(double, zoom);

    auto blatt = blattFuer(spieler);
    blatt->zeilenFuellen(reihe(spieler == 3 ? 36 : 48, spieler), fussMuster(spieler));
    ListView ansicht;
    ansicht.resize(600, 400);
    ansicht.setScene(blatt->scene());
    ansicht.setTransform(QTransform::fromScale(zoom, zoom));
    ansicht.centerOn(0, 0);

    QTemporaryDir verzeichnis;
    const QString pfad = verzeichnis.filePath(::pdfDateiName(QDate(2026, 11, 14), 2, 5));
    QFile alt(pfad);
    QVERIFY(alt.open(QIODevice::WriteOnly));
    alt.write("alt");
    alt.close();
    QVERIFY(pdfSchreiben(&ansicht, pfad));

    QFile datei(pfad);
    QVERIFY(datei.open(QIODevice::ReadOnly));
    const QByteArray inhalt = datei.readAll();
    QVERIFY(inhalt.startsWith("%PDF-"));
    QCOMPARE(inhalt.count("/Type /Page\n"), 1);
    QVERIFY(QRegularExpression(QStringLiteral("/MediaBox \\[0 0 595(\\.0+)? 842(\\.0+)?\\]"))
                .match(QString::fromLatin1(inhalt.constData(), inhalt.size()))
                .hasMatch());

    const QString pdftotext = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    if (pdftotext.isEmpty())
        QSKIP("pdftotext is not installed");
    QProcess prozess;
    prozess.start(pdftotext, {pfad, QStringLiteral("-")});
    QVERIFY(prozess.waitForFinished());
    const QString text = QString::fromUtf8(prozess.readAllStandardOutput());
    for (int sitz = 0; sitz < spieler; ++sitz) {
        for (const QString &teil : tisch.at(sitz).name.split(QLatin1Char(' ')))
            QVERIFY2(text.contains(teil), qPrintable(teil));
    }
    for (const QString &erwartet :
         QStringList{"Datum: 14.11.2026", "Tisch-Nr: 5", "Schneider anges.",
                     "Gesamtpunkte = Endergebnis", "Kartengeld 1.0 Euro"})
        QVERIFY2(text.contains(erwartet), qPrintable(erwartet));
    QCOMPARE(text.contains("Dora"), spieler == 4);
}

void TstSpielblatt::pdfOhneZiel()
{
    auto blatt = blattFuer(4);
    ListView ansicht;
    ansicht.setScene(blatt->scene());
    QTemporaryDir verzeichnis;
    const QString pfad = verzeichnis.filePath(QStringLiteral("fehlt/Skat.pdf"));
    QVERIFY(!pdfSchreiben(&ansicht, pfad));
    QVERIFY(!QFile::exists(pfad));

    ListView leer;
    QVERIFY(!pdfSchreiben(&leer, verzeichnis.filePath(QStringLiteral("leer.pdf"))));
}

// The sheet can be dragged with the finger or the mouse.
void TstSpielblatt::listViewZiehbar()
{
    ListView ansicht;
    QVERIFY(QScroller::hasScroller(&ansicht));
    QVERIFY(QScroller::grabbedGesture(&ansicht) != Qt::GestureType(0));
}

KARTULO_TEST_MAIN(TstSpielblatt)
#include "tst_spielblatt.moc"
