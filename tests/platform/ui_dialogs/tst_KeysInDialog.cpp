#include "engine/platform/x11/X11InputInjector.h"
#include "engine/platform/xkb/KeysymTable.h"
#include "tests/platform/ui_dialogs/DialogOnServer.h"
#include "tests/support/main/Main.h"
#include "tests/support/xserver/RunOnServer.h"

#include <QApplication>
#include <QTest>

namespace
{

bool isLock(int virtualKey)
{
    return virtualKey == 0x14 || virtualKey == 0x90 || virtualKey == 0x91;
}

/// The code under which the user's press of the same key is stored: several codes press one key.
int canonical(int code, const QString &layout)
{
    const bool german = layout == QLatin1String("de");
    switch (code) {
    case 0x2a:
        return 0x2c;
    case 0x6c:
    case 0xc2:
        return german ? 0x6e : 0x6c; // the decimal key of a German keypad is a separator
    case 0xa0:
    case 0xa1:
        return 0x10;
    case 0xa2:
    case 0xa3:
        return 0x11;
    case 0xa4:
        return 0x12;
    case 0xa5:
        return layout == QLatin1String("us") ? 0x12 : 0xa5;
    case 0xc1:
        return 0xbf;
    default:
        return code;
    }
}

} // namespace

/// Which key the shortcut dialog takes a press for, in each layout.
class tst_KeysInDialog : public QObject, private DialogOnServer
{
    Q_OBJECT

public:
    explicit tst_KeysInDialog(XServer &server)
        : DialogOnServer(server)
    {
    }

private Q_SLOTS:
    void initTestCase() { beginAll(); }
    void init() { begin(); }
    void cleanup() { end(); }

    void whatIsInjectedIsCapturedAgain_data();
    void whatIsInjectedIsCapturedAgain();
    void keysWithoutACodeComeBackToo_data();
    void keysWithoutACodeComeBackToo();
    void theKeyCountsAndNotWhatItTypes_data();
    void theKeyCountsAndNotWhatItTypes();
    void aSecondGroupCounts();
    void aKeyHeldFromBeforeIsNotRecorded();
};

void tst_KeysInDialog::whatIsInjectedIsCapturedAgain_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<bool>("numLock");
    for (const char *layout : {"us", "de", "fr"}) {
        QTest::addRow("%s", layout) << QString::fromLatin1(layout) << false;
        QTest::addRow("%s, NumLock on", layout) << QString::fromLatin1(layout) << true;
    }
}

void tst_KeysInDialog::whatIsInjectedIsCapturedAgain()
{
    QFETCH(QString, layout);
    QFETCH(bool, numLock);
    QVERIFY(m_server.setLayout(layout));
    m_user->setNumLock(numLock);
    openShortcut();
    HeldInput held;
    QString problem;
    X11InputInjector injector(X11Connection::open(problem), held);
    QStringList wrong;
    int sent = 0;
    for (int code = 1; code < 0x100; ++code) {
        if (KeysymTable::symbolsOf(quint16(code)).isEmpty()) {
            continue;
        }
        ++sent;
        m_desktop.codes.clear();
        for (int taps = isLock(code) ? 2 : 1; taps > 0; --taps) {
            injector.sendKey(quint16(code), true);
            injector.sendKey(quint16(code), false);
        }
        QTRY_VERIFY2(!m_desktop.codes.isEmpty(), qPrintable(QString::number(code)));
        if (m_desktop.codes.first() != canonical(code, layout)) {
            wrong << QStringLiteral("%1 came back as %2").arg(code).arg(m_desktop.codes.first());
        }
        if (isLock(code)) {
            QTRY_COMPARE(m_desktop.codes.size(), 2);
        }
    }
    QCOMPARE(wrong.join(QLatin1String("; ")), QString());
    QVERIFY(sent > 150);
}

void tst_KeysInDialog::keysWithoutACodeComeBackToo_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QString>("characters");
    QTest::newRow("de") << QStringLiteral("de") << QStringLiteral("üöäß#^´");
    QTest::newRow("fr") << QStringLiteral("fr") << QStringLiteral("ù$*:)²^");
}

void tst_KeysInDialog::keysWithoutACodeComeBackToo()
{
    QFETCH(QString, layout);
    QFETCH(QString, characters);
    QVERIFY(m_server.setLayout(layout));
    openShortcut();
    HeldInput held;
    QString problem;
    X11InputInjector injector(X11Connection::open(problem), held);
    for (const QChar &character : characters) {
        const int code = 0x100 + character.unicode();
        m_desktop.codes.clear();
        injector.sendKey(quint16(code), true);
        injector.sendKey(quint16(code), false);
        QTRY_COMPARE(m_desktop.codes, QVector<int>{code});
    }
}

