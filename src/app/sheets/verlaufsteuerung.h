#pragma once

// The chart of the evening under the overview: one line per seat, named by
// its player, with the score each had after every game (Seeger-Fabian points
// when the standings show them; in a Bierlachs evening the points left in
// the round, starting again each round). It follows every change of the list
// and of the settings, and saves itself as a PNG beside the sheet's PDF.

#include <QObject>
#include <QWidget>

namespace QtCharts {
class QChart;
class QChartView;
class QLineSeries;
class QValueAxis;
} // namespace QtCharts

class Einstellungen;
class ListenDienst;
struct ListenAenderung;

class VerlaufSteuerung : public QObject
{
    Q_OBJECT

public:
    VerlaufSteuerung(QObject *parent, ListenDienst &dienst, const Einstellungen &einstellungen);
    ~VerlaufSteuerung() override;

    // The chart with its button, for whoever lays it out.
    QWidget *anzeige() const { return m_anzeige; }
    // Draws the lines anew from the list.
    void aktualisieren();

protected:
    bool eventFilter(QObject *objekt, QEvent *ereignis) override;
    // "Verlauf speichern": the chart as a PNG beside the sheet's PDF.
    void verlaufSpeichern();

private:
    void listeGeaendert(const ListenAenderung &aenderung);
    void schriftSetzen();
    // Writes the chart as it is shown; the reason when it could not.
    QString speichern(const QString &pfad) const;

    ListenDienst &m_dienst;
    const Einstellungen &m_einstellungen;
    QWidget *m_anzeige;
    QtCharts::QChartView *m_ansicht;
    QtCharts::QChart *m_chart;
    QList<QtCharts::QLineSeries *> m_linien;
    QtCharts::QValueAxis *m_achseX;
    QtCharts::QValueAxis *m_achseY;
    QFont m_schrift;
    bool m_veraltet = true;
};
