#pragma once

// The bid dock: one button per legal Skat bid value and "Abbruch", so that the
// scorer can tap the bid instead of typing it. It only reports the choice; the
// main window places the dock, fills the bid field and closes the dock again.

#include <QDockWidget>
#include <QVector>

class QButtonGroup;
class QGridLayout;

class DockReizung : public QDockWidget
{
    Q_OBJECT

public:
    explicit DockReizung(QWidget *parent = nullptr);

    // The 63 legal bid values up to 264 in ascending order, then 0 for "Abbruch".
    static const QVector<int> &reizWerte();

    // Buttons per grid row: five full rows and a short sixth one.
    static constexpr int spaltenProZeile = 12;

signals:
    // The chosen bid value; 0 means "Abbruch".
    void reizWertSelected(int wert);

public slots:
    void onButtonClicked(int id);

private:
    QButtonGroup *m_buttonGroup;
    QGridLayout *m_layout;
};
