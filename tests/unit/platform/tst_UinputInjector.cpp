#include "engine/platform/uinput/UinputInjector.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/uinput/RecordingKernel.h"
#include "tests/support/xkb/ExpectedSymbols.h"

#include <QTest>

#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon.h>

namespace
{

/// A compositor's keyboard with a layout of the system's: takes what the kernel reports, switches the lights,
/// and says what a program in front of it gets.
class Session
{
    Q_DISABLE_COPY_MOVE(Session)

public:
    explicit Session(const QString &layout)
    {
        const QByteArray name = layout.toLatin1();
        const xkb_rule_names names{"evdev", "pc105", name.constData(), "", ""};
        m_keymap = xkb_keymap_new_from_names(m_context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
        m_state = xkb_state_new(m_keymap);
    }
    ~Session()
    {
        xkb_state_unref(m_state);
        xkb_keymap_unref(m_keymap);
        xkb_context_unref(m_context);
    }

    QByteArray text() const
    {
        char *text = xkb_keymap_get_as_string(m_keymap, XKB_KEYMAP_FORMAT_TEXT_V1);
        const QByteArray result(text);
        free(text);
        return result;
    }

    /// "S down", "s up" for the kernel's lines.
    QStringList symbols(const QStringList &lines)
    {
        QStringList symbols;
        for (const QString &line : lines) {
            const QStringList words = line.split(QLatin1Char(' '));
            if (words[0] != QLatin1String("key") || words[1].toInt() >= BTN_MISC) {
                continue;
            }
            const xkb_keycode_t keycode = words[1].toUInt() + 8;
            const bool down = words[2] == QLatin1String("1");
            char name[64] = "";
            xkb_keysym_get_name(xkb_state_key_get_one_sym(m_state, keycode), name, sizeof name);
            xkb_state_update_key(m_state, keycode, down ? XKB_KEY_DOWN : XKB_KEY_UP);
            symbols << QString::fromLatin1(name) + QLatin1String(down ? " down" : " up");
        }
        return symbols;
    }

    bool isNumLockOn() const { return xkb_state_led_name_is_active(m_state, XKB_LED_NAME_NUM) > 0; }

private:
    xkb_context *m_context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    xkb_keymap *m_keymap;
    xkb_state *m_state;
};

/// The backend between the kernel's double and a session.
struct Rig {
    explicit Rig(const QString &layout, bool numLock = false)
        : session(layout)
    {
        devices = std::make_shared<UinputDevices>(kernel, QStringLiteral("/dev/null"));
        keymap = std::make_shared<SessionKeymap>();
        QString problem;
        devices->open(problem);
        keymap->setText(session.text());
        injector = std::make_unique<UinputInjector>(devices, keymap);
        if (numLock) {
            tap(0x90);
        }
    }

    /// What arrives; the lights follow, as a compositor makes them.
    QStringList take()
    {
        const bool before = session.isNumLockOn();
        const QStringList symbols = session.symbols(kernel.takeLines());
        if (session.isNumLockOn() != before) {
            kernel.writeFromDesktop(kernel.find("Veltrix keyboard"),
                                    {EV_LED, LED_NUML, session.isNumLockOn() ? 1 : 0});
            QCoreApplication::processEvents();
        }
        return symbols;
    }
    QStringList tap(quint16 virtualKey)
    {
        injector->sendKey(virtualKey, true);
        injector->sendKey(virtualKey, false);
        return take();
    }

    RecordingKernel kernel;
    Session session;
    std::shared_ptr<UinputDevices> devices;
    std::shared_ptr<SessionKeymap> keymap;
    std::unique_ptr<UinputInjector> injector;
};

bool isLock(quint16 virtualKey)
{
    return virtualKey == 0x14 || virtualKey == 0x90 || virtualKey == 0x91;
}

QStringList downAndUp(const QString &symbol)
{
    return {symbol + QLatin1String(" down"), symbol + QLatin1String(" up")};
}

/// NumLock is off again when a key of the keypad comes up, which gives its release another name.
bool isTyped(const QString &symbol, const QStringList &seen)
{
    return symbol.startsWith(QLatin1String("KP_"))
               ? seen.size() == 2 && seen.first() == symbol + QLatin1String(" down")
               : seen == downAndUp(symbol);
}

/// Without the modifiers that are pressed around a key.
QStringList plain(const QStringList &symbols)
{
    QStringList rest;
    for (const QString &symbol : symbols) {
        const QString name = symbol.section(QLatin1Char(' '), 0, 0);
        if (name != QLatin1String("Shift_L") && name != QLatin1String("ISO_Level3_Shift") &&
            name != QLatin1String("Num_Lock")) {
            rest << symbol;
        }
    }
    return rest;
}

} // namespace

class tst_UinputInjector : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        for (const char *name : {"XKB_DEFAULT_LAYOUT", "XKB_DEFAULT_VARIANT", "XKB_DEFAULT_OPTIONS"}) {
            qunsetenv(name);
        }
    }

    void everyCodeOfTheLayoutTypesItsSymbol_data();
    void everyCodeOfTheLayoutTypesItsSymbol();
    void highFunctionKeysAreTheKernelsOwn();
    void shortcutReleasesInPressingOrder();
    void modifiersAreHeldAroundASymbolThatNeedsThem();
    void aHeldShiftIsNotLetGo();
    void numLockIsAsBefore();
    void layoutChangeIsFollowed();
    void pressedKeyIsReleasedAfterALayoutChange();
    void unknownCodeIsLoggedOnceAndSkipped();
    void releaseBeforeTheFirstPressIsNoFault();
    void leftButtonArrives();
    void pressesGoOnAfterTheDevicesWereLost();
};

