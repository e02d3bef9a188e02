#include "net/OSHelper.h"
#include "tests/platform/net/FileContent.h"
#include "tests/platform/net/UpdaterRig.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace
{

void writeProgram(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

// From the answer of the service to the process that runs after the program.
class tst_InstallerHandover : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void imageIsBelievedOnlyFromWithinItsFolder_data();
    void imageIsBelievedOnlyFromWithinItsFolder();
    void imageOfAnotherProgramIsNotReplaced();
    void init();
    void cleanup() { qputenv("PATH", m_path); }
    void windowsStartsTheInstaller();
    void windowsStartsTheInstallerInAPlaceThatTheInterpreterWouldMisread();
    void windowsRefusesAPlaceThatTheInterpreterWouldRead();
    void linuxReplacesTheProgram_data();
    void linuxReplacesTheProgram();
    void linuxLeavesWhatIsNoProgram_data();
    void linuxLeavesWhatIsNoProgram();
    void linuxLeavesTheInstallerWhereTheProgramCannotBeReplaced_data();
    void linuxLeavesTheInstallerWhereTheProgramCannotBeReplaced();
    void nothingIsStartedUnlessArmed();
    void installerIsStartedOnce();
    void macReplacesTheApplication_data();
    void macReplacesTheApplication();
    void scriptsArePartOfTheProgram();
    void failureToStartIsLogged();
    void argumentsStayWhole();
    void commandCharacters_data();
    void commandCharacters();
    void privateDirectory();
    void installerFileIsInAPlaceOfItsOwn();

private:
    void download(OSHelper::System system, const QByteArray &body);
    QString path(const char *name) const { return m_rig->dir.filePath(QString::fromLatin1(name)); }

    QByteArray m_path = qgetenv("PATH");
    std::unique_ptr<UpdaterRig> m_rig;
};

void tst_InstallerHandover::init()
{
    m_rig = std::make_unique<UpdaterRig>();
    writeProgram(path("application"), "the old program");
}

// Takes the offer in the window; the one listener has the installer started at quit.
void tst_InstallerHandover::download(OSHelper::System system, const QByteArray &body)
{
    ZRUpdater::Setup setup = m_rig->setup();
    setup.system = system;
    m_rig->build(setup);
    ZRUpdater *updater = m_rig->updater.get();
    connect(updater, &ZRUpdater::onDownloadComplete, updater, &ZRUpdater::install);
    m_rig->server.setAnswer("/installer", body);
    m_rig->setOffer("2", "LOW", m_rig->server.url("/installer"));
    m_rig->check();
    updater->onUpdateAllowed();
    QTRY_COMPARE(m_rig->quits, 1);
}

void tst_InstallerHandover::windowsStartsTheInstaller()
{
    // A stand-in for the interpreter that does what the real one does with these arguments.
    QVERIFY(QDir(m_rig->dir.path()).mkdir(QStringLiteral("bin")));
    writeProgram(path("bin/cmd"), "#!/bin/sh\necho \"$# $1\" > \"$OUT/arguments\"\nexec \"$2\"\n");
    qputenv("PATH", path("bin").toLocal8Bit() + ':' + m_path);
    qputenv("OUT", m_rig->dir.path().toLocal8Bit());
    download(OSHelper::System::Windows, "#!/bin/sh\necho installed > \"$OUT/result\"\n");
    QVERIFY(!QFile::exists(path("result")));

    const QString line = QStringLiteral("[Updater] running WinZRUpdater cmd (\"/C\", \"%1\")")
                             .arg(QDir::toNativeSeparators(m_rig->installer()));
    QTest::ignoreMessage(QtInfoMsg, qPrintable(line));
    m_rig->updater->aboutToQuit();
    QTRY_COMPARE(contentOf(path("result")), QByteArray("installed\n"));
    QCOMPARE(contentOf(path("arguments")), QByteArray("2 /C\n"));
}

void tst_InstallerHandover::windowsStartsTheInstallerInAPlaceThatTheInterpreterWouldMisread()
{
    QVERIFY(QDir(m_rig->dir.path()).mkpath(QStringLiteral("a user (100% & more)")));
    QVERIFY(QDir(m_rig->dir.path()).mkdir(QStringLiteral("bin")));
    writeProgram(path("bin/cmd"), "#!/bin/sh\necho \"$*\" > \"$OUT/arguments\"\nexec ./\"${2#.?}\"\n");
    qputenv("PATH", path("bin").toLocal8Bit() + ':' + m_path);
    qputenv("OUT", m_rig->dir.path().toLocal8Bit());
    const QString installer = path("a user (100% & more)/installer");
    writeProgram(installer, "#!/bin/sh\necho installed > \"$OUT/result\"\n");
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression(QStringLiteral("running WinZRUpdater cmd")));
    QVERIFY(OSHelper::startInstaller(OSHelper::System::Windows, QString(), installer));
    QTRY_COMPARE(contentOf(path("result")), QByteArray("installed\n"));
    QCOMPARE(contentOf(path("arguments")),
             "/C " + QDir::toNativeSeparators(QStringLiteral("./installer")).toLocal8Bit() + '\n');
}

