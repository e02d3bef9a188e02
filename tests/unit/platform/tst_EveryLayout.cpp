#include "engine/platform/xkb/KeyTranslator.h"
#include "engine/platform/xkb/XkbKeymap.h"
#include "tests/support/main/Main.h"

#include <QFile>
#include <QTest>

#include <memory>
#include <xkbcommon/xkbcommon.h>

namespace
{

constexpr char layoutList[] = "/usr/share/X11/xkb/rules/evdev.lst";

struct Unref {
    void operator()(xkb_context *context) const { xkb_context_unref(context); }
};

struct Layout {
    QByteArray name;
    QByteArray variant;
};

/// All layouts and variants that the system knows.
QVector<Layout> allLayouts()
{
    QVector<Layout> layouts;
    QFile file(QString::fromLatin1(layoutList));
    QByteArray section;
    if (!file.open(QIODevice::ReadOnly)) {
        return layouts;
    }
    while (!file.atEnd()) {
        const QList<QByteArray> words = file.readLine().simplified().split(' ');
        if (words.first() == "!") {
            section = words.value(1);
        } else if (section == "layout" && words.size() > 1 && words.first() != "custom") {
            layouts.append(Layout{words.first(), {}});
        } else if (section == "variant" && words.size() > 1) {
            layouts.append(Layout{words.at(1).chopped(1), words.first()}); // "variant  layout: description"
        }
    }
    return layouts;
}

/// Greek, Cyrillic, Hebrew and Arabic letters are recorded as the Latin letter of their key.
bool standsForLatin(quint32 keysym)
{
    const quint32 character = xkb_keysym_to_utf32(keysym);
    return (character >= 0x370 && character < 0x530) || (character >= 0x590 && character < 0x780) ||
           (character >= 0x1f00 && character < 0x2000) || (character >= 0xfb50 && character < 0xff00);
}

/// What a test needs of one layout.
struct Rig {
    Rig(xkb_context *context, const Layout &layout, bool numLock)
        : keymap(compile(context, layout))
        , map(keymap.map(state))
        , translator([](quint8, quint32, quint32) {}, held)
    {
        if (numLock) {
            state.locked = state.modifiers = map.numLockMask();
            map = keymap.map(state);
        }
        translator.setMap(map);
    }

    static xkb_keymap *compile(xkb_context *context, const Layout &layout)
    {
        const xkb_rule_names names{"evdev", "pc105", layout.name.constData(), layout.variant.constData(), ""};
        return xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    }

    CapturedKey key(quint32 keycode) const { return keymap.key(keycode, state); }
    int codeOf(quint32 keycode) const { return key(keycode).virtualKey(map); }

    /// True when another key types the same without modifiers.
    bool isTyped(quint32 keysym, quint32 except) const
    {
        for (quint32 keycode = 0; keycode < 256; ++keycode) {
            if (keycode != except && map.types(quint8(keycode), keysym)) {
                return true;
            }
        }
        return false;
    }

    XkbKeymap keymap;
    XkbKeymap::State state;
    KeyboardMap map;
    KeyTranslator::Held held;
    KeyTranslator translator;
};

} // namespace

class tst_EveryLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyRecordedKeyIsPressedAgain_data();
    void everyRecordedKeyIsPressedAgain();
    void keysOfManyLayouts_data();
    void keysOfManyLayouts();
    void keysWithoutACodeAreNotRecorded();
    void aKeyWithoutTheActiveGroupKeepsItsOwn();

private:
    std::unique_ptr<xkb_context, Unref> m_context;
};

