#include "app/Doctor.h"
#include "remote/RemoteMessage.h"
#include "tests/support/main/Main.h"

#include <QTest>

class tst_Doctor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eventsAndNamesAreLeftOut_data();
    void eventsAndNamesAreLeftOut();
    void theRunningCopysMappingIsLeftOut();
};

void tst_Doctor::eventsAndNamesAreLeftOut_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("told");
    const auto row = [](const char *name, const char *line, const char *told) {
        const QString day = QStringLiteral("2026-11-22 01:24:33.123 ");
        QTest::newRow(name) << day + QString::fromUtf8(line)
                            << (*told != 0 ? day + QString::fromUtf8(told) : QString());
    };
    row("what happened", "info veltrix.device: plugged", "info veltrix.device: plugged");
    row("what is wrong", "warning veltrix.device: failed to plugg Permission denied",
        "warning veltrix.device: failed to plugg Permission denied");
    row("a press", "debug veltrix.device: data: BP3", "");
    row("a mapping's name", "info veltrix.mapping: Save to XML: My secret: plan",
        "info veltrix.mapping: Save to XML:…");
    row("and where it was not saved",
        "warning veltrix.mapping: The mapping secret was not saved, the file /x is full",
        "warning veltrix.mapping: The mapping … was not saved, the file /x is full");
    row("what of a name cannot be written",
        "warning veltrix.mapping: Characters that a mapping file cannot carry were dropped: my secret",
        "warning veltrix.mapping: Characters that a mapping file cannot carry were dropped:…");
    row("a name in the dialog", "info veltrix.ui: saved Map: secret", "info veltrix.ui: saved Map:…");
    QTest::newRow("the rest of a line") << QStringLiteral("secret") << QString();
}

void tst_Doctor::eventsAndNamesAreLeftOut()
{
    QFETCH(QString, line);
    QFETCH(QString, told);
    QCOMPARE(Doctor::withoutSecrets({line}).join(QLatin1Char('\n')), told);
}

void tst_Doctor::theRunningCopysMappingIsLeftOut()
{
    const QStringList told = Doctor::runningCopy(
        {0, QStringLiteral("{\"connected\":true,\"layer\":\"Shift1\",\"mapping\":\"my secret\\nplan\","
                           "\"mode\":\"midi\"}")});
    QCOMPARE(told, QStringList({QStringLiteral("connected: true"), QStringLiteral("layer: Shift1"),
                                QStringLiteral("mode: midi")}));
    QCOMPARE(Doctor::runningCopy({3, QStringLiteral("None runs.")}),
             QStringList{QStringLiteral("None runs.")});
}

QTEST_GUILESS_MAIN(tst_Doctor)
#include "tst_Doctor.moc"
