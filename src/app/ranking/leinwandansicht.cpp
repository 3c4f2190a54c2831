#include "app/ranking/leinwandansicht.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

namespace {

// Points decide the order; the model holds them as text. The rows are
// numbered by place, and the page's table colours, made for dark text on a
// light page, give way to the projector's own.
class NachPunkten : public QSortFilterProxyModel
{
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role == Qt::BackgroundRole || role == Qt::ForegroundRole)
            return QVariant();
        if (role == Qt::TextAlignmentRole) {
            const int quelle = QSortFilterProxyModel::data(index, role).toInt();
            return int((quelle & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter);
        }
        return QSortFilterProxyModel::data(index, role);
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation == Qt::Vertical && role == Qt::DisplayRole)
            return section + 1;
        return QSortFilterProxyModel::headerData(section, orientation, role);
    }

protected:
    bool lessThan(const QModelIndex &links, const QModelIndex &rechts) const override
    {
        return links.data().toString().toInt() < rechts.data().toString().toInt();
    }
};

} // namespace

LeinwandAnsicht::LeinwandAnsicht(QAbstractItemModel *modell, QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("leinwand"));
    setWindowTitle(QStringLiteral("Rangliste"));
    setAttribute(Qt::WA_DeleteOnClose);
    setStyleSheet(QStringLiteral(
        "LeinwandAnsicht, QTableView { background: #10243a; color: white; "
        "alternate-background-color: #1b3553; } QLabel { color: white; } "
        "QPushButton { color: white; background: #2e4a66; border: 1px solid #ffd966; "
        "padding: 8px 24px; } "
        "QHeaderView, QHeaderView::section, QTableCornerButton::section { "
        "background: #10243a; color: #ffd966; "
        "border: none; }"));
    auto *nachPunkten = new NachPunkten(this);
    nachPunkten->setSourceModel(modell);
    nachPunkten->setDynamicSortFilter(true);
    nachPunkten->sort(3, Qt::DescendingOrder);

    m_titel = new QLabel(QStringLiteral("Rangliste"), this);
    m_titel->setAlignment(Qt::AlignCenter);
    m_tabelle = new QTableView(this);
    m_tabelle->setObjectName(QStringLiteral("tblLeinwand"));
    m_tabelle->setModel(nachPunkten);
    m_tabelle->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tabelle->setSelectionMode(QAbstractItemView::NoSelection);
    m_tabelle->setFocusPolicy(Qt::NoFocus);
    m_tabelle->setShowGrid(false);
    m_tabelle->setAlternatingRowColors(true);
    // Place, name, table, points, won, lost: the series, the costs and the
    // proposed seat are for the organiser's desk.
    for (int spalte : {2, 6, 7})
        m_tabelle->setColumnHidden(spalte, true);
    m_tabelle->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_tabelle->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_tabelle->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_tabelle->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    // A tablet has no Esc key.
    auto *schliessen = new QPushButton(QStringLiteral("Schliessen"), this);
    schliessen->setObjectName(QStringLiteral("pbLeinwandSchliessen"));
    schliessen->setFocusPolicy(Qt::NoFocus);
    connect(schliessen, &QPushButton::clicked, this, &QWidget::close);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(40, 20, 40, 20);
    layout->addWidget(m_titel);
    layout->addWidget(m_tabelle, 1);
    layout->addWidget(schliessen, 0, Qt::AlignRight);
    connect(nachPunkten, &QAbstractItemModel::rowsInserted, this,
            &LeinwandAnsicht::schriftAnpassen);
    connect(nachPunkten, &QAbstractItemModel::modelReset, this, &LeinwandAnsicht::schriftAnpassen);
    schriftAnpassen();
}

void LeinwandAnsicht::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

void LeinwandAnsicht::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    schriftAnpassen();
}

void LeinwandAnsicht::schriftAnpassen()
{
    // As large as the rows allow, never below what reads from the back of a room.
    const int zeilen = qMax(m_tabelle->model()->rowCount(), 8) + 2;
    const int pixel = qBound(28, height() / (zeilen + 2) * 6 / 10, 72);
    QFont schrift = font();
    schrift.setPixelSize(pixel);
    schrift.setBold(true);
    m_tabelle->setFont(schrift);
    // The style sheet decides the headers' type, so their size goes there too.
    const QString kopfSchrift =
        QStringLiteral("QHeaderView::section { font-size: %1px; font-weight: bold; }")
            .arg(pixel * 2 / 3);
    m_tabelle->horizontalHeader()->setStyleSheet(kopfSchrift);
    m_tabelle->verticalHeader()->setStyleSheet(kopfSchrift);
    schrift.setPixelSize(pixel * 3 / 2);
    m_titel->setFont(schrift);
}
