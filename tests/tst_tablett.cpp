// The window on a scorer's tablet: the entry page whole at 1024x600 and 1280x800 with the
// touch font, the sheet read from its top, and money fields that keep numbers.

#include "app/sheets/pdfexport.h"
#include "helpers/faelle.h"
#include "helpers/fensterhilfe.h"

#include <QtWidgets>

using namespace Fenster;

namespace {

const QStringList LangeNamen{"Anna-Lena Schmidt", "Bernd Keller", "Clara Vogt",
                             "Dieter Brandt-Hoffmann"};

// Shown at the size a maximised window has on that screen.
void zeigen(MainWindow &fenster, const QSize &groesse)
{
    fenster.setWindowState(Qt::WindowNoState);
    fenster.resize(groesse);
    fenster.show();
    QVERIFY(QTest::qWaitForWindowExposed(&fenster));
    QCOMPARE(fenster.size(), groesse);
}

// What of the widget's text or content is cut off; empty when all is in view.
QString abgeschnitten(QWidget *w)
{
    const QString name = w->objectName();
    if (const int hoehe = w->minimumSizeHint().height(); w->height() < hoehe)
        return name + QStringLiteral(" %1 px hoch statt %2").arg(w->height()).arg(hoehe);
    const auto *knopf = qobject_cast<QAbstractButton *>(w);
    const auto *feld = qobject_cast<QLineEdit *>(w);
    const QString text = knopf ? knopf->text() : feld ? feld->text() : QString();
    // The frame and the text margins take 8 pixels of a field's width.
    const int breite = knopf  ? knopf->sizeHint().width()
                       : feld ? feld->fontMetrics().horizontalAdvance(text) + 8
                              : 0;
    if (w->width() >= breite)
        return QString();
    return name +
           QStringLiteral(" \"%1\" %2 px breit statt %3").arg(text).arg(w->width()).arg(breite);
}

} // namespace

class TstTablett : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestUmgebung::allesLoeschen(); }
    void allesZuSehen_data();
    void allesZuSehen();
    void blatt();
    void geldFelder_data();
    void geldFelder();
};

void TstTablett::allesZuSehen_data()
{
    Faelle::laden("tablett.tsv");
}

// The test screen is under 1000 pixels: touch font. Nothing on the entry page and tool bar is
// squeezed or cut, banner or not; the participants show whole names and both flags.
void TstTablett::allesZuSehen()
{
    QFETCH(int, breite);
    QFETCH(int, hoehe);
    QFETCH(bool, korrektur);
    // Long names and the first games of an evening.
    QStringList namen;
    for (int i = 0; i < LangeNamen.size(); ++i)
        namen << QStringLiteral("UPDATE Teilnehmer SET Name = '%1' WHERE MgldNr = %2")
                     .arg(LangeNamen.at(i))
                     .arg(i + 1);
    QVERIFY(mitSpielen(8, 0, namen));
    Probe fenster;
    QCOMPARE(fenster.font().pixelSize(), 20);
    QVERIFY(fenster.windowState() & Qt::WindowMaximized);
    zeigen(fenster, QSize(breite, hoehe));
    kind<QLineEdit>(&fenster, "leMeldungRot")->setText("Verbleibende Zeit 120 Minuten");
    if (korrektur)
        fenster.onUebersichtDoubleClicked(modell(&fenster, "tblViewUebersicht")->index(2, 0));
    else
        for (const char *knopf : {"tbSpieler2", "tbHand", "pbFertig"})
            klick(&fenster, knopf);
    // The description of the game is read from its start.
    auto *beschreibung = kind<QLineEdit>(&fenster, "leSpielBeschreibung");
    QVERIFY(korrektur || (!beschreibung->text().isEmpty() && beschreibung->cursorPosition() == 0));
    QCOMPARE(kind<QWidget>(&fenster, "gbKorrektur")->isVisible(), korrektur);
    seiteZeigen(&fenster, "tabSpieleintrag");

    QStringList fehler;
    QList<QWidget *> pruefen =
        kind<QWidget>(&fenster, "tabSpieleintrag")->findChildren<QWidget *>();
    pruefen += kind<QWidget>(&fenster, "toolBar")->findChildren<QWidget *>();
    int gezeigt = 0;
    for (QWidget *w : pruefen) {
        if (!w->isVisible() || w->objectName().isEmpty() || w->objectName().startsWith("qt_"))
            continue;
        ++gezeigt;
        if (const QString grund = abgeschnitten(w); !grund.isEmpty())
            fehler << grund;
    }
    QVERIFY(gezeigt > 40);
    // The standings are read before the first game is entered, too.
    for (const char *name : {"lePunkte1", "lePunkte4"}) {
        const QPalette farben = kind<QLineEdit>(&fenster, name)->palette();
        if (farben.color(QPalette::Disabled, QPalette::Text) != Qt::black ||
            farben.color(QPalette::Disabled, QPalette::Base) != Qt::white)
            fehler << QStringLiteral("%1 nicht schwarz auf weiss").arg(name);
    }
    auto *reiter = kind<QTabWidget>(&fenster, "tabWidget")->tabBar();
    for (int i = 0; i < reiter->count(); ++i)
        if (!reiter->rect().contains(reiter->tabRect(i)))
            fehler << "Reiter " + reiter->tabText(i);

    seiteZeigen(&fenster, "tabEinstellungen");
    auto *tabelle = kind<QTableView>(&fenster, "tblViewSpieler");
    QHeaderView *kopf = tabelle->horizontalHeader();
    if (kopf->length() > tabelle->viewport()->width())
        fehler << QStringLiteral("Teilnehmer %1 px breit, zu sehen %2")
                      .arg(kopf->length())
                      .arg(tabelle->viewport()->width());
    for (const QString &name : LangeNamen)
        if (kopf->sectionSize(1) < tabelle->fontMetrics().horizontalAdvance(name) + 8)
            fehler << "Teilnehmer " + name;
    QVERIFY2(fehler.isEmpty(), qPrintable(fehler.join("\n")));
}

