#pragma once

// The paper score sheet of one table, drawn on a QGraphicsScene: header, the
// column headings, one column group per seat, a row per game with round
// separators, the money account below the last game and the rules block. The
// same scene is shown in the "Spieleliste" tab and rendered into the PDF.

#include "core/db/spieleintrag.h"

#include <QDate>
#include <QFont>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVector>

#include <array>
#include <memory>

class QGraphicsItem;
class QGraphicsLineItem;
class QGraphicsPathItem;
class QGraphicsRectItem;
class QGraphicsScene;
class QGraphicsSimpleTextItem;
class QGraphicsTextItem;
class QPointF;

struct BlattKopf
{
    QDate datum;
    int serie = 0;
    int tischNr = 0;
};

struct BlattSpieler
{
    QString name;
    int mgldNr = 0;
};

class Spielblatt
{
public:
    // 3 or 4 players; anything else is taken as 4.
    explicit Spielblatt(int spieler);
    ~Spielblatt();

    QGraphicsScene *scene() const;

    // The empty sheet: header, frame, headings, one group per seat, the rules
    // block with the description lines as given. Replaces whatever was drawn.
    void leerZeichnen(const BlattKopf &kopf, const QVector<BlattSpieler> &spieler,
                      const QStringList &beschreibungen);

    // Only the three header texts.
    void kopfZeichnen(const BlattKopf &kopf);

    // Rewrites one line of the rules block (0..5); other indexes are ignored.
    void beschreibungSetzen(int index, const QString &text);

    // Redraws the game rows in the order given, the round separators and the
    // footer. fuss[r][p] is the text of footer row r for seat p; when every
    // list is empty no footer is drawn (result and Bierlachs lists have none).
    void zeilenFuellen(const QVector<SpielEintrag> &spiele, const std::array<QStringList, 8> &fuss);

    // Scene y of the bottom of the last game row drawn (the heading's bottom while empty).
    qreal zeilenUnten() const { return m_zeilenUnten; }

    // Labels of the eight footer rows, top to bottom.
    static const QStringList &fussBeschriftungen();

private:
    Q_DISABLE_COPY(Spielblatt)

    int spaltenAnzahl() const;
    qreal links(int spalte) const { return m_x.at(spalte); }
    qreal rechts(int spalte) const { return m_x.at(spalte + 1); }
    qreal breite(int spalte) const { return rechts(spalte) - links(spalte); }

    void layoutBerechnen();
    void gruppeZeichnen(int sitz, const BlattSpieler &spieler);
    // A vertical line from oben down to the last row, or through the footer.
    void senkrechteLinie(qreal x, qreal oben, bool durchDenFuss);
    void rahmenAnpassen(qreal zeilenEnde, qreal fussEnde);

    std::unique_ptr<QGraphicsScene> m_scene;
    int m_spieler;

    QFont m_kopfSchrift;    // header and rules block: the application font
    QFont m_ueberschrift;   // headings, pixel size 18
    QFont m_schmal;         // the same with stretch 62, for long headings and names
    QFont m_zeichenSchrift; // "+" and "-", pixel size 20
    QFont m_zellSchrift;    // cells and footer
    QFont m_kleinSchrift;   // "StartNr" and the round separators

    // Left edge of every column, and the right edge of the last one.
    QVector<qreal> m_x;
    qreal m_seitenBreite = 0;
    qreal m_seitenHoehe = 0;
    qreal m_gitterOben = 0; // top of the frame
    qreal m_kopfUnten = 0;  // bottom of the heading block, first game row
    qreal m_unterzeile = 0; // top of the "Platz"/"g"/"v" heading row
    qreal m_regelHoehe = 0; // height of the rules block
    qreal m_zeilenUnten = 0;

    QGraphicsSimpleTextItem *m_datum = nullptr;
    QGraphicsSimpleTextItem *m_serie = nullptr;
    QGraphicsSimpleTextItem *m_tisch = nullptr;
    QGraphicsRectItem *m_rahmen = nullptr;
    // Vertical lines, stretched to the last row (or through the footer) on refill.
    QVector<QGraphicsLineItem *> m_linienZeilen;
    QVector<QGraphicsLineItem *> m_linienDurch;
    QList<QGraphicsTextItem *> m_beschreibungen;

    // Everything zeilenFuellen draws hangs below these two: bands behind the
    // lines, texts and separators above them.
    QGraphicsItem *m_hintergrund = nullptr;
    QGraphicsItem *m_inhalt = nullptr;

    // The items of the last refill: the texts of each column from top to
    // bottom, the separators by round, the footer texts by row (label, then one
    // per seat). A refill rewrites them in place, so after an entry only the new
    // row and the totals are laid out again, and a deletion moves texts instead
    // of replacing them.
    struct Trenner
    {
        QGraphicsRectItem *band = nullptr;
        QGraphicsSimpleTextItem *text = nullptr;
    };
    QVector<QVector<QGraphicsSimpleTextItem *>> m_spaltenTexte;
    QVector<Trenner> m_trenner;
    std::array<QVector<QGraphicsSimpleTextItem *>, 8> m_fussTexte;
    QGraphicsLineItem *m_fussLinie = nullptr;
    QGraphicsRectItem *m_gesamtBand = nullptr;
    QGraphicsPathItem *m_zeilenLinien = nullptr;
};

// A text item on the scene turned by winkel degrees about the Z axis, placed
// at pos; the sheet writes its column headings with 270 (bottom to top).
QGraphicsTextItem *gedrehterText(QGraphicsScene *scene, const QString &text, const QFont &schrift,
                                 qreal winkel, const QPointF &pos);