void tst_UinputInjector::everyCodeOfTheLayoutTypesItsSymbol_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<bool>("numLock");
    for (const char *layout : {"us", "de", "fr"}) {
        QTest::addRow("%s", layout) << QString::fromLatin1(layout) << false;
        QTest::addRow("%s, NumLock on", layout) << QString::fromLatin1(layout) << true;
    }
}

void tst_UinputInjector::everyCodeOfTheLayoutTypesItsSymbol()
{
    QFETCH(QString, layout);
    QFETCH(bool, numLock);
    const LogCapture log;
    Rig rig(layout, numLock);
    const QMap<quint16, QString> symbols = expectedSymbols(layout);
    QStringList wrong;
    QStringList missing;
    for (auto it = symbols.constBegin(); it != symbols.constEnd(); ++it) {
        if (it.key() >= 0x7c && it.key() <= 0x87) {
            continue; // F13 and on: see below
        }
        const QStringList seen = rig.tap(it.key());
        if (isLock(it.key())) {
            rig.tap(it.key());
        }
        if (seen.isEmpty()) {
            missing << it.value();
        } else if (seen != downAndUp(it.value()) && !isTyped(it.value(), plain(seen))) {
            wrong << QStringLiteral("code %1: %2 instead of %3")
                         .arg(it.key())
                         .arg(seen.join(QLatin1Char(',')), it.value());
        }
        QVERIFY(rig.kernel.held().isEmpty());
        QCOMPARE(rig.session.isNumLockOn(), numLock);
    }
    QCOMPARE(wrong.join(QLatin1String("; ")), QString());
    // What no key of the layout types.
    QStringList known{
        QStringLiteral("3270_Attn"),     QStringLiteral("3270_CursorSelect"), QStringLiteral("3270_ExSelect"),
        QStringLiteral("3270_EraseEOF"), QStringLiteral("3270_Play"),         QStringLiteral("3270_PA1"),
        QStringLiteral("Clear"),         QStringLiteral("Execute"),           QStringLiteral("Hangul_Jeonja"),
        QStringLiteral("Select"),        QStringLiteral("XF86Stop")};
    if (layout == QLatin1String("de")) {
        known << QStringLiteral("grave"); // a dead key
    } else {
        known << QStringLiteral("KP_Separator") << QStringLiteral("KP_Separator");
    }
    if (numLock) {
        known << QStringLiteral("KP_Begin");
    }
    known.sort();
    missing.sort();
    QCOMPARE(missing, known);
}

void tst_UinputInjector::highFunctionKeysAreTheKernelsOwn()
{
    Rig rig(QStringLiteral("us"));
    for (int i = 0; i < 12; ++i) {
        rig.injector->sendKey(quint16(0x7c + i), true);
        QCOMPARE(rig.kernel.held(), QVector<quint16>{quint16(KEY_F13 + i)});
        rig.injector->sendKey(quint16(0x7c + i), false);
        QVERIFY(rig.kernel.held().isEmpty());
    }
}

void tst_UinputInjector::shortcutReleasesInPressingOrder()
{
    Rig rig(QStringLiteral("us"));
    for (const bool down : {true, false}) {
        for (const quint16 code : {quint16(0x11), quint16(0x10), quint16('S')}) {
            rig.injector->sendKey(code, down);
        }
    }
    const QStringList wanted = {QStringLiteral("Control_L down"), QStringLiteral("Shift_L down"),
                                QStringLiteral("S down"),         QStringLiteral("Control_L up"),
                                QStringLiteral("Shift_L up"),     QStringLiteral("s up")};
    QCOMPARE(rig.take(), wanted);
}

