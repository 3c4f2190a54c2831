#include "app/sheets/spielblatt.h"

#include <QBrush>
#include <QFontMetricsF>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsSimpleTextItem>
#include <QGraphicsTextItem>
#include <QGuiApplication>
#include <QPainterPath>
#include <QPen>
#include <QTextDocument>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace {

// Columns left to right; the seat groups (points, "g", "v") follow Minus.
enum Spalte
{
    SpielNr,
    Spielwert,
    OhneSpalte,
    HandSpalte,
    SchneiderSpalte,
    AngSchneiderSpalte,
    SchwarzSpalte,
    AngSchwarzSpalte,
    OffenSpalte,
    MitSpalte,
    Plus,
    Minus,
    ErsteGruppe
};

int punkteSpalte(int sitz)
{
    return ErsteGruppe + 3 * sitz;
}
int gSpalte(int sitz)
{
    return punkteSpalte(sitz) + 1;
}
int vSpalte(int sitz)
{
    return punkteSpalte(sitz) + 2;
}

// Sizes in scene pixels. The page has the proportions of A4 portrait: as wide
// as the grid needs, or wider where a full tournament list (36 or 48 games)
// with footer and rules block would otherwise not fit its height.
constexpr qreal seitenRand = 32;
constexpr qreal zeilenHoehe = 19;
constexpr qreal rundenHoehe = 14;
constexpr qreal fussHoehe = 19;
constexpr qreal unterzeilenHoehe = 26;
constexpr qreal regelAbstand = 10;
constexpr qreal a4Verhaeltnis = 297.0 / 210.0;
constexpr qreal innenLinie = 3.0;
constexpr int regelZeilen = 6;

const QColor rundenFarbe(228, 228, 228);
const QColor zeilenLinienFarbe(170, 170, 170);

