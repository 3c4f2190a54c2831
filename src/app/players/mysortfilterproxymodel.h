#pragma once

// Sits between the participants model and its table view. The row order of
// the participants is the seating order, which decides the dealer, so the
// proxy never sorts on its own; it only offers a name filter, empty (showing
// everyone) by default.

#include <QSortFilterProxyModel>

class MySortFilterProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    // Column of the player name in the participants model.
    static constexpr int namensSpalte = 1;

    explicit MySortFilterProxyModel(QObject *parent = nullptr);

    // Shows only the rows whose name contains the text, ignoring case; an
    // empty text shows all rows.
    void setNamensFilter(const QString &text);
    QString namensFilter() const { return m_namensFilter; }

private:
    QString m_namensFilter;
};
