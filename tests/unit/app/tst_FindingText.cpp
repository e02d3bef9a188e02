#include "app/FindingText.h"
#include "device/DeviceSearch.h"
#include "tests/support/main/Main.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

using Kind = DeviceFinding::Kind;

Q_DECLARE_METATYPE(DeviceFinding)

class tst_FindingText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void saysWhatToDo_data();
    void saysWhatToDo();
    void leadsToAHeadingOfTheGuide_data();
    void leadsToAHeadingOfTheGuide();
};

void tst_FindingText::saysWhatToDo_data()
{
    QTest::addColumn<DeviceFinding>("finding");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("problem");
    const QString port = QStringLiteral("/dev/ttyACM0");
    const auto row = [](const char *name, const DeviceFinding &finding, const char *text, bool problem) {
        QTest::newRow(name) << finding << QString::fromLatin1(text) << problem;
    };
    row("not looked", {}, "", false);
    row("nothing", {Kind::Nothing, {}, {}, {}},
        "No device is plugged in. The panel opens by itself as soon as the device is found.", false);
    row("named", {Kind::NamedMissing, QStringLiteral("/dev/x"), {}, {}},
        "/dev/x, which was named as the device's port, is not there", true);
    row("other", {Kind::Other, port, {}, {}}, "/dev/ttyACM0 is there, but it is not the control surface",
        true);
    row("other, named", {Kind::Other, port, QStringLiteral("Modem"), {}},
        "/dev/ttyACM0 (Modem) is there, but it is not the control surface", true);
    row("forbidden", {Kind::Forbidden, port, {}, {}},
        "/dev/ttyACM0 is there, but this user may not open it: install the package's rule or join the group "
        "dialout",
        true);
    row("forbidden, another group", {Kind::Forbidden, port, QStringLiteral("uucp"), {}},
        "/dev/ttyACM0 is there, but this user may not open it: install the package's rule or join the group "
        "uucp",
        true);
    row("held", {Kind::Held, port, {}, {}},
        "/dev/ttyACM0 is there, but another program holds it: close that program", true);
    row("held by", {Kind::Held, port, {}, {17, QStringLiteral("minicom")}},
        "/dev/ttyACM0 is there, but minicom holds it: close that program", true);
    row("refused", {Kind::Refused, port, QStringLiteral("Input/output error"), {}},
        "/dev/ttyACM0 is there, but cannot be opened: Input/output error", true);
    row("vanishing", {Kind::Vanishing, {}, {}, {}},
        "The device comes and goes: try another cable, or another socket without a hub", true);
    row("open", {Kind::Open, port, {}, {}}, "The device is there: /dev/ttyACM0", false);
}

void tst_FindingText::saysWhatToDo()
{
    QFETCH(DeviceFinding, finding);
    QFETCH(QString, text);
    QFETCH(bool, problem);
    QCOMPARE(FindingText::sentence(finding), text);
    QCOMPARE(FindingText::isProblem(finding), problem);
}

void tst_FindingText::leadsToAHeadingOfTheGuide_data()
{
    saysWhatToDo_data();
}

void tst_FindingText::leadsToAHeadingOfTheGuide()
{
    QFETCH(DeviceFinding, finding);
    QFile chapter(QStringLiteral(GUIDE "/troubleshooting.md"));
    QVERIFY(chapter.open(QIODevice::ReadOnly));
    QStringList headings;
    for (const QString &line : QString::fromUtf8(chapter.readAll()).split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1Char('#'))) {
            // As the guide's pages name them.
            headings << line.toLower()
                            .remove(QRegularExpression(QStringLiteral("^#+ |[^a-z0-9 -]")))
                            .replace(QLatin1Char(' '), QLatin1Char('-'));
        }
    }
    QVERIFY2(headings.contains(FindingText::section(finding)), qPrintable(headings.join(QLatin1Char('\n'))));
}

QTEST_GUILESS_MAIN(tst_FindingText)
#include "tst_FindingText.moc"