void tst_KeysInDialog::theKeyCountsAndNotWhatItTypes_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<bool>("numLock");
    QTest::addColumn<QVector<int>>("held");
    QTest::addColumn<int>("keycode");
    QTest::addColumn<QVector<int>>("codes");
    const auto row = [](const char *name, const char *layout, bool numLock, const QVector<int> &held,
                        int keycode, const QVector<int> &codes) {
        QTest::newRow(name) << QString::fromLatin1(layout) << numLock << held << keycode << codes;
    };
    row("us, Shift+1", "us", false, {ShiftL}, DigitRow1, {16, 49});
    row("us, right Shift+A", "us", false, {ShiftR}, HomeRow1, {16, 65});
    row("us, Ctrl+A", "us", false, {LeftCtrl}, HomeRow1, {17, 65});
    row("us, Shift+Tab", "us", false, {ShiftL}, TabKey, {16, 9});
    row("us, Alt+Tab", "us", false, {AltL}, TabKey, {18, 9});
    row("us, right Alt", "us", false, {}, AltR, {18});
    row("us, keypad 1", "us", false, {}, Keypad1, {35});
    row("us, keypad 1 with NumLock", "us", true, {}, Keypad1, {97});
    row("us, Ctrl+keypad 1 with NumLock", "us", true, {LeftCtrl}, Keypad1, {17, 97});
    row("us, keypad point", "us", false, {}, KeypadDecimal, {46});
    row("us, keypad point with NumLock", "us", true, {}, KeypadDecimal, {110});
    row("de, keypad comma with NumLock", "de", true, {}, KeypadDecimal, {110});
    row("fr, keypad point with NumLock", "fr", true, {}, KeypadDecimal, {110});
    row("de, AltGr+Q", "de", false, {AltR}, RowAbove1, {165, 81});
    row("de, Z is where us has Y", "de", false, {LeftCtrl}, 29, {17, 90});
    row("de, Shift+1", "de", false, {ShiftL}, DigitRow1, {16, 49});
    row("de, the dead accent", "de", false, {}, 49, {0x100 + '^'});
    row("fr, 1 without Shift", "fr", false, {}, DigitRow1, {0x100 + '&'});
    row("fr, Shift+1", "fr", false, {ShiftL}, DigitRow1, {16, 0x100 + '&'});
    row("fr, the key of é and 2", "fr", false, {}, DigitRow2, {0x1e9});
    row("hr, š", "hr", false, {}, RowAbove11, {0x100 + 0x161});
    row("hu, ő", "hu", false, {}, RowAbove11, {0x100 + 0x151});
    row("tr, ğ", "tr", false, {}, RowAbove11, {0x100 + 0x11f});
    row("fr, A is where us has Q", "fr", false, {LeftCtrl}, RowAbove1, {17, 65});
    row("fr, the key of - and 6", "fr", false, {}, DigitRow6, {189});
    row("ru, the key of A", "ru", false, {LeftCtrl}, HomeRow1, {17, 65});
}

void tst_KeysInDialog::theKeyCountsAndNotWhatItTypes()
{
    QFETCH(QString, layout);
    QFETCH(bool, numLock);
    QFETCH(QVector<int>, held);
    QFETCH(int, keycode);
    QVERIFY(m_server.setLayout(layout));
    m_user->setNumLock(numLock);
    openShortcut();
    for (const int modifier : held) {
        m_user->key(modifier, true);
    }
    m_user->tap(keycode);
    QTRY_COMPARE(m_desktop.codes.size(), held.size() + 1);
    for (const int modifier : held) {
        m_user->key(modifier, false);
    }
    QTEST(m_desktop.codes, "codes");
}

void tst_KeysInDialog::aSecondGroupCounts()
{
    QVERIFY(m_server.setLayout(QStringLiteral("us,de,ru")));
    openShortcut();
    for (const int group : {0, 1, 2}) {
        m_user->lockGroup(group);
        m_user->tap(29);
        m_user->tap(RowAbove11);
        m_user->tap(ReturnKey);
        QTRY_COMPARE(m_desktop.codes.size(), 3 * (group + 1));
    }
    // Y, Z, and the н that stands where us has Y; [, ü, and the х that stands where us has [
    QCOMPARE(m_desktop.codes, (QVector<int>{89, 219, 13, 90, 0x1fc, 13, 89, 219, 13}));
}

// Return in the menu opens the dialog, and the server repeats it until it is let go.
void tst_KeysInDialog::aKeyHeldFromBeforeIsNotRecorded()
{
    QVERIFY(m_server.setLayout(QStringLiteral("us")));
    m_user->key(ReturnKey, true);
    openShortcut();
    QTest::qWait(1200); // repeats begin after 660 ms
    m_user->tap(HomeRow1);
    QTRY_COMPARE(m_desktop.codes, QVector<int>{'A'});
    m_user->key(ReturnKey, false);
    QTest::qWait(20); // no hand lets go and presses in one moment
    m_user->tap(ReturnKey);
    QTRY_COMPARE(m_desktop.codes, (QVector<int>{'A', 13}));
}

int main(int argc, char *argv[])
{
    return runOnServer<tst_KeysInDialog>(argc, argv, XServer::Options::atScale());
}

#include "tst_KeysInDialog.moc"
