#include "app/sheets/verlaufsteuerung.h"

#include "app/sheets/pdfexport.h"
#include "core/service/einstellungen.h"
#include "core/service/listendienst.h"
#include "core/standings/spielmodus.h"
#include "core/standings/spielstand.h"

#include <QGraphicsLayout>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QSaveFile>
#include <QtCharts/QChartView>
#include <QtCharts/QLineSeries>
#include <QtCharts/QValueAxis>

#include <algorithm>

using namespace QtCharts;

namespace {

// Dark enough on white paper and bright enough on a washed-out projector.
const QColor Farben[] = {QColor(0x00, 0x5a, 0xb5), QColor(0xdc, 0x32, 0x20),
                         QColor(0x1a, 0x85, 0x1a), QColor(0x8e, 0x3c, 0xb0)};

// Every point costs when a line is laid out, so a long evening is drawn with
// at most two points per run of games (its lowest and highest score, in their
// order), a run being narrower than a pixel or two; the inner points of a
// level stretch, where a seat's score stays in most games, are left out.
QVector<QPointF> linienPunkte(const QVector<Stand> &staende, int sitz)
{
    const int n = staende.size();
    const auto wert = [&](int spiel) { return staende.at(spiel)[static_cast<size_t>(sitz)]; };
    const int lauf = std::max(1, (n + 149) / 150);
    QVector<QPointF> punkte;
    const auto anhaengen = [&](int spiel) {
        const int k = punkte.size();
        if (k > 0 && punkte.at(k - 1).x() == spiel + 1)
            return;
        if (k >= 2 && punkte.at(k - 1).y() == wert(spiel) && punkte.at(k - 2).y() == wert(spiel))
            punkte[k - 1].setX(spiel + 1);
        else
            punkte.append(QPointF(spiel + 1, wert(spiel)));
    };
    for (int anfang = 0; anfang < n; anfang += lauf) {
        const int ende = std::min(n, anfang + lauf);
        int tief = anfang;
        int hoch = anfang;
        for (int spiel = anfang; spiel < ende; ++spiel) {
            tief = wert(spiel) < wert(tief) ? spiel : tief;
            hoch = wert(spiel) > wert(hoch) ? spiel : hoch;
        }
        if (anfang == 0)
            anhaengen(0);
        anhaengen(std::min(tief, hoch));
        anhaengen(std::max(tief, hoch));
    }
    if (n > 0)
        anhaengen(n - 1);
    return punkte;
}

} // namespace

VerlaufSteuerung::VerlaufSteuerung(QObject *parent, ListenDienst &dienst,
                                   const Einstellungen &einstellungen)
    : QObject(parent), m_dienst(dienst), m_einstellungen(einstellungen), m_anzeige(new QWidget),
      m_chart(new QChart), m_achseX(new QValueAxis), m_achseY(new QValueAxis)
{
    m_ansicht = new QChartView(m_chart, m_anzeige);
    m_ansicht->setObjectName(QStringLiteral("chartSpielverlauf"));
    m_ansicht->setRenderHint(QPainter::Antialiasing);
    // Redrawn after every game: the view keeps no state it does not need.
    m_ansicht->setOptimizationFlags(QGraphicsView::DontSavePainterState |
                                    QGraphicsView::DontAdjustForAntialiasing);
    m_ansicht->scene()->setItemIndexMethod(QGraphicsScene::NoIndex);
    m_ansicht->setMinimumHeight(150);
    m_chart->setMargins(QMargins(4, 0, 4, 0));
    m_chart->layout()->setContentsMargins(0, 0, 0, 0);
    m_chart->setBackgroundRoundness(0);
    // One row of names above the lines: height is what a tablet lacks.
    m_chart->legend()->setAlignment(Qt::AlignTop);
    m_achseX->setLabelFormat(QStringLiteral("%d"));
    m_achseY->setLabelFormat(QStringLiteral("%d"));
    m_achseY->setTickCount(3);
    m_chart->addAxis(m_achseX, Qt::AlignBottom);
    m_chart->addAxis(m_achseY, Qt::AlignLeft);
    for (const QColor &farbe : Farben) {
        auto *linie = new QLineSeries(m_chart);
        linie->setPen(QPen(farbe, 3));
        m_chart->addSeries(linie);
        linie->attachAxis(m_achseX);
        linie->attachAxis(m_achseY);
        m_linien.append(linie);
    }
    auto *knopf = new QPushButton(QStringLiteral("Verlauf speichern"), m_anzeige);
    knopf->setObjectName(QStringLiteral("pbVerlaufSpeichern"));
    connect(knopf, &QPushButton::clicked, this, &VerlaufSteuerung::verlaufSpeichern);
    auto *layout = new QHBoxLayout(m_anzeige);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_ansicht, 1);
    layout->addWidget(knopf, 0, Qt::AlignBottom);
    connect(&m_dienst, &ListenDienst::geaendert, this, &VerlaufSteuerung::listeGeaendert);
    m_ansicht->installEventFilter(this);
}