void tst_InstallerHandover::windowsRefusesAPlaceThatTheInterpreterWouldRead()
{
    ZRUpdater::Setup setup = m_rig->setup();
    setup.system = OSHelper::System::Windows;
    setup.installerFile = path("a & b/in & staller");
    m_rig->build(setup);
    m_rig->server.setAnswer("/installer", "x");
    m_rig->setOffer("2", "MAN", m_rig->server.url("/installer"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no safe place for the installer")));
    m_rig->check();
    QVERIFY(m_rig->waitFor(QStringLiteral("interrupted")));
    QCOMPARE(m_rig->server.requestCount("/installer"), 0);
}

void tst_InstallerHandover::linuxReplacesTheProgram_data()
{
    QTest::addColumn<QByteArray>("program");
    QTest::newRow("binary") << QByteArray("\x7f"
                                          "ELF and so on");
    QTest::newRow("script") << QByteArray("#!/bin/sh\necho new\n");
}

void tst_InstallerHandover::linuxReplacesTheProgram()
{
    QFETCH(QByteArray, program);
    download(OSHelper::System::Linux, program);
    QCOMPARE(contentOf(path("application")), QByteArray("the old program"));
    QTest::ignoreMessage(
        QtInfoMsg, QRegularExpression(QStringLiteral("^\\[Updater\\] running LinuxZRUpdater /bin/sh ")));
    m_rig->updater->aboutToQuit();
    QTRY_COMPARE(contentOf(path("application")), program);
    QVERIFY(QFileInfo(path("application")).isExecutable());
    QTRY_VERIFY(!QFile::exists(m_rig->installer()));
    QTRY_VERIFY(contentOf(path("update/update.log")).contains("was updated"));
    QCOMPARE(QDir(m_rig->dir.path()).entryList({QStringLiteral("application*")}),
             QStringList{QStringLiteral("application")});
}

void tst_InstallerHandover::linuxLeavesWhatIsNoProgram_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("page") << QByteArray("<html>Sign in to this network</html>");
    QTest::newRow("text") << QByteArray("x");
}

void tst_InstallerHandover::linuxLeavesWhatIsNoProgram()
{
    QFETCH(QByteArray, body);
    download(OSHelper::System::Linux, body);
    m_rig->updater->aboutToQuit();
    QTRY_VERIFY(contentOf(path("update/update.log")).contains("is no program"));
    QCOMPARE(contentOf(path("application")), QByteArray("the old program"));
    QCOMPARE(contentOf(m_rig->installer()), body);
}

void tst_InstallerHandover::linuxLeavesTheInstallerWhereTheProgramCannotBeReplaced_data()
{
    QTest::addColumn<bool>("mandatory");
    QTest::newRow("taken in the window") << false;
    QTest::newRow("mandatory") << true;
}

void tst_InstallerHandover::linuxLeavesTheInstallerWhereTheProgramCannotBeReplaced()
{
    QFETCH(bool, mandatory);
    ZRUpdater::Setup setup = m_rig->setup();
    setup.system = OSHelper::System::Linux;
    setup.application = QStringLiteral("/proc/self/exe"); // a folder that not even root may write into
    m_rig->build(setup);
    ZRUpdater *updater = m_rig->updater.get();
    connect(updater, &ZRUpdater::onDownloadComplete, updater, &ZRUpdater::install);
    m_rig->server.setAnswer("/installer", "#!/bin/sh\n");
    m_rig->setOffer("2", mandatory ? "MAN" : "LOW", m_rig->server.url("/installer"));
    m_rig->check();
    if (!mandatory) {
        updater->onUpdateAllowed();
    }
    const QString text =
        QStringLiteral("The new version has been downloaded, but Veltrix is not allowed to replace itself "
                       "here. Please install it yourself:\n") +
        m_rig->installer();
    QTRY_COMPARE(m_rig->prompt->questions, (QList<QStringList>{{text, QStringLiteral("OK"), QString()}}));
    m_rig->prompt->press(0);
    QCOMPARE(m_rig->quits, 0); // the program goes on

    const QString line =
        QStringLiteral("[Updater] not allowed to replace /proc/self/exe - the new version is left at ");
    QTest::ignoreMessage(QtWarningMsg, qPrintable(line + m_rig->installer()));
    updater->aboutToQuit();
    QCOMPARE(contentOf(m_rig->installer()), QByteArray("#!/bin/sh\n"));
}

void tst_InstallerHandover::nothingIsStartedUnlessArmed()
{
    m_rig->server.setAnswer("/installer", "#!/bin/sh\n");
    m_rig->setOffer("2", "LOW", m_rig->server.url("/installer"));
    m_rig->check();
    m_rig->updater->onUpdateAllowed();
    QVERIFY(m_rig->waitFor(QStringLiteral("complete")));
    m_rig->updater->aboutToQuit();
    QTest::qWait(100);
    QCOMPARE(contentOf(path("application")), QByteArray("the old program"));
    QVERIFY(QFile::exists(m_rig->installer()));
}

void tst_InstallerHandover::installerIsStartedOnce()
{
    download(OSHelper::System::Linux, "#!/bin/sh\n");
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression(QStringLiteral("running LinuxZRUpdater")));
    m_rig->updater->aboutToQuit();
    m_rig->updater->aboutToQuit();
    QTRY_COMPARE(contentOf(path("application")), QByteArray("#!/bin/sh\n"));
    // The script's last word comes after the exchange, and on a busy machine well after.
    QTRY_COMPARE(contentOf(path("update/update.log")).count('\n'), 1);
    QTest::qWait(50);
    QCOMPARE(contentOf(path("update/update.log")).count('\n'), 1);
}

