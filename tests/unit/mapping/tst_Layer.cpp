#include "mapping/ActionTable.h"
#include "tests/support/main/Main.h"

#include <QTest>

class tst_Layer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachLayerHasItsNumberAndNames();
    void whatIsNoLayerGivesNone();
    void valuesAreKeptApart();
    void aTableKnowsItsControls();
};

void tst_Layer::eachLayerHasItsNumberAndNames()
{
    const struct {
        Layer layer;
        int number;
        const char *file;
        const char *settings;
        const char *shown;
    } rows[] = {
        {Layer::Normal, 0, "NORMAL", "Normal", "Normal"},
        {Layer::Shift1, 1, "SHIFT1", "Shift1", "Shift 1"},
        {Layer::Shift2, 2, "SHIFT2", "Shift2", "Shift 2"},
    };
    QCOMPARE(std::size(rows), Layers::all.size());
    for (const auto &row : rows) {
        QCOMPARE(Layers::all.at(static_cast<std::size_t>(row.number)), row.layer);
        QCOMPARE(Layers::number(row.layer), row.number);
        QVERIFY(Layers::fromNumber(row.number) == row.layer);
        QCOMPARE(Layers::fileName(row.layer), QString::fromLatin1(row.file));
        QVERIFY(Layers::fromFileName(QString::fromLatin1(row.file)) == row.layer);
        QCOMPARE(Layers::settingsName(row.layer), QString::fromLatin1(row.settings));
        QCOMPARE(Layers::shownName(row.layer), QString::fromLatin1(row.shown));
    }
}

void tst_Layer::whatIsNoLayerGivesNone()
{
    for (const int number : {-1, 3, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        QVERIFY(!Layers::fromNumber(number));
    }
    for (const char *name : {"", "Normal", "normal", "SHIFT3", "SHIFT 1", " NORMAL"}) {
        QVERIFY(!Layers::fromFileName(QString::fromLatin1(name)));
    }
}

void tst_Layer::valuesAreKeptApart()
{
    PerLayer<int> values;
    QVERIFY(values == PerLayer<int>());
    for (const Layer layer : Layers::all) {
        QCOMPARE(values[layer], 0);
        values[layer] = 10 + Layers::number(layer);
    }
    QCOMPARE(std::vector<int>(values.begin(), values.end()), (std::vector<int>{10, 11, 12}));
    QVERIFY(values != PerLayer<int>());
}

void tst_Layer::aTableKnowsItsControls()
{
    QVERIFY(ActionTable::has(0) && ActionTable::has(9));
    QVERIFY(!ActionTable::has(-1) && !ActionTable::has(10));
    ActionTable table;
    QCOMPARE(std::distance(table.begin(), table.end()), std::ptrdiff_t(10));
    table[9][Layer::Shift2].knobcc = 3; // a field that no file keeps counts too
    QVERIFY(table != ActionTable());
    table[9][Layer::Shift2] = shortCut();
    QVERIFY(table == ActionTable());
}

QTEST_GUILESS_MAIN(tst_Layer)
#include "tst_Layer.moc"