VerlaufSteuerung::~VerlaufSteuerung() = default;

void VerlaufSteuerung::listeGeaendert(const ListenAenderung &aenderung)
{
    if (aenderung.art == ListenAenderung::Register)
        return;
    // Drawn when seen: entering games on the panel costs the chart nothing.
    m_veraltet = true;
    if (m_ansicht->isVisible())
        aktualisieren();
}

bool VerlaufSteuerung::eventFilter(QObject *objekt, QEvent *ereignis)
{
    if (ereignis->type() == QEvent::Show && m_veraltet)
        aktualisieren();
    else if (ereignis->type() == QEvent::FontChange)
        schriftSetzen();
    return QObject::eventFilter(objekt, ereignis);
}

void VerlaufSteuerung::schriftSetzen()
{
    // The names in the window's font, which is larger on a tablet; the numbers a
    // little smaller, so three of them fit the height the table leaves.
    const QFont schrift = m_ansicht->font();
    if (schrift == m_schrift)
        return;
    m_schrift = schrift;
    QFont zahlen = schrift;
    zahlen.setPointSizeF(QFontInfo(schrift).pointSizeF() * 0.8);
    m_chart->legend()->setFont(schrift);
    m_achseX->setLabelsFont(zahlen);
    m_achseY->setLabelsFont(zahlen);
}

void VerlaufSteuerung::aktualisieren()
{
    m_veraltet = false;
    schriftSetzen();
    const ListenKopf &kopf = m_dienst.kopf();
    const int spieler = m_dienst.listenTyp();
    const QVector<Stand> staende =
        kopf.modus == Spielmodus::Bierlachs
            ? Bierlachs::verlauf(m_dienst.spiele(), spieler, kopf.blPunkte)
            : Spielstand::verlauf(m_dienst.spiele(), spieler,
                                  m_einstellungen.fabianFuer(kopf.modus),
                                  m_einstellungen.fabianFaktoren());
    int unten = 0;
    int oben = 0;
    for (int sitz = 0; sitz < m_linien.size(); ++sitz) {
        QLineSeries *linie = m_linien.at(sitz);
        if (linie->isVisible() != (sitz < spieler))
            linie->setVisible(sitz < spieler);
        if (linie->name() != m_dienst.teilnehmerName(sitz))
            linie->setName(m_dienst.teilnehmerName(sitz));
        linie->replace(linienPunkte(staende, sitz));
        for (const Stand &stand : staende) {
            if (sitz < spieler) {
                unten = std::min(unten, stand[static_cast<size_t>(sitz)]);
                oben = std::max(oben, stand[static_cast<size_t>(sitz)]);
            }
        }
    }
    m_achseX->setRange(1, std::max(2, staende.size()));
    m_achseX->setTickCount(std::min(11, std::max(2, staende.size())));
    const int rand = std::max(10, (oben - unten) / 20);
    m_achseY->setRange(unten - rand, oben + rand);
}

QString VerlaufSteuerung::speichern(const QString &pfad) const
{
    QSaveFile datei(pfad);
    if (!datei.open(QIODevice::WriteOnly))
        return datei.errorString();
    if (!m_ansicht->grab().save(&datei, "PNG")) {
        datei.cancelWriting();
        return QStringLiteral("Das Bild konnte nicht erzeugt werden.");
    }
    if (!datei.commit())
        return datei.errorString();
    return QString();
}

void VerlaufSteuerung::verlaufSpeichern()
{
    const ListenKopf &kopf = m_dienst.kopf();
    QString name = pdfDateiName(kopf.datum, kopf.serie, kopf.tischNr);
    name.replace(QLatin1String(".pdf"), QLatin1String("_Verlauf.png"));
    const QString pfad = QStringLiteral("%1/%2").arg(m_dienst.datenVerzeichnis(), name);
    if (const QString grund = speichern(pfad); !grund.isEmpty()) {
        QMessageBox::warning(
            m_anzeige, QStringLiteral("WARNUNG"),
            QStringLiteral("Die Datei\n%1\nkann nicht geschrieben werden:\n%2").arg(pfad, grund));
        return;
    }
    QMessageBox::information(m_anzeige, QStringLiteral("INFO"),
                             QStringLiteral("Datei %1 abgespeichert!").arg(pfad));
}
