#include "tests/support/main/Main.h"
#include "tests/support/script/EngineRig.h"
#include "tests/support/script/ScriptParser.h"
#include "tests/support/script/SideBySide.h"

#include <QDir>
#include <QTest>

/// Every text script, in process against the recording backend.
class tst_scripts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void script_data();
    void script();
};

void tst_scripts::script_data()
{
    QTest::addColumn<QString>("path");
    const QDir folder(QStringLiteral(VELTRIX_TEST_SCRIPTS));
    const QStringList names = folder.entryList({QStringLiteral("*.t")}, QDir::Files, QDir::Name);
    QVERIFY2(!names.isEmpty(), VELTRIX_TEST_SCRIPTS);
    for (const QString &name : names) {
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
    }
}

void tst_scripts::script()
{
    QFETCH(QString, path);
    const ParsedScript parsed = readScript(path);
    QVERIFY2(parsed.isValid(), qPrintable(parsed.mistake));
    const QString difference = sideBySide(parsed.script.expected, EngineRig::run(parsed.script));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_GUILESS_MAIN(tst_scripts)
#include "tst_scripts.moc"
