#include "engine/platform/linux/XdgAutostartEntry.h"
#include "tests/support/disk/FullDisk.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace
{

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void put(const QString &path, const QByteArray &contents)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(contents);
}

/// The program that a desktop starts for an Exec line, undone as desktops do it: first the escapes of a
/// string value, then the quotes, then the field codes. Null when the line names more than one argument or is
/// malformed.
QString programOf(const QString &value)
{
    QString line;
    for (int i = 0; i < value.size(); ++i) {
        if (value[i] != QLatin1Char('\\')) {
            line += value[i];
            continue;
        }
        const QChar escaped = value.at(++i);
        const int index = QStringLiteral("sntr\\").indexOf(escaped);
        if (index < 0) {
            return QString();
        }
        line += QStringLiteral(" \n\t\r\\").at(index);
    }
    if (line.size() < 2 || line[0] != QLatin1Char('"')) {
        return QString();
    }
    QString argument;
    int i = 1;
    for (; i < line.size() && line[i] != QLatin1Char('"'); ++i) {
        if (line[i] == QLatin1Char('\\')) {
            ++i;
        } else if (line[i] == QLatin1Char('`') || line[i] == QLatin1Char('$')) {
            return QString();
        }
        argument += line.at(i);
    }
    if (i != line.size() - 1) {
        return QString();
    }
    return argument.replace(QStringLiteral("%%"), QStringLiteral("%"));
}

} // namespace

class tst_XdgAutostartEntry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void programIsReadBackByADesktop_data();
    void programIsReadBackByADesktop();
    void plainPathIsQuoted();
    void entryIsWrittenReadAndRemoved();
    void turningOffTwiceLeavesNothingAndReportsNothing();
    void turningOnTwiceWritesOnce();
    void otherProgramReplacesTheEntry();
    void switchedOffEntryCountsAsAbsent_data();
    void switchedOffEntryCountsAsAbsent();
    void switchedOffEntryIsSwitchedOnByWriting();
    void danglingLinkIsRemoved();
    void folderThatCannotBeMadeIsLogged();
    void aFullDiskLeavesTheEntryAsItWas();
    void environmentNamesTheFolder();
};

void tst_XdgAutostartEntry::programIsReadBackByADesktop_data()
{
    QTest::addColumn<QString>("program");
    for (const char *program :
         {"/usr/bin/veltrix", "/opt/My Programs/veltrix", "/opt/100%/veltrix", "/opt/%f %%u/veltrix",
          "/opt/\"quoted\"/veltrix", "/opt/back\\slash/veltrix", "/opt/\\\\two/veltrix", "/opt/$HOME/veltrix",
          "/opt/`id`/veltrix", "/opt/a\nb\tc\rd/veltrix", "/opt/it's/veltrix", "/opt/Größe/veltrix",
          "/opt/~;&|<>*?#()/veltrix", "/opt/end\\"}) {
        const QString path = QString::fromUtf8(program);
        QTest::newRow(qPrintable(path.simplified())) << path;
    }
}

void tst_XdgAutostartEntry::programIsReadBackByADesktop()
{
    QFETCH(QString, program);
    QCOMPARE(programOf(XdgAutostartEntry::execValue(program)), program);
}

void tst_XdgAutostartEntry::plainPathIsQuoted()
{
    QCOMPARE(XdgAutostartEntry::execValue(QStringLiteral("/usr/bin/veltrix")),
             QStringLiteral("\"/usr/bin/veltrix\""));
    QCOMPARE(XdgAutostartEntry::execValue(QStringLiteral("/a$b")), QStringLiteral("\"/a\\\\$b\""));
    QCOMPARE(XdgAutostartEntry::execValue(QStringLiteral("/a\\b")), QStringLiteral("\"/a\\\\\\\\b\""));
}