QPen rahmenStift()
{
    return QPen(QBrush(Qt::black), 5.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

QPen linienStift()
{
    return QPen(QBrush(Qt::black), innenLinie, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

// Holds what the refills draw; it paints nothing itself.
class Behaelter : public QGraphicsItem
{
public:
    explicit Behaelter(qreal z)
    {
        setFlag(ItemHasNoContents);
        setZValue(z);
    }
    QRectF boundingRect() const override { return QRectF(); }
    void paint(QPainter *, const QStyleOptionGraphicsItem *, QWidget *) override {}
};

// Puts a one-line text into the cell, centred vertically; left and right
// aligned texts keep a small distance from the lines. The item of the last
// refill is reused, so an unchanged text is not laid out again; an empty text
// removes the item.
void textSetzen(QGraphicsSimpleTextItem *&item, QGraphicsItem *eltern, const QString &text,
                const QFont &schrift, const QRectF &zelle,
                Qt::Alignment ausrichtung = Qt::AlignHCenter)
{
    if (text.isEmpty()) {
        delete item;
        item = nullptr;
        return;
    }
    const bool neu = !item;
    if (neu) {
        item = new QGraphicsSimpleTextItem;
        item->setFont(schrift);
    }
    item->setText(text);
    const QRectF r = item->boundingRect();
    qreal x = zelle.center().x() - r.width() / 2;
    if (ausrichtung & Qt::AlignLeft)
        x = zelle.left() + 6;
    else if (ausrichtung & Qt::AlignRight)
        x = zelle.right() - 6 - r.width();
    item->setPos(x, zelle.center().y() - r.height() / 2);
    // Placed before it joins the scene, so the scene takes it in once.
    if (neu)
        item->setParentItem(eltern);
}

QGraphicsSimpleTextItem *szenenText(QGraphicsScene *scene, const QString &text,
                                    const QFont &schrift, const QRectF &zelle,
                                    Qt::Alignment ausrichtung = Qt::AlignHCenter)
{
    QGraphicsSimpleTextItem *item = nullptr;
    textSetzen(item, nullptr, text, schrift, zelle, ausrichtung);
    scene->addItem(item);
    return item;
}

QString zahlOderLeer(int wert)
{
    return wert != 0 ? QString::number(wert) : QString();
}

} // namespace

QGraphicsTextItem *gedrehterText(QGraphicsScene *scene, const QString &text, const QFont &schrift,
                                 qreal winkel, const QPointF &pos)
{
    QGraphicsTextItem *item = scene->addText(text, schrift);
    // Without the document margin the heading sits exactly where it is measured.
    item->document()->setDocumentMargin(0);
    item->setTransform(QTransform().rotate(winkel, Qt::ZAxis));
    item->setPos(pos);
    return item;
}

Spielblatt::Spielblatt(int spieler)
    : m_scene(std::make_unique<QGraphicsScene>()), m_spieler(spieler == 3 ? 3 : 4)
{
    // The rows change after every entry; keeping an index of thousands of
    // texts up to date would cost more than it saves when painting.
    m_scene->setItemIndexMethod(QGraphicsScene::NoIndex);
    m_scene->setBackgroundBrush(Qt::white);
    layoutBerechnen();
}

Spielblatt::~Spielblatt() = default;

QGraphicsScene *Spielblatt::scene() const
{
    return m_scene.get();
}

int Spielblatt::spaltenAnzahl() const
{
    return ErsteGruppe + 3 * m_spieler + 2;
}

const QStringList &Spielblatt::fussBeschriftungen()
{
    static const QStringList texte{QStringLiteral("Punkte gew. abzgl. verl. Spiele"),
                                   QStringLiteral("Punkte verl. Spiele Gegenspieler"),
                                   QStringLiteral("Gesamtpunkte = Endergebnis"),
                                   QStringLiteral("Kartengeld"),
                                   QStringLiteral("Verlorene Spiele"),
                                   QStringLiteral("Platzgeld"),
                                   QStringLiteral("Preisskat"),
                                   QStringLiteral("Summe")};
    return texte;
}

void Spielblatt::layoutBerechnen()
{
    const QFont app = QGuiApplication::font();
    m_kopfSchrift = app;
    m_ueberschrift = app;
    m_ueberschrift.setPixelSize(18);
    m_schmal = m_ueberschrift;
    m_schmal.setStretch(62);
    m_zeichenSchrift = app;
    m_zeichenSchrift.setPixelSize(20);
    m_zellSchrift = app;
    m_zellSchrift.setPixelSize(13);
    m_kleinSchrift = app;
    m_kleinSchrift.setPixelSize(11);

    const QFontMetricsF kopfMetrik(m_kopfSchrift);
    const QFontMetricsF ueberMetrik(m_ueberschrift);
    const QFontMetricsF schmalMetrik(m_schmal);

    // A turned heading is as wide as its line is high.
    const qreal schmaleSpalte = std::max<qreal>(27, std::ceil(ueberMetrik.height()) + 6);
    QVector<qreal> breiten{38, 34};
    for (int i = OhneSpalte; i <= MitSpalte; ++i)
        breiten << schmaleSpalte;
    breiten << 46 << 46;
    for (int sitz = 0; sitz < m_spieler; ++sitz)
        breiten << 64 << 26 << 26;
    breiten << std::max<qreal>(30, schmaleSpalte) << 38;

    // The heading block is as high as the longest turned heading or the seat
    // group (two name lines, StartNr, "Platz"/"g"/"v"), whichever is more.
    qreal laengste = 0;
    for (const char *text : {"Spiel-Nr.", "Spielwert", "Ohne", "Handspiel", "Schneider", "Schwarz",
                             "Offen", "Mit", "Eingepasst", "Reizung"})
        laengste = std::max(laengste, ueberMetrik.horizontalAdvance(QLatin1String(text)));
    for (const char *text : {"Schneider anges.", "Schwarz anges."})
        laengste = std::max(laengste, schmalMetrik.horizontalAdvance(QLatin1String(text)));
    const qreal gruppenKopf = 6 + 2 * schmalMetrik.lineSpacing() + 2 +
                              QFontMetricsF(m_kleinSchrift).lineSpacing() + 6 + unterzeilenHoehe;
    const qreal kopfHoehe = std::ceil(std::max(laengste + 16, gruppenKopf));

    m_gitterOben = seitenRand + std::ceil(kopfMetrik.height()) + 8;
    m_kopfUnten = m_gitterOben + kopfHoehe;
    m_unterzeile = m_kopfUnten - unterzeilenHoehe;
    m_regelHoehe = (regelZeilen / 2) * (std::ceil(kopfMetrik.lineSpacing()) + 3);

    const int spiele = m_spieler == 3 ? 36 : 48;
    const int runden = spiele / m_spieler;
    const qreal hoehe = m_kopfUnten + spiele * zeilenHoehe + (runden - 1) * rundenHoehe +
                        8 * fussHoehe + regelAbstand + m_regelHoehe + seitenRand;
    qreal gitterBreite = 0;
    for (qreal b : breiten)
        gitterBreite += b;
    m_seitenBreite = std::ceil(std::max(gitterBreite + 2 * seitenRand, hoehe / a4Verhaeltnis));
    // Room left over on the page goes to the points columns of the seats.
    const qreal uebrig = m_seitenBreite - 2 * seitenRand - gitterBreite;
    for (int sitz = 0; sitz < m_spieler; ++sitz)
        breiten[punkteSpalte(sitz)] += uebrig / m_spieler;
    m_seitenHoehe = std::ceil(m_seitenBreite * a4Verhaeltnis);

    m_x.clear();
    qreal x = seitenRand;
    for (qreal b : breiten) {
        m_x << x;
        x += b;
    }
    m_x << x;
}

void Spielblatt::leerZeichnen(const BlattKopf &kopf, const QVector<BlattSpieler> &spieler,
                              const QStringList &beschreibungen)
{
    m_scene->clear();
    m_datum = m_serie = m_tisch = nullptr;
    m_rahmen = nullptr;
    m_linienZeilen.clear();
    m_linienDurch.clear();
    m_beschreibungen.clear();
    m_hintergrund = m_inhalt = nullptr;
    m_zeilenLinien = nullptr;
    m_spaltenTexte.clear();
    m_trenner.clear();
    for (QVector<QGraphicsSimpleTextItem *> &texteDerZeile : m_fussTexte)
        texteDerZeile.clear();
    m_fussLinie = nullptr;
    m_gesamtBand = nullptr;

    kopfZeichnen(kopf);

    const qreal gitterLinks = links(SpielNr);
    const qreal gitterRechts = rechts(spaltenAnzahl() - 1);

    m_rahmen = m_scene->addRect(QRectF(), rahmenStift());
    m_rahmen->setZValue(2);

    m_scene->addLine(gitterLinks, m_kopfUnten, gitterRechts, m_kopfUnten, linienStift());

    // Feature headings, turned to read from bottom to top.
    const QStringList merkmale{QStringLiteral("Spiel-Nr."), QStringLiteral("Spielwert"),
                               QStringLiteral("Ohne"),      QStringLiteral("Handspiel"),
                               QStringLiteral("Schneider"), QStringLiteral("Schneider anges."),
                               QStringLiteral("Schwarz"),   QStringLiteral("Schwarz anges."),
                               QStringLiteral("Offen"),     QStringLiteral("Mit")};
    QFont schrift = m_ueberschrift;
    const qreal zeilenHoeheUeber = QFontMetricsF(m_ueberschrift).height();
    auto senkrecht = [&](int spalte, const QString &text) {
        gedrehterText(
            m_scene.get(), text, schrift, 270,
            QPointF(links(spalte) + (breite(spalte) - zeilenHoeheUeber) / 2, m_kopfUnten - 8));
    };
    for (int spalte = SpielNr; spalte <= MitSpalte; ++spalte) {
        const QString &text = merkmale.at(spalte);
        const bool lang = text.endsWith(QLatin1String("anges."));
        if (lang)
            schrift.setStretch(62);
        senkrecht(spalte, text);
        if (lang)
            schrift.setStretch(100);
        senkrechteLinie(rechts(spalte), m_gitterOben, false);
    }

    for (int spalte : {Plus, Minus}) {
        szenenText(m_scene.get(), spalte == Plus ? QStringLiteral("+") : QStringLiteral("-"),
                   m_zeichenSchrift,
                   QRectF(links(spalte), m_unterzeile, breite(spalte), unterzeilenHoehe));
        senkrechteLinie(rechts(spalte), m_gitterOben, spalte == Minus);
    }

    for (int sitz = 0; sitz < m_spieler; ++sitz)
        gruppeZeichnen(sitz, spieler.value(sitz));

    const int eingepasst = punkteSpalte(m_spieler);
    senkrecht(eingepasst, QStringLiteral("Eingepasst"));
    senkrechteLinie(rechts(eingepasst), m_gitterOben, true);
    senkrecht(eingepasst + 1, QStringLiteral("Reizung"));
    senkrechteLinie(rechts(eingepasst + 1), m_gitterOben, true);

    for (int i = 0; i < regelZeilen; ++i) {
        QGraphicsTextItem *zeile = m_scene->addText(beschreibungen.value(i), m_kopfSchrift);
        zeile->document()->setDocumentMargin(0);
        m_beschreibungen << zeile;
    }

    zeilenFuellen({}, {});
}

void Spielblatt::gruppeZeichnen(int sitz, const BlattSpieler &spieler)
{
    const qreal gruppeLinks = links(punkteSpalte(sitz));
    const qreal gruppeBreite = rechts(vSpalte(sitz)) - gruppeLinks;

    // First and last name on lines of their own; a name too long for the
    // group gets a smaller font rather than running into its neighbour.
    QString name = spieler.name;
    name.replace(QLatin1Char(' '), QLatin1Char('\n'));
    const qreal nameOben = m_gitterOben + 4;
    const qreal startNrHoehe = QFontMetricsF(m_kleinSchrift).lineSpacing();
    const qreal namensRaum = m_unterzeile - 6 - startNrHoehe - nameOben;
    QGraphicsTextItem *nameItem = m_scene->addText(name, m_schmal);
    nameItem->document()->setDocumentMargin(0);
    QFont schrift = m_schmal;
    for (int pixel = schrift.pixelSize(); pixel > 8; --pixel) {
        schrift.setPixelSize(pixel);
        nameItem->setFont(schrift);
        const QSizeF groesse = nameItem->document()->size();
        if (groesse.width() <= gruppeBreite - 6 && groesse.height() <= namensRaum)
            break;
    }
    QTextOption mitte = nameItem->document()->defaultTextOption();
    mitte.setAlignment(Qt::AlignHCenter);
    nameItem->document()->setDefaultTextOption(mitte);
    nameItem->setTextWidth(gruppeBreite);
    const qreal nameHoehe = nameItem->document()->size().height();
    nameItem->setPos(gruppeLinks, nameOben + (namensRaum - nameHoehe) / 2);

    szenenText(m_scene.get(), QStringLiteral("StartNr: %1").arg(spieler.mgldNr), m_kleinSchrift,
               QRectF(gruppeLinks, m_unterzeile - 4 - startNrHoehe, gruppeBreite, startNrHoehe));

    m_scene->addLine(gruppeLinks, m_unterzeile, gruppeLinks + gruppeBreite, m_unterzeile,
                     linienStift());
    const int punkte = punkteSpalte(sitz);
    szenenText(m_scene.get(), QStringLiteral("Platz%1").arg(sitz + 1), m_ueberschrift,
               QRectF(links(punkte), m_unterzeile, breite(punkte), unterzeilenHoehe));
    senkrechteLinie(rechts(punkte), m_unterzeile, false);
    szenenText(m_scene.get(), QStringLiteral("g"), m_ueberschrift,
               QRectF(links(gSpalte(sitz)), m_unterzeile, breite(gSpalte(sitz)), unterzeilenHoehe));
    senkrechteLinie(rechts(gSpalte(sitz)), m_unterzeile, false);
    szenenText(m_scene.get(), QStringLiteral("v"), m_ueberschrift,
               QRectF(links(vSpalte(sitz)), m_unterzeile, breite(vSpalte(sitz)), unterzeilenHoehe));
    senkrechteLinie(rechts(vSpalte(sitz)), m_gitterOben, true);
}

void Spielblatt::senkrechteLinie(qreal x, qreal oben, bool durchDenFuss)
{
    QGraphicsLineItem *linie = m_scene->addLine(x, oben, x, m_kopfUnten, linienStift());
    (durchDenFuss ? m_linienDurch : m_linienZeilen) << linie;
}

void Spielblatt::kopfZeichnen(const BlattKopf &kopf)
{
    if (!m_datum) {
        m_datum = m_scene->addSimpleText(QString(), m_kopfSchrift);
        m_serie = m_scene->addSimpleText(QString(), m_kopfSchrift);
        m_tisch = m_scene->addSimpleText(QString(), m_kopfSchrift);
    }
    m_datum->setText(
        QStringLiteral("Datum: %1").arg(kopf.datum.toString(QStringLiteral("dd.MM.yyyy"))));
    m_serie->setText(QStringLiteral("Serie: %1").arg(kopf.serie));
    m_tisch->setText(QStringLiteral("Tisch-Nr: %1").arg(kopf.tischNr));
    // Date on the left, series in the middle, table on the right, as on the printed lists.
    m_datum->setPos(seitenRand, seitenRand);
    m_serie->setPos((m_seitenBreite - m_serie->boundingRect().width()) / 2, seitenRand);
    m_tisch->setPos(m_seitenBreite - seitenRand - m_tisch->boundingRect().width(), seitenRand);
}

void Spielblatt::beschreibungSetzen(int index, const QString &text)
{
    if (index >= 0 && index < m_beschreibungen.size())
        m_beschreibungen.at(index)->setPlainText(text);
}

void Spielblatt::zeilenFuellen(const QVector<SpielEintrag> &spiele,
                               const std::array<QStringList, 8> &fuss)
{
    if (!m_inhalt) {
        m_hintergrund = new Behaelter(-1);
        m_inhalt = new Behaelter(1);
        m_scene->addItem(m_hintergrund);
        m_scene->addItem(m_inhalt);
        m_zeilenLinien = new QGraphicsPathItem(m_hintergrund);
        m_zeilenLinien->setPen(QPen(zeilenLinienFarbe, 0.8));
    }

    const qreal gitterLinks = links(SpielNr);
    const qreal gitterRechts = rechts(spaltenAnzahl() - 1);
    const int spalten = spaltenAnzahl();
    const int eingepasstSpalte = punkteSpalte(m_spieler);
    const int reizungSpalte = eingepasstSpalte + 1;
    // The thin rules between rows form one path: a thousand line items would
    // cost more than the texts of the rows.
    QPainterPath zeilenLinien;

    m_spaltenTexte.resize(spalten);
    // How many texts of each column this refill has placed so far.
    QVector<int> benutzt(spalten, 0);
    const int runden = spiele.isEmpty() ? 0 : (spiele.size() - 1) / m_spieler;
    while (m_trenner.size() > runden) {
        delete m_trenner.last().band;
        delete m_trenner.last().text;
        m_trenner.removeLast();
    }

    struct Stand
    {
        int punkte = 0;
        int gewonnen = 0;
        int verloren = 0;
    };
    std::array<Stand, 4> stand{};
    int eingepasstZahl = 0;
    QVector<QString> texte(spalten);

    qreal y = m_kopfUnten;
    for (int i = 0; i < spiele.size(); ++i) {
        // A round is over when every player has dealt once.
        if (i > 0 && i % m_spieler == 0) {
            const int runde = i / m_spieler;
            while (m_trenner.size() < runde) {
                Trenner t;
                t.band = new QGraphicsRectItem;
                t.band->setPen(Qt::NoPen);
                t.band->setBrush(rundenFarbe);
                t.band->setParentItem(m_inhalt);
                m_trenner << t;
            }
            Trenner &t = m_trenner[runde - 1];
            t.band->setRect(gitterLinks, y, gitterRechts - gitterLinks, rundenHoehe);
            textSetzen(t.text, m_inhalt, QStringLiteral("Runde %1").arg(runde), m_kleinSchrift,
                       QRectF(gitterLinks, y, rechts(Minus) - gitterLinks, rundenHoehe),
                       Qt::AlignLeft);
            y += rundenHoehe;
        } else if (i > 0) {
            zeilenLinien.moveTo(gitterLinks, y);
            zeilenLinien.lineTo(gitterRechts, y);
        }

        const SpielEintrag &e = spiele.at(i);
        std::fill(texte.begin(), texte.end(), QString());
        auto kreuz = [&](int spalte, SpielEintrag::Spalte feld) {
            if (e.flag(feld))
                texte[spalte] = QStringLiteral("x");
        };
        const bool eingepasst = e.flag(SpielEintrag::Eingepasst);
        texte[SpielNr] = QString::number(e[SpielEintrag::Zeile]);
        if (!eingepasst)
            texte[Spielwert] = zahlOderLeer(e[SpielEintrag::Spiel]);
        texte[OhneSpalte] = zahlOderLeer(e[SpielEintrag::Ohne]);
        kreuz(HandSpalte, SpielEintrag::Hand);
        kreuz(SchneiderSpalte, SpielEintrag::Schneider);
        kreuz(AngSchneiderSpalte, SpielEintrag::AngSchneider);
        kreuz(SchwarzSpalte, SpielEintrag::Schwarz);
        kreuz(AngSchwarzSpalte, SpielEintrag::AngSchwarz);
        kreuz(OffenSpalte, SpielEintrag::Offen);
        texte[MitSpalte] = zahlOderLeer(e[SpielEintrag::Mit]);
        texte[Plus] = zahlOderLeer(e[SpielEintrag::Gewonnen]);
        texte[Minus] = zahlOderLeer(e[SpielEintrag::Verloren]);

        // Only the declarer's group gets an entry: the running points and the
        // running count of won or lost games, as the scorer writes it by hand.
        for (int sitz = 0; sitz < m_spieler; ++sitz) {
            const int wert = e.spielerWert(sitz);
            if (wert == 0)
                continue;
            Stand &s = stand[static_cast<size_t>(sitz)];
            s.punkte += wert;
            texte[punkteSpalte(sitz)] = QString::number(s.punkte);
            if (wert > 0)
                texte[gSpalte(sitz)] = QString::number(++s.gewonnen);
            else
                texte[vSpalte(sitz)] = QString::number(++s.verloren);
        }
        if (eingepasst)
            texte[eingepasstSpalte] = QString::number(++eingepasstZahl);
        texte[reizungSpalte] = zahlOderLeer(e[SpielEintrag::Reizung]);

        for (int spalte = 0; spalte < spalten; ++spalte) {
            const QString &text = texte.at(spalte);
            if (text.isEmpty())
                continue;
            QVector<QGraphicsSimpleTextItem *> &liste = m_spaltenTexte[spalte];
            int &n = benutzt[spalte];
            if (n == liste.size())
                liste.append(nullptr);
            textSetzen(liste[n++], m_inhalt, text, m_zellSchrift,
                       QRectF(links(spalte), y, breite(spalte), zeilenHoehe));
        }
        y += zeilenHoehe;
    }
    const qreal zeilenEnde = y;
    m_zeilenUnten = y;
    // Removed only now: the scene's item list is cheaper to shrink in one go
    // than between additions.
    for (int spalte = 0; spalte < spalten; ++spalte) {
        QVector<QGraphicsSimpleTextItem *> &liste = m_spaltenTexte[spalte];
        for (int i = benutzt.at(spalte); i < liste.size(); ++i)
            delete liste.at(i);
        liste.resize(benutzt.at(spalte));
    }

    const bool mitFuss =
        std::any_of(fuss.begin(), fuss.end(), [](const QStringList &l) { return !l.isEmpty(); });
    if (mitFuss) {
        if (!m_fussLinie) {
            m_fussLinie = new QGraphicsLineItem;
            m_fussLinie->setPen(linienStift());
            m_fussLinie->setParentItem(m_inhalt);
            // The final points stand out on a cyan band (cyan text would vanish
            // on white paper); the amount to pay is written in red.
            m_gesamtBand = new QGraphicsRectItem;
            m_gesamtBand->setPen(Qt::NoPen);
            m_gesamtBand->setBrush(QColor(Qt::cyan));
            m_gesamtBand->setParentItem(m_hintergrund);
        }
        m_fussLinie->setLine(gitterLinks, y, gitterRechts, y);
        m_gesamtBand->setRect(gitterLinks, y + 2 * fussHoehe, gitterRechts - gitterLinks,
                              fussHoehe);
        const QRectF beschriftung(gitterLinks, 0, rechts(Minus) - gitterLinks, fussHoehe);
        for (int r = 0; r < static_cast<int>(fuss.size()); ++r) {
            if (r > 0) {
                zeilenLinien.moveTo(gitterLinks, y);
                zeilenLinien.lineTo(gitterRechts, y);
            }
            QVector<QGraphicsSimpleTextItem *> &texteDerZeile = m_fussTexte[static_cast<size_t>(r)];
            texteDerZeile.resize(1 + m_spieler);
            textSetzen(texteDerZeile[0], m_inhalt, fussBeschriftungen().at(r), m_zellSchrift,
                       beschriftung.translated(0, y), Qt::AlignLeft);
            const QStringList &werte = fuss[static_cast<size_t>(r)];
            for (int sitz = 0; sitz < m_spieler; ++sitz) {
                const qreal l = links(punkteSpalte(sitz));
                textSetzen(texteDerZeile[1 + sitz], m_inhalt, werte.value(sitz), m_zellSchrift,
                           QRectF(l, y, rechts(vSpalte(sitz)) - l, fussHoehe), Qt::AlignRight);
            }
            if (r == 7) {
                for (QGraphicsSimpleTextItem *t : qAsConst(texteDerZeile)) {
                    if (t)
                        t->setBrush(QColor(Qt::red));
                }
            }
            y += fussHoehe;
        }
    } else {
        delete m_fussLinie;
        delete m_gesamtBand;
        m_fussLinie = nullptr;
        m_gesamtBand = nullptr;
        for (QVector<QGraphicsSimpleTextItem *> &texteDerZeile : m_fussTexte) {
            qDeleteAll(texteDerZeile);
            texteDerZeile.clear();
        }
    }

    m_zeilenLinien->setPath(zeilenLinien);
    rahmenAnpassen(zeilenEnde, y);
}

void Spielblatt::rahmenAnpassen(qreal zeilenEnde, qreal fussEnde)
{
    const qreal gitterLinks = links(SpielNr);
    const qreal gitterRechts = rechts(spaltenAnzahl() - 1);
    if (m_rahmen)
        m_rahmen->setRect(gitterLinks, m_gitterOben, gitterRechts - gitterLinks,
                          fussEnde - m_gitterOben);
    for (QGraphicsLineItem *linie : qAsConst(m_linienZeilen)) {
        QLineF l = linie->line();
        l.setP2(QPointF(l.x2(), zeilenEnde));
        linie->setLine(l);
    }
    for (QGraphicsLineItem *linie : qAsConst(m_linienDurch)) {
        QLineF l = linie->line();
        l.setP2(QPointF(l.x2(), fussEnde));
        linie->setLine(l);
    }

    // The rules block below the frame, in two columns of three lines.
    const qreal zeilenAbstand = m_regelHoehe / (regelZeilen / 2);
    const qreal spaltenBreite = (gitterRechts - gitterLinks) / 2;
    for (int i = 0; i < m_beschreibungen.size(); ++i) {
        const int spalte = i / (regelZeilen / 2);
        const int zeile = i % (regelZeilen / 2);
        m_beschreibungen.at(i)->setPos(gitterLinks + 6 + spalte * spaltenBreite,
                                       fussEnde + regelAbstand + zeile * zeilenAbstand);
    }

    const qreal unten = fussEnde + regelAbstand + m_regelHoehe + seitenRand;
    m_scene->setSceneRect(0, 0, m_seitenBreite, std::max(m_seitenHoehe, unten));
}
