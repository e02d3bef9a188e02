#include "engine/KnobSettings.h"
#include "engine/Settings.h"
#include "tests/support/main/Main.h"

#include <QTemporaryDir>
#include <QTest>

class tst_KnobSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void missingValuesReadAsOne();
    void storedValuesAreRead();
    void anotherValueTakesTheStoredOnesPlace();
    void brokenValuesReadAsTheNearest_data();
    void brokenValuesReadAsTheNearest();
    void aNewValueIsOnTheDiskAtOnceAndComesBack();
    void aNewValueOutOfRangeDividesByTheNearest();
    void eachLayerHasItsDivisor();

private:
    QString path() const { return m_directory->filePath(QStringLiteral("store.ini")); }
    void write(const QString &key, const QVariant &value) { Settings(path()).setValue(key, value); }

    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_KnobSettings::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void tst_KnobSettings::missingValuesReadAsOne()
{
    Settings stored(path());
    const KnobSettings settings(stored);
    QCOMPARE(settings.sensitivityNormal(), 1);
    QCOMPARE(settings.sensitivityShift1(), 1);
    QVERIFY(stored.allKeys().isEmpty()); // reading writes nothing
}

void tst_KnobSettings::storedValuesAreRead()
{
    write(QStringLiteral("Slider.Normal"), 80);
    write(QStringLiteral("Slider.Shift1"), 30);
    Settings stored(path());
    const KnobSettings settings(stored);
    QCOMPARE(settings.sensitivityNormal(), 80);
    QCOMPARE(settings.sensitivityShift1(), 30);
}

void tst_KnobSettings::anotherValueTakesTheStoredOnesPlace()
{
    write(QStringLiteral("Slider.Normal"), 80);
    write(QStringLiteral("Slider.Shift1"), 30);
    Settings stored(path());
    KnobSettings settings(stored);
    settings.setKnobSensitivityNormal(40);
    settings.setKnobSensitivityShift1(50);
    const Settings readAgain(path());
    QCOMPARE(readAgain.value(QStringLiteral("Slider.Normal")).toInt(), 40);
    QCOMPARE(readAgain.value(QStringLiteral("Slider.Shift1")).toInt(), 50);
}

void tst_KnobSettings::brokenValuesReadAsTheNearest_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<int>("read");
    QTest::newRow("text") << QVariant(QStringLiteral("fast")) << 1;
    QTest::newRow("empty") << QVariant(QString()) << 1;
    QTest::newRow("zero") << QVariant(0) << 1;
    QTest::newRow("negative") << QVariant(-5) << 1;
    QTest::newRow("too large") << QVariant(101) << 100;
    QTest::newRow("more than an int") << QVariant(QStringLiteral("99999999999")) << 100;
}

void tst_KnobSettings::brokenValuesReadAsTheNearest()
{
    QFETCH(QVariant, stored);
    QFETCH(int, read);
    write(QStringLiteral("Slider.Normal"), stored);
    write(QStringLiteral("Slider.Shift1"), stored);
    Settings store(path());
    const KnobSettings settings(store);
    QCOMPARE(settings.sensitivityNormal(), read);
    QCOMPARE(settings.sensitivityShift1(), read);
}

void tst_KnobSettings::aNewValueIsOnTheDiskAtOnceAndComesBack()
{
    Settings stored(path());
    KnobSettings settings(stored);
    settings.setKnobSensitivityNormal(80);
    settings.setKnobSensitivityShift1(20);
    QCOMPARE(settings.sensitivityNormal(), 80);
    QCOMPARE(settings.sensitivityShift1(), 20);
    QFile file(path());
    QVERIFY(file.open(QIODevice::ReadOnly)); // no event loop has run
    const QByteArray content = file.readAll();
    QVERIFY2(content.contains("Slider.Normal=80"), content.constData());
    QVERIFY2(content.contains("Slider.Shift1=20"), content.constData());

    Settings again(path());
    QCOMPARE(KnobSettings(again).sensitivityNormal(), 80);
}

void tst_KnobSettings::aNewValueOutOfRangeDividesByTheNearest()
{
    Settings stored(path());
    KnobSettings settings(stored);
    settings.setKnobSensitivityNormal(0);
    settings.setKnobSensitivityShift1(-3);
    QCOMPARE(settings.sensitivity(Layer::Normal), 1);
    QCOMPARE(settings.sensitivity(Layer::Shift1), 1);
    settings.setKnobSensitivityNormal(101);
    settings.setKnobSensitivityShift1(1000);
    QCOMPARE(settings.sensitivity(Layer::Normal), 100);
    QCOMPARE(settings.sensitivity(Layer::Shift1), 100);
}

void tst_KnobSettings::eachLayerHasItsDivisor()
{
    Settings stored(path());
    KnobSettings settings(stored);
    settings.setKnobSensitivityNormal(10);
    settings.setKnobSensitivityShift1(20);
    QCOMPARE(settings.sensitivity(Layer::Normal), 10);
    QCOMPARE(settings.sensitivity(Layer::Shift1), 20);
    QCOMPARE(settings.sensitivity(Layer::Shift2), 10);
}

QTEST_GUILESS_MAIN(tst_KnobSettings)
#include "tst_KnobSettings.moc"