void tst_XdgAutostartEntry::entryIsWrittenReadAndRemoved()
{
    const QTemporaryDir home;
    XdgAutostartEntry entry(home.filePath(QStringLiteral("new/autostart")));
    QVERIFY(!entry.exists());
    entry.write(QStringLiteral("/opt/My Programs/veltrix"));
    QVERIFY(entry.exists());
    const QList<QByteArray> lines = contentsOf(entry.path()).split('\n');
    QCOMPARE(lines.first(), QByteArray("[Desktop Entry]"));
    QVERIFY(lines.contains("Type=Application"));
    QVERIFY(lines.contains("Name=Veltrix"));
    QVERIFY(lines.contains("Exec=\"/opt/My Programs/veltrix\""));
    QCOMPARE(QDir(QFileInfo(entry.path()).path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    entry.remove();
    QVERIFY(!entry.exists());
    QVERIFY(!QFile::exists(entry.path()));
}

void tst_XdgAutostartEntry::turningOffTwiceLeavesNothingAndReportsNothing()
{
    const QTemporaryDir home;
    XdgAutostartEntry entry(home.path());
    LogCapture log;
    entry.write(QStringLiteral("/usr/bin/veltrix"));
    entry.remove();
    entry.remove();
    QVERIFY(QDir(home.path()).isEmpty());
    QCOMPARE(log.takeLines(), QStringList());
}

void tst_XdgAutostartEntry::turningOnTwiceWritesOnce()
{
    const QTemporaryDir home;
    XdgAutostartEntry entry(home.path());
    entry.write(QStringLiteral("/usr/bin/veltrix"));
    QFile file(entry.path());
    QVERIFY(file.open(QIODevice::ReadWrite));
    const QDateTime longAgo(QDate(2001, 2, 3), QTime(4, 5));
    QVERIFY(file.setFileTime(longAgo, QFileDevice::FileModificationTime));
    file.close();
    entry.write(QStringLiteral("/usr/bin/veltrix"));
    QCOMPARE(QFileInfo(entry.path()).lastModified(), longAgo);
}

void tst_XdgAutostartEntry::otherProgramReplacesTheEntry()
{
    const QTemporaryDir home;
    XdgAutostartEntry entry(home.path());
    entry.write(QStringLiteral("/old/veltrix"));
    entry.write(QStringLiteral("/new/veltrix"));
    QVERIFY(contentsOf(entry.path()).contains("Exec=\"/new/veltrix\"\n"));
    QVERIFY(!contentsOf(entry.path()).contains("/old/"));
}

void tst_XdgAutostartEntry::switchedOffEntryCountsAsAbsent_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<bool>("exists");
    QTest::newRow("hidden") << QByteArray("[Desktop Entry]\nExec=x\nHidden=true\n") << false;
    QTest::newRow("with blanks") << QByteArray("[Desktop Entry]\nHidden = true \n") << false;
    QTest::newRow("switched off in the session settings")
        << QByteArray("[Desktop Entry]\nX-GNOME-Autostart-enabled=false\n") << false;
    QTest::newRow("not hidden") << QByteArray("[Desktop Entry]\nExec=x\nHidden=false\n") << true;
    QTest::newRow("comment") << QByteArray("[Desktop Entry]\n#Hidden=true\n") << true;
    QTest::newRow("another group") << QByteArray("[Desktop Entry]\nExec=x\n[Desktop Action a]\nHidden=true\n")
                                   << true;
    QTest::newRow("cut to nothing") << QByteArray() << false;
    QTest::newRow("without a line's end") << QByteArray("[Desktop Entry]\nHidden=true") << false;
}

void tst_XdgAutostartEntry::switchedOffEntryCountsAsAbsent()
{
    QFETCH(QByteArray, contents);
    QFETCH(bool, exists);
    const QTemporaryDir home;
    const XdgAutostartEntry entry(home.path());
    put(entry.path(), contents);
    QCOMPARE(entry.exists(), exists);
}

void tst_XdgAutostartEntry::switchedOffEntryIsSwitchedOnByWriting()
{
    const QTemporaryDir home;
    XdgAutostartEntry entry(home.path());
    put(entry.path(), "[Desktop Entry]\nHidden=true\n");
    entry.write(QStringLiteral("/usr/bin/veltrix"));
    QVERIFY(entry.exists());
}

void tst_XdgAutostartEntry::danglingLinkIsRemoved()
{
    const QTemporaryDir home;
    XdgAutostartEntry entry(home.path());
    QVERIFY(QFile::link(home.filePath(QStringLiteral("gone")), entry.path()));
    QVERIFY(!entry.exists());
    entry.remove();
    QVERIFY(QDir(home.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).isEmpty());
}

void tst_XdgAutostartEntry::folderThatCannotBeMadeIsLogged()
{
    const QTemporaryDir home;
    put(home.filePath(QStringLiteral("file")), "in the way");
    XdgAutostartEntry entry(home.filePath(QStringLiteral("file/autostart")));
    LogCapture log;
    entry.write(QStringLiteral("/usr/bin/veltrix"));
    QVERIFY(!entry.exists());
    const QStringList lines = log.takeLines();
    QCOMPARE(lines.size(), 1);
    QVERIFY(
        lines.first().startsWith(QLatin1String("warning: cannot write the autostart entry ") + entry.path()));
}

void tst_XdgAutostartEntry::aFullDiskLeavesTheEntryAsItWas()
{
    const QTemporaryDir home;
    XdgAutostartEntry entry(home.path());
    entry.write(QStringLiteral("/old/veltrix"));
    const QByteArray before = contentsOf(entry.path());
    LogCapture log;
    {
        const FullDisk disk(0);
        entry.write(QStringLiteral("/new/veltrix"));
    }
    QCOMPARE(contentsOf(entry.path()), before);
    QCOMPARE(log.takeLines().filter(QStringLiteral("cannot write the autostart entry")).size(), 1);
    QCOMPARE(QDir(home.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

void tst_XdgAutostartEntry::environmentNamesTheFolder()
{
    qputenv("XDG_CONFIG_HOME", "/some/where");
    QCOMPARE(XdgAutostartEntry().path(), QStringLiteral("/some/where/autostart/veltrix.desktop"));
    qunsetenv("XDG_CONFIG_HOME");
    QCOMPARE(XdgAutostartEntry().path(),
             QDir::homePath() + QLatin1String("/.config/autostart/veltrix.desktop"));
}

QTEST_APPLESS_MAIN(tst_XdgAutostartEntry)

#include "tst_XdgAutostartEntry.moc"