void tst_InstallerHandover::macReplacesTheApplication_data()
{
    QTest::addColumn<bool>("cutOffBefore");
    QTest::newRow("plain") << false;
    QTest::newRow("after a replacement that was cut off") << true;
}

// With an archive in the place of the disk image, and a tool that unpacks it in the place of the one that
// mounts.
void tst_InstallerHandover::macReplacesTheApplication()
{
    QFETCH(bool, cutOffBefore);
    QVERIFY(QDir(m_rig->dir.path()).mkpath(QStringLiteral("bin")));
    writeProgram(path("bin/hdiutil"), "#!/bin/sh\n"
                                      "case $1 in\n"
                                      "attach) tar -C \"$5\" -xf \"$6\" ;;\n"
                                      "detach) rm -r \"$2\"/* ;;\n"
                                      "esac\n");
    qputenv("PATH", path("bin").toLocal8Bit() + ':' + m_path);
    const auto makeApplication = [this](const char *name, const QByteArray &content) {
        const QString folder = path(name) + QStringLiteral("/Contents/MacOS");
        QVERIFY(QDir().mkpath(folder));
        writeProgram(folder + QStringLiteral("/veltrix"), content);
    };
    makeApplication("Veltrix.app", "old");
    makeApplication("image/Veltrix.app", "new");
    if (cutOffBefore) {
        makeApplication("Veltrix.app.old", "older");
        makeApplication("Veltrix.app.new", "half");
    }
    QCOMPARE(
        QProcess::execute(QStringLiteral("tar"), {QStringLiteral("-C"), path("image"), QStringLiteral("-cf"),
                                                  path("image.dmg"), QStringLiteral("Veltrix.app")}),
        0);

    const QString application = path("Veltrix.app/Contents/MacOS/veltrix");
    QVERIFY(QFile::copy(QStringLiteral(":/scripts/OSXZRUpdater.sh"), path("script")));
    QCOMPARE(QProcess::execute(QStringLiteral("/bin/sh"), {path("script"), application, path("image.dmg")}),
             0);
    QCOMPARE(contentOf(application), QByteArray("new"));
    QVERIFY(!QFile::exists(path("Veltrix.app.new")));
    QVERIFY(!QFile::exists(path("Veltrix.app.old")));
    QVERIFY(!QFile::exists(path("image.dmg")));
}

void tst_InstallerHandover::scriptsArePartOfTheProgram()
{
    for (const char *name : {"LinuxZRUpdater.sh", "OSXZRUpdater.sh", "WinZRUpdater.bat"}) {
        QVERIFY2(QFile::exists(QStringLiteral(":/scripts/") + QLatin1String(name)), name);
    }
    QVERIFY(contentOf(QStringLiteral(":/scripts/WinZRUpdater.bat")).contains("\"%~2\"\r\n"));
}

void tst_InstallerHandover::failureToStartIsLogged()
{
    QTest::ignoreMessage(QtWarningMsg, "Failed to executeNoWait");
    QVERIFY(!OSHelper::executeNoWait(path("there-is-no-such-program"), {}));
}

