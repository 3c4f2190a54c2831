// The participants table's helpers: the yes/no editor of the flag columns and
// the proxy in front of the table, which must keep the seating order.

#include "helpers/testumgebung.h"
#include "players/combodelegate.h"
#include "players/mysortfilterproxymodel.h"

#include <QComboBox>
#include <QStandardItemModel>
#include <QStyleOptionViewItem>
#include <QTableView>

#include <memory>

namespace {

// Participants in seating order, deliberately not in alphabetical order.
std::unique_ptr<QStandardItemModel> teilnehmer()
{
    const QStringList namen{"Zoe Zander", "anna alt", "Bernd", "ANNE Berg"};
    auto model = std::make_unique<QStandardItemModel>(namen.size(), 4);
    for (int zeile = 0; zeile < namen.size(); ++zeile) {
        model->setData(model->index(zeile, 0), zeile + 1);
        model->setData(model->index(zeile, 1), namen.at(zeile));
        model->setData(model->index(zeile, 2), QStringLiteral("Nein"));
        model->setData(model->index(zeile, 3), QStringLiteral("Ja"));
    }
    return model;
}

QStringList namen(const QAbstractItemModel &model)
{
    QStringList liste;
    for (int zeile = 0; zeile < model.rowCount(); ++zeile)
        liste.append(model.index(zeile, 1).data().toString());
    return liste;
}

std::unique_ptr<QComboBox> editor(const ComboDelegate &delegate, const QModelIndex &index)
{
    QWidget *widget = delegate.createEditor(nullptr, QStyleOptionViewItem(), index);
    return std::unique_ptr<QComboBox>(qobject_cast<QComboBox *>(widget));
}

} // namespace

class TstComboDelegate : public QObject
{
    Q_OBJECT

private slots:
    void editorEintraege();
    void editorAuswahl_data();
    void editorAuswahl();
    void editorDaten_data();
    void editorDaten();
    void modellDaten_data();
    void modellDaten();
    void bearbeitenInTabelle();
    void geometrie();

    void proxySortiertNicht();
    void proxyFilter_data();
    void proxyFilter();
    void proxyFilterZuruecksetzen();
};

void TstComboDelegate::editorEintraege()
{
    QStandardItemModel model(1, 1);
    ComboDelegate delegate;
    const auto combo = editor(delegate, model.index(0, 0));
    QVERIFY(combo);
    QCOMPARE(combo->count(), 2);
    QCOMPARE(combo->itemText(0), QStringLiteral("Ja"));
    QCOMPARE(combo->itemData(0), QVariant(true));
    QCOMPARE(combo->itemText(1), QStringLiteral("Nein"));
    QCOMPARE(combo->itemData(1), QVariant(false));
}

void TstComboDelegate::editorAuswahl_data()
{
    QTest::addColumn<QVariant>("wert");
    QTest::addColumn<QString>("auswahl");
    QTest::newRow("true") << QVariant(true) << "Ja";
    QTest::newRow("false") << QVariant(false) << "Nein";
    QTest::newRow("1") << QVariant(1) << "Ja";
    QTest::newRow("0") << QVariant(0) << "Nein";
}

void TstComboDelegate::editorAuswahl()
{
    QFETCH(QVariant, wert);
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), wert, Qt::EditRole);
    ComboDelegate delegate;
    const auto combo = editor(delegate, model.index(0, 0));
    QVERIFY(combo);
    QTEST(combo->currentText(), "auswahl");
}

void TstComboDelegate::editorDaten_data()
{
    QTest::addColumn<QVariant>("wert");
    QTest::addColumn<int>("vorher");
    QTest::addColumn<QString>("auswahl");
    QTest::newRow("Ja") << QVariant(QStringLiteral("Ja")) << 1 << "Ja";
    QTest::newRow("Nein") << QVariant(QStringLiteral("Nein")) << 0 << "Nein";
    // Flags written as numbers or bools by older lists have no matching text.
    QTest::newRow("true") << QVariant(true) << 1 << "Ja";
    QTest::newRow("false") << QVariant(false) << 0 << "Nein";
    QTest::newRow("1") << QVariant(1) << 1 << "Ja";
    QTest::newRow("0") << QVariant(0) << 0 << "Nein";
}

void TstComboDelegate::editorDaten()
{
    QFETCH(QVariant, wert);
    QFETCH(int, vorher);
    QStandardItemModel model(1, 1);
    ComboDelegate delegate;
    const auto combo = editor(delegate, model.index(0, 0));
    QVERIFY(combo);
    combo->setCurrentIndex(vorher);

    model.setData(model.index(0, 0), wert, Qt::EditRole);
    delegate.setEditorData(combo.get(), model.index(0, 0));
    QTEST(combo->currentText(), "auswahl");
}

void TstComboDelegate::modellDaten_data()
{
    QTest::addColumn<QString>("vorher");
    QTest::addColumn<int>("gewaehlt");
    QTest::addColumn<QString>("nachher");
    QTest::newRow("Nein zu Ja") << "Nein" << 0 << "Ja";
    QTest::newRow("Ja zu Nein") << "Ja" << 1 << "Nein";
    QTest::newRow("Ja bleibt") << "Ja" << 0 << "Ja";
}

