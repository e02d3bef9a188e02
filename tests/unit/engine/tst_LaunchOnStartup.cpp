#include "engine/LaunchOnStartup.h"
#include "engine/platform/AutostartEntry.h"
#include "tests/support/main/Main.h"

#include <QTest>

namespace
{

class MemoryEntry final : public AutostartEntry
{
    Q_DISABLE_COPY_MOVE(MemoryEntry)

public:
    MemoryEntry() = default;

    bool exists() const override { return !program.isNull(); }
    void write(const QString &path) override
    {
        if (writable) {
            program = path;
        }
    }
    void remove() override
    {
        if (writable) {
            program = QString();
        }
    }

    QString program;
    bool writable = true;
};

} // namespace

class tst_LaunchOnStartup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isOffWithoutAnEntry();
    void onRegistersTheProgramsOwnPath();
    void offTwiceLeavesNothing();
    void aFailureShowsInTheStateOnly();
};

void tst_LaunchOnStartup::isOffWithoutAnEntry()
{
    MemoryEntry entry;
    QVERIFY(!LaunchOnStartup(entry, QStringLiteral("/opt/a program")).isLaunchOnStartup());
}

void tst_LaunchOnStartup::onRegistersTheProgramsOwnPath()
{
    MemoryEntry entry;
    LaunchOnStartup launch(entry, QStringLiteral("/opt/a program"));
    launch.setLaunchOnStartup(true);
    launch.setLaunchOnStartup(true);
    QVERIFY(launch.isLaunchOnStartup());
    QCOMPARE(entry.program, QStringLiteral("/opt/a program"));
}

void tst_LaunchOnStartup::offTwiceLeavesNothing()
{
    MemoryEntry entry;
    LaunchOnStartup launch(entry, QStringLiteral("/opt/a program"));
    launch.setLaunchOnStartup(true);
    launch.setLaunchOnStartup(false);
    launch.setLaunchOnStartup(false);
    QVERIFY(!launch.isLaunchOnStartup());
}

void tst_LaunchOnStartup::aFailureShowsInTheStateOnly()
{
    MemoryEntry entry;
    entry.writable = false;
    LaunchOnStartup launch(entry, QStringLiteral("/opt/a program"));
    launch.setLaunchOnStartup(true);
    QVERIFY(!launch.isLaunchOnStartup());
}

QTEST_GUILESS_MAIN(tst_LaunchOnStartup)
#include "tst_LaunchOnStartup.moc"