void tst_UinputInjector::modifiersAreHeldAroundASymbolThatNeedsThem()
{
    Rig rig(QStringLiteral("de"));
    const QStringList bracket = {QStringLiteral("ISO_Level3_Shift down"), QStringLiteral("bracketleft down"),
                                 QStringLiteral("bracketleft up"), QStringLiteral("ISO_Level3_Shift up")};
    QCOMPARE(rig.tap(0xdb), bracket);
    Rig french(QStringLiteral("fr"));
    const QStringList digit = {QStringLiteral("Shift_L down"), QStringLiteral("1 down"),
                               QStringLiteral("1 up"), QStringLiteral("Shift_L up")};
    QCOMPARE(french.tap('1'), digit);
}

void tst_UinputInjector::aHeldShiftIsNotLetGo()
{
    Rig rig(QStringLiteral("fr"));
    rig.injector->sendKey(0x10, true);
    rig.take();
    QCOMPARE(rig.tap('1'), downAndUp(QStringLiteral("1")));
    QCOMPARE(rig.kernel.held(), QVector<quint16>{KEY_LEFTSHIFT});
    rig.injector->sendKey(0x10, false);
    QVERIFY(rig.kernel.held().isEmpty());
}

void tst_UinputInjector::numLockIsAsBefore()
{
    Rig rig(QStringLiteral("us"));
    const QStringList seen = rig.tap(0x61);
    QVERIFY(seen.contains(QStringLiteral("KP_1 down")));
    QVERIFY(!rig.session.isNumLockOn());
    Rig locked(QStringLiteral("us"), true);
    QCOMPARE(locked.tap(0x61), downAndUp(QStringLiteral("KP_1")));
    QVERIFY(locked.session.isNumLockOn());
}

void tst_UinputInjector::layoutChangeIsFollowed()
{
    Rig rig(QStringLiteral("us"));
    rig.tap('Z');
    const Session german(QStringLiteral("de"));
    rig.keymap->setText(german.text());
    rig.injector->sendKey('Z', true);
    rig.injector->sendKey('Z', false);
    QCOMPARE(rig.kernel.takeLines(), QStringList({QStringLiteral("key 21 1"), QStringLiteral("key 21 0")}));
}

void tst_UinputInjector::pressedKeyIsReleasedAfterALayoutChange()
{
    Rig rig(QStringLiteral("us"));
    rig.injector->sendKey('Z', true);
    const Session german(QStringLiteral("de"));
    rig.keymap->setText(german.text());
    rig.injector->sendKey('Z', false);
    QVERIFY(rig.kernel.held().isEmpty());
}

void tst_UinputInjector::unknownCodeIsLoggedOnceAndSkipped()
{
    Rig rig(QStringLiteral("us"));
    LogCapture log;
    rig.tap(0x07);
    rig.tap(0x07);
    rig.tap(0x1ff + 0x100);
    QCOMPARE(log.takeLines().size(), 2);
    QCOMPARE(rig.take(), QStringList());
}

void tst_UinputInjector::releaseBeforeTheFirstPressIsNoFault()
{
    Rig rig(QStringLiteral("us"));
    LogCapture log;
    rig.injector->sendKey('D', false); // held on the device since before the start
    QCOMPARE(rig.take(), QStringList());
    QCOMPARE(rig.tap('D'), downAndUp(QStringLiteral("d")));
    QCOMPARE(log.takeLines(), QStringList());
}

void tst_UinputInjector::leftButtonArrives()
{
    Rig rig(QStringLiteral("us"));
    rig.injector->sendLeftButton(true);
    QCOMPARE(rig.kernel.held(), QVector<quint16>{BTN_LEFT});
    rig.injector->sendLeftButton(false);
    QVERIFY(rig.kernel.held().isEmpty());
}

void tst_UinputInjector::pressesGoOnAfterTheDevicesWereLost()
{
    Rig rig(QStringLiteral("fr"));
    const LogCapture log;
    rig.injector->sendKey('1', true);
    rig.kernel.failNextWrite(ENODEV);
    rig.injector->sendKey('2', true);
    rig.injector->sendKey('1', false);
    rig.injector->sendKey('2', false);
    QVERIFY(rig.kernel.held().isEmpty());
    rig.take();
    QCOMPARE(plain(rig.tap('3')), downAndUp(QStringLiteral("3")));
}

QTEST_GUILESS_MAIN(tst_UinputInjector)

#include "tst_UinputInjector.moc"