void tst_EveryLayout::initTestCase()
{
    m_context.reset(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    QVERIFY(allLayouts().size() > 500);
}

void tst_EveryLayout::everyRecordedKeyIsPressedAgain_data()
{
    QTest::addColumn<bool>("numLock");
    QTest::newRow("NumLock off") << false;
    QTest::newRow("NumLock on") << true;
}

void tst_EveryLayout::everyRecordedKeyIsPressedAgain()
{
    QFETCH(bool, numLock);
    QStringList wrong;
    int pressedAgain = 0;
    for (const Layout &layout : allLayouts()) {
        Rig rig(m_context.get(), layout, numLock);
        QVERIFY2(rig.keymap.isValid(), (layout.name + ' ' + layout.variant).constData());
        for (quint32 keycode = 9; keycode < 256; ++keycode) {
            const quint32 symbol = rig.map.symbolAt(quint8(keycode));
            const int code = rig.codeOf(keycode);
            const KeyTranslator::Stroke stroke = rig.translator.strokeFor(quint16(code));
            const QString what =
                QStringLiteral("%1(%2) key %3, symbol %4: code %5 presses %6")
                    .arg(QString::fromLatin1(layout.name), QString::fromLatin1(layout.variant))
                    .arg(keycode)
                    .arg(symbol, 0, 16)
                    .arg(code)
                    .arg(stroke.keycode);
            if (code == 0) {
                // Nothing that types a character goes unrecorded unless another key types it too.
                const bool hasNoCode =
                    KeysymTable::virtualKeyOf(symbol) == 0 && KeysymTable::characterCode(symbol) == 0;
                if (!hasNoCode && !rig.isTyped(symbol, keycode) && KeysymTable::isCharacter(symbol)) {
                    wrong << what;
                }
            } else if (stroke.keycode == keycode && stroke.modifiers == 0) {
                ++pressedAgain;
            } else if (!standsForLatin(symbol) && !KeysymTable::isOneKeyWithAnother(symbol) &&
                       !rig.map.types(stroke.keycode, symbol)) {
                wrong << what;
            }
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
    QVERIFY(pressedAgain > 50000);
}

void tst_EveryLayout::keysOfManyLayouts_data()
{
    QTest::addColumn<QByteArray>("layout");
    QTest::addColumn<quint32>("keycode");
    QTest::addColumn<int>("code");
    const auto row = [](const char *name, const char *layout, quint32 keycode, int code) {
        QTest::newRow(name) << QByteArray(layout) << keycode << code;
    };
    row("hr, š", "hr", 34, 0x100 + 0x161);
    row("hu, ő", "hu", 34, 0x100 + 0x151);
    row("tr, ğ", "tr", 34, 0x100 + 0x11f);
    row("cz, ě", "cz", 11, 0x100 + 0x11b);
    row("sk, ľ", "sk", 11, 0x100 + 0x13e);
    row("lt, ą", "lt", 10, 0x100 + 0x105);
    row("vn, ă", "vn", 10, 0x100 + 0x103);
    row("de, ü as ever", "de", 34, 508);
    row("fr, &", "fr", 10, 0x100 + '&');
    row("fr, é", "fr", 11, 0x100 + 0xe9);
    row("fr, ' and 4", "fr", 13, 0xde);
    row("fr, - and 6", "fr", 15, 0xbd);
    row("ru, ф", "ru", 38, 'A');
    row("ru, ё", "ru", 49, 0xc0);
    row("gr, α", "gr", 38, 'A');
    row("il, ש", "il", 38, 'A');
    row("ara, ش", "ara", 38, 'A');
    row("th, ฟ", "th", 38, 0x100 + 0xe1f);
    row("jp, Zenkaku/Hankaku", "jp", 49, 0xf3);
}

void tst_EveryLayout::keysOfManyLayouts()
{
    QFETCH(QByteArray, layout);
    QFETCH(quint32, keycode);
    const Rig rig(m_context.get(), {layout, {}}, false);
    QTEST(rig.codeOf(keycode), "code");
}

void tst_EveryLayout::keysWithoutACodeAreNotRecorded()
{
    const Rig us(m_context.get(), {"us", {}}, false);
    for (const quint32 keycode : {158U /* WWW */, 232U /* brightness */, 255U /* RFKill */}) {
        QVERIFY(us.key(keycode).pressed != 0);
        QCOMPARE(us.codeOf(keycode), 0);
    }
    const Rig vn(m_context.get(), {"vn", "fr"}, false);
    const quint32 deadHook = 0xfe61;
    int hooks = 0;
    for (quint32 keycode = 9; keycode < 256; ++keycode) {
        if (vn.key(keycode).plain == deadHook) {
            ++hooks;
            QCOMPARE(vn.codeOf(keycode), 0);
        }
    }
    QCOMPARE(hooks, 1);
}

void tst_EveryLayout::aKeyWithoutTheActiveGroupKeepsItsOwn()
{
    const XkbKeymap keymap(Rig::compile(m_context.get(), {"us,ru", {}}));
    for (const quint32 group : {0U, 1U}) {
        const XkbKeymap::State state{group, 0, 0};
        const KeyboardMap map = keymap.map(state);
        QCOMPARE(keymap.key(36, state).virtualKey(map), 13); // Return has one group only
        QCOMPARE(map.placeOf(13).keycode, quint8(36));
        QCOMPARE(keymap.key(38, state).virtualKey(map), int('A')); // ф takes the letter of the other group
    }
}

QTEST_APPLESS_MAIN(tst_EveryLayout)

#include "tst_EveryLayout.moc"