// The sheet of a list begun at the table opens at its header and scrolls with the wheel, over
// its texts too; it follows each game entered and zooms about its top-left corner.
void TstTablett::blatt()
{
    Probe fenster;
    zeigen(fenster, QSize(1024, 600));
    neuSeite(&fenster, LangeNamen, "pbOk");
    klick(&fenster, "pbStartSpiel");
    seiteZeigen(&fenster, "tabSpieleListe");
    auto *ansicht = kind<QGraphicsView>(&fenster, "gvSpieleListe");
    const auto obenLinks = [ansicht] { return ansicht->mapToScene(0, 0); };
    QCOMPARE(obenLinks(), QPointF(0, 0));

    QGraphicsItem *name = nullptr;
    for (QGraphicsItem *item : ansicht->scene()->items())
        if (auto *text = dynamic_cast<QGraphicsTextItem *>(item);
            text && text->toPlainText().startsWith("Bernd"))
            name = text;
    QVERIFY(name);
    const QPoint ueberName = ansicht->mapFromScene(name->sceneBoundingRect().center());
    QWheelEvent rad(ueberName, ansicht->viewport()->mapToGlobal(ueberName), QPoint(),
                    QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(ansicht->viewport(), &rad);
    QVERIFY(obenLinks().y() > 0);

    // A finger (or the mouse) drags the sheet up.
    ansicht->verticalScrollBar()->setValue(0);
    QWidget *flaeche = ansicht->viewport();
    QPoint finger(flaeche->width() / 2, flaeche->height() - 20);
    QTest::mousePress(flaeche, Qt::LeftButton, Qt::NoModifier, finger);
    for (int schritt = 0; schritt < 10; ++schritt) {
        finger.ry() -= 30;
        QMouseEvent zug(QEvent::MouseMove, finger, flaeche->mapToGlobal(finger), Qt::NoButton,
                        Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(flaeche, &zug);
        QTest::qWait(10);
    }
    QTest::mouseRelease(flaeche, Qt::LeftButton, Qt::NoModifier, finger);
    QTRY_VERIFY(obenLinks().y() > 100);
    QScroller::scroller(ansicht)->stop();

    ansicht->verticalScrollBar()->setValue(0);
    for (int spiel = 0; spiel < 30; ++spiel)
        eingeben(&fenster, Spiel{"tbKreuz", (spiel + 1) % 4, true, ""});
    QGraphicsItem *nummer = nullptr;
    for (QGraphicsItem *item : ansicht->scene()->items())
        if (auto *text = dynamic_cast<QGraphicsSimpleTextItem *>(item);
            text && text->text() == "30" &&
            (!nummer || text->scenePos().x() < nummer->scenePos().x()))
            nummer = text;
    QVERIFY(nummer);
    const QRectF sichtbar = ansicht->mapToScene(ansicht->viewport()->rect()).boundingRect();
    QVERIFY(sichtbar.contains(nummer->sceneBoundingRect()));
    QCOMPARE(obenLinks().x(), 0.0);

    klick(&fenster, "pbVergroessern");
    const QPointF vorher = obenLinks();
    klick(&fenster, "pbVergroessern");
    QVERIFY2(QLineF(obenLinks(), vorher).length() < 1.0,
             qPrintable(QStringLiteral("%1 %2").arg(obenLinks().y()).arg(vorher.y())));
    // Smaller than the view, the sheet keeps to its left edge.
    for (int schritt = 0; schritt < 6; ++schritt)
        klick(&fenster, "pbVerkleinern");
    QCOMPARE(obenLinks().x(), 0.0);
    klick(&fenster, "pbVergroessern");
    QVERIFY(obenLinks().y() > 0);
    // The next list starts at the header again.
    kind<QAction>(&fenster, "actionNeu")->trigger();
    kind<QCheckBox>(&fenster, "chkSpielerBeibehalten")->setChecked(true);
    klick(&fenster, "pbOk");
    klick(&fenster, "pbStartSpiel");
    QCOMPARE(obenLinks(), QPointF(0, 0));

    // Drawn as onto the PDF's page: the frame spans the width whatever the zoom.
    QImage seite(595, 842, QImage::Format_RGB32);
    seite.fill(Qt::white);
    QPainter maler(&seite);
    blattZeichnen(ansicht, maler, seite.rect());
    maler.end();
    int links = seite.width(), rechts = -1;
    const int zeile = seite.height() / 10;
    for (int x = 0; x < seite.width(); ++x)
        if (qGray(seite.pixel(x, zeile)) < 128) {
            links = qMin(links, x);
            rechts = x;
        }
    QVERIFY2(links < seite.width() / 20 && rechts > seite.width() * 19 / 20,
             qPrintable(QStringLiteral("%1..%2").arg(links).arg(rechts)));
}

void TstTablett::geldFelder_data()
{
    Faelle::laden("geldfelder.tsv");
}

// Typed as a scorer types: a field left holds a valid number, shown and written with a
// point; anything else goes back, and the status bar says what the field takes.
void TstTablett::geldFelder()
{
    QFETCH(QString, feld);
    QFETCH(QString, eingabe);
    QFETCH(QString, danach);
    QFETCH(QString, attribut);
    QFETCH(QString, hinweis);
    Probe fenster(4);
    zeigen(fenster, QSize(1024, 600));
    QVERIFY(QTest::qWaitForWindowActive(&fenster));
    seiteZeigen(&fenster, "tabEinstellungen");
    auto *zeile = kind<QLineEdit>(&fenster, qPrintable(feld));
    zeile->setFocus();
    QVERIFY(zeile->hasFocus());
    zeile->selectAll();
    QTest::keyClick(zeile, Qt::Key_Backspace);
    QTest::keyClicks(zeile, eingabe);
    kind<QLineEdit>(&fenster, "leListenName")->setFocus();
    QCOMPARE(zeile->text(), danach);
    QVERIFY2(hinweis.isEmpty() ? !status(fenster).contains("moeglich")
                               : status(fenster).startsWith(hinweis),
             qPrintable(status(fenster)));

    fenster.onSicherheitsKopieSpeichern();
    QFile kopie(TestUmgebung::datenVerzeichnis() + "/xmlsicherheitskopie.xml");
    QVERIFY(kopie.open(QIODevice::ReadOnly));
    const QRegularExpression wert(QStringLiteral(" %1=\"([^\"]*)\"").arg(attribut));
    QCOMPARE(wert.match(QString::fromUtf8(kopie.readAll())).captured(1), danach);
}

KARTULO_TEST_MAIN(TstTablett)
#include "tst_tablett.moc"
