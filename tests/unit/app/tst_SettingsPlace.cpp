#include "app/SettingsPlace.h"
#include "engine/Settings.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QStandardPaths>
#include <QTest>

class tst_SettingsPlace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void usualSettingsAreLeftAlone();
    void objectsAreFoundHoweverTheyAreWritten_data();
    void objectsAreFoundHoweverTheyAreWritten();
    void textsAreNoObjects_data();
    void textsAreNoObjects();
    void whatCannotBeReadWithoutHarmIsSetAside_data();
    void whatCannotBeReadWithoutHarmIsSetAside();
    void everyFileThatIsSetAsideStays();
    void whatIsNoSettingsIsCopied();
    void linksInACircleAreLeftAlone();

private:
    void write(const QByteArray &content) const;
    QByteArray content(const QString &name = QStringLiteral("application.conf")) const;

    const QString m_organisation = QStringLiteral("organisation");
    const QString m_application = QStringLiteral("application");
    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_SettingsPlace::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    qputenv("XDG_CONFIG_HOME", m_directory->path().toLocal8Bit());
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_directory->path());
    QVERIFY(QDir(m_directory->path()).mkpath(m_organisation));
}

void tst_SettingsPlace::write(const QByteArray &content) const
{
    QFile file(m_directory->filePath(m_organisation + QStringLiteral("/application.conf")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QByteArray tst_SettingsPlace::content(const QString &name) const
{
    QFile file(m_directory->filePath(m_organisation + QLatin1Char('/') + name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void tst_SettingsPlace::usualSettingsAreLeftAlone()
{
    const QByteArray usual = "[General]\nSlider.Normal=80\nButtonAction.Normal.label=\"a, @b (\\x41)\"\n";
    write(usual);
    const SettingsPlace place(m_organisation, m_application);
    QCOMPARE(content(), usual);
    QCOMPARE(QDir(m_directory->filePath(m_organisation)).entryList(QDir::Files),
             QStringList{QStringLiteral("application.conf")});
    QCOMPARE(Settings(m_organisation, m_application).value(QStringLiteral("Slider.Normal")).toInt(), 80);
}

void tst_SettingsPlace::objectsAreFoundHoweverTheyAreWritten_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("plain") << QByteArray("@Variant(\\0)");
    QTest::newRow("a date") << QByteArray("@DateTime(\\0)");
    QTest::newRow("quoted") << QByteArray("\"@Var\"iant(\\0)");
    QTest::newRow("in a list") << QByteArray("a, @Variant(\\0)");
    QTest::newRow("hexadecimal") << QByteArray("\\x40Varian\\x74(\\0)");
    QTest::newRow("hexadecimal, with digits too many") << QByteArray("\\x10040Variant(\\0)");
    QTest::newRow("octal") << QByteArray("\\100Variant(\\0)");
    QTest::newRow("escaped without a need") << QByteArray("@V\\qariant(\\0)");
    QTest::newRow("over two lines") << QByteArray("@V\\\nariant(\\0)");
}

void tst_SettingsPlace::objectsAreFoundHoweverTheyAreWritten()
{
    QFETCH(const QByteArray, value);
    QVERIFY(SettingsPlace::holdsObjects("[General]\na=" + value + "\n"));
}

void tst_SettingsPlace::textsAreNoObjects_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text :
         {"@", "@@", "Variant(", "@ Variant(", "Ctrl+\\", "a, b; \"c\"", "\u00e4\u20ac\n\t"}) {
        QTest::newRow(text) << QString::fromUtf8(text);
    }
}

// As the toolkit writes them.
void tst_SettingsPlace::textsAreNoObjects()
{
    QFETCH(const QString, text);
    {
        Settings settings(m_organisation, m_application);
        settings.setValue(QStringLiteral("text"), text);
        settings.setValue(QStringLiteral("number"), 5);
        settings.setValue(QStringLiteral("flag"), true);
        QVERIFY(settings.write());
    }
    QVERIFY(!content().isEmpty());
    QVERIFY(!SettingsPlace::holdsObjects(content()));
}

void tst_SettingsPlace::whatCannotBeReadWithoutHarmIsSetAside_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("a list of two thousand million values")
        << QByteArray("[General]\na=@Variant(\\0\\0\\0\\x9\\0\\x7f\\xff\\xff\\xff)\n");
    QByteArray nested = "[General]\na=@Variant(";
    for (int depth = 0; depth < 50'000; ++depth) {
        nested += "\\0\\0\\0\\x9\\0\\0\\0\\0\\x1";
    }
    QTest::newRow("lists within lists") << nested + ")\n";
    QTest::newRow("large") << QByteArray(SettingsPlace::maximumSize + 1, 'a');
}

void tst_SettingsPlace::whatCannotBeReadWithoutHarmIsSetAside()
{
    QFETCH(const QByteArray, bytes);
    write(bytes);
    LogCapture log;
    {
        const SettingsPlace place(m_organisation, m_application);
        QVERIFY(log.take(QtWarningMsg, QStringLiteral("set aside")));
        Settings settings(m_organisation, m_application);
        QVERIFY(settings.allKeys().isEmpty());
        settings.setValue(QStringLiteral("Slider.Normal"), 30);
        QVERIFY(settings.write());
    }
    QCOMPARE(content(QStringLiteral("application.conf.broken")), bytes);
    QVERIFY(content().contains("Slider.Normal=30"));
}

void tst_SettingsPlace::everyFileThatIsSetAsideStays()
{
    for (const char *bytes : {"a=@Variant(1)", "a=@Variant(2)", "a=@Variant(2)"}) {
        write(bytes);
        const SettingsPlace place(m_organisation, m_application);
        QCOMPARE(content(), QByteArray());
    }
    QCOMPARE(content(QStringLiteral("application.conf.broken")), QByteArray("a=@Variant(1)"));
    QCOMPARE(content(QStringLiteral("application.conf.broken2")), QByteArray("a=@Variant(2)"));
}

void tst_SettingsPlace::whatIsNoSettingsIsCopied()
{
    const QByteArray bytes = "[General]\nSlider.Normal=80\nwhat I wanted to note\n";
    write(bytes);
    LogCapture log;
    const SettingsPlace place(m_organisation, m_application);
    QVERIFY(log.take(QtWarningMsg, QStringLiteral("are no settings")));
    Settings settings(m_organisation, m_application);
    QCOMPARE(settings.value(QStringLiteral("Slider.Normal")).toInt(), 80);
    settings.setValue(QStringLiteral("Slider.Normal"), 30);
    QVERIFY(settings.write());
    QVERIFY(!content().contains("note"));
    QCOMPARE(content(QStringLiteral("application.conf.broken")), bytes);
}

void tst_SettingsPlace::linksInACircleAreLeftAlone()
{
    const QDir folder(m_directory->filePath(m_organisation));
    const QString one = folder.filePath(QStringLiteral("application.conf"));
    const QString other = folder.filePath(QStringLiteral("other"));
    if (!QFile::link(other, one) || !QFile::link(one, other)) {
        QSKIP("this system has no links");
    }
    LogCapture log;
    {
        const SettingsPlace place(m_organisation, m_application);
        QVERIFY(log.take(QtWarningMsg, QStringLiteral("a link that leads in a circle")));
        Settings settings(m_organisation, m_application);
        settings.setValue(QStringLiteral("Slider.Normal"), 30);
        QVERIFY(settings.write());
    }
    QVERIFY(QFileInfo(one).isSymLink() && QFileInfo(other).isSymLink());
}

QTEST_GUILESS_MAIN(tst_SettingsPlace)
#include "tst_SettingsPlace.moc"
