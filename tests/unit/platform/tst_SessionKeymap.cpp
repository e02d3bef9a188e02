#include "engine/platform/uinput/SessionKeymap.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QSignalSpy>
#include <QTemporaryFile>
#include <QTest>

#include <xkbcommon/xkbcommon.h>

namespace
{

constexpr quint32 z = 'z';
constexpr quint8 upperRowZ = 29;  // between T and U
constexpr quint8 bottomRowZ = 52; // at the left of the bottom row

/// A layout as a compositor sends it.
QByteArray textOf(const char *layout)
{
    xkb_context *context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    const xkb_rule_names names{"evdev", "pc105", layout, "", ""};
    xkb_keymap *keymap = xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    char *text = xkb_keymap_get_as_string(keymap, XKB_KEYMAP_FORMAT_TEXT_V1);
    const QByteArray result(text);
    free(text);
    xkb_keymap_unref(keymap);
    xkb_context_unref(context);
    return result;
}

quint8 keycodeOfZ(SessionKeymap &keymap)
{
    return keymap.map(false).find(z).keycode;
}

} // namespace

class tst_SessionKeymap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        for (const char *name : {"XKB_DEFAULT_RULES", "XKB_DEFAULT_MODEL", "XKB_DEFAULT_LAYOUT",
                                 "XKB_DEFAULT_VARIANT", "XKB_DEFAULT_OPTIONS"}) {
            qunsetenv(name);
        }
    }

    void theCompositorsKeymapCounts();
    void anotherKeymapIsTakenOver();
    void theSameKeymapAgainIsNoChange();
    void anUnreadableKeymapChangesNothing();
    void theEnvironmentCountsBeforeTheFile();
    void theSystemsFileCounts_data();
    void theSystemsFileCounts();
    void withoutAnythingItIsUs();
    void aWrongLayoutInTheFileIsSaidAndIsUs();
    void theKeymapIsReadWhenItIsNeeded();
    void nothingCountsAsSpare();
};

void tst_SessionKeymap::theCompositorsKeymapCounts()
{
    qputenv("XKB_DEFAULT_LAYOUT", "us");
    SessionKeymap keymap;
    keymap.setText(textOf("de"));
    QCOMPARE(keymap.source(), QStringLiteral("the compositor"));
    QCOMPARE(keycodeOfZ(keymap), upperRowZ);
}

void tst_SessionKeymap::anotherKeymapIsTakenOver()
{
    SessionKeymap keymap;
    QSignalSpy changes(&keymap, &SessionKeymap::changed);
    keymap.setText(textOf("de"));
    keymap.setText(textOf("us"));
    QCOMPARE(changes.size(), 2);
    QCOMPARE(keycodeOfZ(keymap), bottomRowZ);
}

void tst_SessionKeymap::theSameKeymapAgainIsNoChange()
{
    SessionKeymap keymap;
    QSignalSpy changes(&keymap, &SessionKeymap::changed);
    keymap.setText(textOf("de"));
    keymap.setText(textOf("de"));
    QCOMPARE(changes.size(), 1);
}

void tst_SessionKeymap::anUnreadableKeymapChangesNothing()
{
    SessionKeymap keymap;
    keymap.setText(textOf("de"));
    QSignalSpy changes(&keymap, &SessionKeymap::changed);
    LogCapture log;
    keymap.setText("xkb_keymap { nonsense");
    QVERIFY(changes.isEmpty());
    QVERIFY(log.takeLines().contains(QStringLiteral("warning: the compositor's keymap cannot be read")));
    QCOMPARE(keycodeOfZ(keymap), upperRowZ);
}

void tst_SessionKeymap::theEnvironmentCountsBeforeTheFile()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write("XKBLAYOUT=\"us\"\n");
    file.close();
    qputenv("XKB_DEFAULT_LAYOUT", "de");
    SessionKeymap keymap(file.fileName());
    QCOMPARE(keycodeOfZ(keymap), upperRowZ);
    QCOMPARE(keymap.source(), QStringLiteral("XKB_DEFAULT_LAYOUT"));
}

void tst_SessionKeymap::theSystemsFileCounts_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("as Debian writes it") << QByteArray(
        "# KEYBOARD CONFIGURATION FILE\n\nXKBMODEL=\"pc105\"\nXKBLAYOUT=\"de\"\nXKBVARIANT=\"\"\n"
        "XKBOPTIONS=\"\"\n\nBACKSPACE=\"guess\"\n");
    QTest::newRow("bare") << QByteArray("XKBLAYOUT=de");
    QTest::newRow("with a variant") << QByteArray("XKBLAYOUT='de'\nXKBVARIANT='nodeadkeys' # easier\n");
    QTest::newRow("two layouts") << QByteArray("XKBLAYOUT=\"de,us\"\nXKBVARIANT=\",\"\n");
}

void tst_SessionKeymap::theSystemsFileCounts()
{
    QFETCH(QByteArray, content);
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write(content);
    file.close();
    SessionKeymap keymap(file.fileName());
    QCOMPARE(keycodeOfZ(keymap), upperRowZ);
    QCOMPARE(keymap.source(), file.fileName());
}

void tst_SessionKeymap::withoutAnythingItIsUs()
{
    SessionKeymap keymap(QStringLiteral("/nonexistent/keyboard"));
    QCOMPARE(keycodeOfZ(keymap), bottomRowZ);
    QCOMPARE(keymap.source(), QStringLiteral("us"));
}

void tst_SessionKeymap::aWrongLayoutInTheFileIsSaidAndIsUs()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write("XKBLAYOUT=\"klingon-qwertz\"\n");
    file.close();
    SessionKeymap keymap(file.fileName());
    LogCapture log;
    QCOMPARE(keycodeOfZ(keymap), bottomRowZ);
    QVERIFY(log.takeLines().contains(
        QStringLiteral("warning: no keyboard layout as %1 has it").arg(file.fileName())));
}

void tst_SessionKeymap::theKeymapIsReadWhenItIsNeeded()
{
    SessionKeymap keymap;
    QVERIFY(keymap.source().isEmpty());
}

void tst_SessionKeymap::nothingCountsAsSpare()
{
    SessionKeymap keymap;
    keymap.setText(textOf("us"));
    QVERIFY(keymap.map(false).spares().isEmpty());
    QVERIFY(keymap.map(true).spares().isEmpty());
}

QTEST_GUILESS_MAIN(tst_SessionKeymap)

#include "tst_SessionKeymap.moc"