void tst_InstallerHandover::argumentsStayWhole()
{
    writeProgram(
        path("show"),
        "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$OUT/shown.part\"\nmv \"$OUT/shown.part\" \"$OUT/shown\"\n");
    qputenv("OUT", m_rig->dir.path().toLocal8Bit());
    const QStringList arguments{QStringLiteral("a b"), QStringLiteral("$(touch x) `y`"),
                                QStringLiteral("\"q' & ;|"), QString()};
    QVERIFY(OSHelper::executeNoWait(path("show"), arguments));
    QTRY_COMPARE(contentOf(path("shown")), arguments.join(QLatin1Char('\n')).toUtf8() + '\n');
}

void tst_InstallerHandover::commandCharacters_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("special");
    QTest::newRow("plain") << QStringLiteral("C:\\Users\\JOHNDO~1\\AppData\\veltrix-update\\x.exe") << false;
    QTest::newRow("letters of any script") << QStringLiteral("C:\\Users\\Jörg\\x.exe") << false;
    for (const QChar character : QStringLiteral(" &|<>^%!()\"';,=@`{}[]$*?+#")) {
        QTest::newRow(qPrintable(QString(character))) << QStringLiteral("C:\\a%1b").arg(character) << true;
    }
}

void tst_InstallerHandover::commandCharacters()
{
    QFETCH(QString, path);
    QFETCH(bool, special);
    QCOMPARE(OSHelper::hasCommandCharacters(path), special);
}

void tst_InstallerHandover::privateDirectory()
{
    QVERIFY(OSHelper::makePrivateDirectory(path("new/one")));
    QCOMPARE(QFile(path("new/one")).permissions() &
                 (QFile::WriteGroup | QFile::WriteOther | QFile::ReadOther),
             QFile::Permissions());
    QVERIFY(OSHelper::makePrivateDirectory(path("new/one"))); // and again

    QVERIFY(QFile::link(path("new/one"), path("link")));
    QVERIFY(!OSHelper::makePrivateDirectory(path("link")));
    QVERIFY(!OSHelper::makePrivateDirectory(path("application")));
    QVERIFY(!OSHelper::makePrivateDirectory(QStringLiteral("/tmp")));
}

void tst_InstallerHandover::installerFileIsInAPlaceOfItsOwn()
{
    const QFileInfo file(OSHelper::installerFile());
    QVERIFY(file.isAbsolute());
    QCOMPARE(OSHelper::installerFile(), file.filePath());
    const QFileInfo place(file.path());
    QVERIFY(place.fileName().startsWith(QLatin1String("veltrix")));
    QCOMPARE(place.path(), QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation));
}

void tst_InstallerHandover::imageIsBelievedOnlyFromWithinItsFolder_data()
{
    QTest::addColumn<QString>("image");
    QTest::addColumn<QString>("folder"); // below the test's own
    QTest::addColumn<bool>("believed");
    const QString image = QStringLiteral("/home/user/Veltrix.AppImage");
    QTest::newRow("its own") << image << QStringLiteral("mount") << true;
    QTest::newRow("through a link") << image << QStringLiteral("link") << true;
    QTest::newRow("another program's") << image << QStringLiteral("other") << false;
    QTest::newRow("a name that begins alike") << image << QStringLiteral("mou") << false;
    QTest::newRow("that is not there") << image << QStringLiteral("none") << false;
    QTest::newRow("the whole system") << image << QStringLiteral("/") << false;
    QTest::newRow("no folder") << image << QString() << false;
    QTest::newRow("no image") << QString() << QStringLiteral("mount") << false;
}

void tst_InstallerHandover::imageIsBelievedOnlyFromWithinItsFolder()
{
    QFETCH(QString, image);
    QFETCH(QString, folder);
    QFETCH(bool, believed);
    const QTemporaryDir base;
    const QDir dir(base.path());
    for (const char *name : {"mount/usr/bin", "other", "mou"}) {
        QVERIFY(dir.mkpath(QString::fromLatin1(name)));
    }
    const QString executable = dir.filePath(QStringLiteral("mount/usr/bin/veltrix"));
    writeProgram(executable, "program");
    QVERIFY(QFile::link(dir.filePath(QStringLiteral("mount")), dir.filePath(QStringLiteral("link"))));
    const QString path = folder.isEmpty() || folder == QLatin1String("/") ? folder : dir.filePath(folder);
    QCOMPARE(OSHelper::applicationFile(executable, image, path), believed ? image : executable);
}

void tst_InstallerHandover::imageOfAnotherProgramIsNotReplaced()
{
    qputenv("APPIMAGE", "/home/user/Another.AppImage"); // as every program inherits that it started
    qputenv("APPDIR", "/usr/share");
    const QString file = OSHelper::applicationFile();
    qunsetenv("APPIMAGE");
    qunsetenv("APPDIR");
    QCOMPARE(file, QCoreApplication::applicationFilePath());
}

QTEST_GUILESS_MAIN(tst_InstallerHandover)
#include "tst_InstallerHandover.moc"