void TstComboDelegate::modellDaten()
{
    QFETCH(QString, vorher);
    QFETCH(int, gewaehlt);
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), vorher);
    ComboDelegate delegate;
    const auto combo = editor(delegate, model.index(0, 0));
    QVERIFY(combo);
    delegate.setEditorData(combo.get(), model.index(0, 0));
    QCOMPARE(combo->currentText(), vorher);

    combo->setCurrentIndex(gewaehlt);
    delegate.setModelData(combo.get(), &model, model.index(0, 0));
    const QVariant wert = model.index(0, 0).data(Qt::EditRole);
    // The text is stored, not the bool the entry carries.
    QCOMPARE(wert.userType(), static_cast<int>(QMetaType::QString));
    QTEST(wert.toString(), "nachher");
}

void TstComboDelegate::bearbeitenInTabelle()
{
    const auto model = teilnehmer();
    QTableView view;
    ComboDelegate delegate;
    view.setItemDelegateForColumn(2, &delegate);
    view.setModel(model.get());
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));

    const QModelIndex zelle = model->index(1, 2);
    view.edit(zelle);
    auto *combo = view.viewport()->findChild<QComboBox *>();
    QVERIFY(combo);
    QCOMPARE(combo->currentText(), QStringLiteral("Nein"));

    combo->setCurrentIndex(combo->findText(QStringLiteral("Ja")));
    emit delegate.commitData(combo);
    QCOMPARE(zelle.data().toString(), QStringLiteral("Ja"));
    // The other rows keep their flag.
    QCOMPARE(model->index(0, 2).data().toString(), QStringLiteral("Nein"));
    QCOMPARE(model->index(2, 2).data().toString(), QStringLiteral("Nein"));
}

void TstComboDelegate::geometrie()
{
    QStandardItemModel model(1, 1);
    ComboDelegate delegate;
    const auto combo = editor(delegate, model.index(0, 0));
    QVERIFY(combo);
    QStyleOptionViewItem option;
    option.rect = QRect(13, 27, 90, 31);
    delegate.updateEditorGeometry(combo.get(), option, model.index(0, 0));
    QCOMPARE(combo->geometry(), option.rect);
}

void TstComboDelegate::proxySortiertNicht()
{
    const auto model = teilnehmer();
    const QStringList sitzordnung = namen(*model);
    MySortFilterProxyModel proxy;
    proxy.setSourceModel(model.get());
    QTableView view;
    view.setModel(&proxy);

    QCOMPARE(proxy.sortColumn(), -1);
    QVERIFY(!proxy.dynamicSortFilter());
    QCOMPARE(proxy.namensFilter(), QString());
    QCOMPARE(namen(proxy), sitzordnung);
    for (int zeile = 0; zeile < proxy.rowCount(); ++zeile)
        QCOMPARE(proxy.mapToSource(proxy.index(zeile, 1)).row(), zeile);

    // Renaming the last participant to a name that sorts first moves nothing.
    model->setData(model->index(3, 1), QStringLiteral("Aaron Alt"));
    QCOMPARE(namen(proxy),
             QStringList({"Zoe Zander", "anna alt", "Bernd", QStringLiteral("Aaron Alt")}));

    // A new participant takes the last seat.
    model->appendRow({new QStandardItem(QStringLiteral("5")), new QStandardItem("Adam")});
    QCOMPARE(namen(proxy).last(), QStringLiteral("Adam"));
    QCOMPARE(proxy.rowCount(), 5);
}

void TstComboDelegate::proxyFilter_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QStringList>("sichtbar");
    QTest::newRow("leer") << "" << QStringList{"Zoe Zander", "anna alt", "Bernd", "ANNE Berg"};
    QTest::newRow("klein") << "ann" << QStringList{"anna alt", "ANNE Berg"};
    QTest::newRow("gross") << "ANN" << QStringList{"anna alt", "ANNE Berg"};
    QTest::newRow("Wortmitte") << "ER" << QStringList{"Zoe Zander", "Bernd", "ANNE Berg"};
    QTest::newRow("ganzer Name") << "zoe zander" << QStringList{"Zoe Zander"};
    QTest::newRow("kein Treffer") << "Xaver" << QStringList();
    QTest::newRow("nur Flagspalte") << "Nein" << QStringList();
    QTest::newRow("nur Nummernspalte") << "3" << QStringList();
    QTest::newRow("kein Muster") << ".*" << QStringList();
}

void TstComboDelegate::proxyFilter()
{
    QFETCH(QString, filter);
    const auto model = teilnehmer();
    MySortFilterProxyModel proxy;
    proxy.setSourceModel(model.get());
    proxy.setNamensFilter(filter);
    QCOMPARE(proxy.namensFilter(), filter);
    QTEST(namen(proxy), "sichtbar");
}

void TstComboDelegate::proxyFilterZuruecksetzen()
{
    const auto model = teilnehmer();
    MySortFilterProxyModel proxy;
    proxy.setSourceModel(model.get());
    proxy.setNamensFilter(QStringLiteral("ann"));
    QCOMPARE(proxy.rowCount(), 2);
    QCOMPARE(proxy.mapToSource(proxy.index(1, 1)).row(), 3);
    proxy.setNamensFilter(QString());
    QCOMPARE(namen(proxy), namen(*model));
}

KARTULO_TEST_MAIN(TstComboDelegate)
#include "tst_combodelegate.moc"
