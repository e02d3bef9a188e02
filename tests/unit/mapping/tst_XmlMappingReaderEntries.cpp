#include "ReaderInFolder.h"
#include "tests/support/main/Main.h"

#include <QTest>

/// What the entries of a mapping file become: their layers, keys, MIDI attributes and places.
class tst_XmlMappingReaderEntries : public QObject, private ReaderInFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void layersOfOtherSystemsKeepTheDefaults_data();
    void layersOfOtherSystemsKeepTheDefaults();
    void keysAreDecodedByTheirType_data();
    void keysAreDecodedByTheirType();
    void aMissingKeyIsNoKey();
    void theFirstElementOfEachKeyNameCounts();
    void aSpecialKeyEndsTheReadingOfItsLayer_data();
    void aSpecialKeyEndsTheReadingOfItsLayer();
    void midiAttributesAreRead();
    void everyTypeWithMidiInItIsAMidiAction_data();
    void everyTypeWithMidiInItIsAMidiAction();
    void midiFlagsAreTrueOnlyForOne_data();
    void midiFlagsAreTrueOnlyForOne();
    void aMidiKeyWithoutChannelGetsGeneratedValues();
    void commentsTakeAPositionLikeEveryNode();
    void aMidiActionLeavesTheOtherKeysEmpty();
    void theKnobFieldsOfAFileNeverReachTheMap();
    void buttonsAreAddressedByIdWhateverTheyAreCalled();
    void aButtonWithoutIdIsButtonZero();
    void unknownLayersAndButtonsAreIgnored();
    void theLaterOfTwoEntriesForOnePlaceWins();
    void lineEndsAndTabsInLabelsAreRead();
};

void tst_XmlMappingReaderEntries::layersOfOtherSystemsKeepTheDefaults_data()
{
    QTest::addColumn<QByteArray>("attribute");
    QTest::addColumn<bool>("isRead");
    QTest::newRow("none") << QByteArray() << true;
    QTest::newRow("empty") << QByteArray(" os=''") << true;
    QTest::newRow("win") << QByteArray(" os='win'") << true;
    QTest::newRow("mac") << QByteArray(" os='mac'") << false;
    QTest::newRow("Win") << QByteArray(" os='Win'") << false;
    QTest::newRow("windows") << QByteArray(" os='windows'") << false;
}

void tst_XmlMappingReaderEntries::layersOfOtherSystemsKeepTheDefaults()
{
    QFETCH(QByteArray, attribute);
    QFETCH(bool, isRead);
    const shortCut read = entry("<NORMAL label='L'" + attribute + "><KEY1 type='int'>65</KEY1></NORMAL>");
    if (isRead) {
        QCOMPARE(read.key1, 65);
        QCOMPARE(read.label, QStringLiteral("L"));
    } else {
        QVERIFY(read == shortCut());
    }
}

void tst_XmlMappingReaderEntries::keysAreDecodedByTheirType_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<int>("code");
    QTest::newRow("hex") << QByteArray("<KEY1 type='hex'>1B</KEY1>") << 27;
    QTest::newRow("hex, small letters") << QByteArray("<KEY1 type='hex'>1b</KEY1>") << 27;
    QTest::newRow("hex that is none") << QByteArray("<KEY1 type='hex'>xyz</KEY1>") << 0;
    QTest::newRow("hex without text") << QByteArray("<KEY1 type='hex'/>") << 0;
    QTest::newRow("hex too large") << QByteArray("<KEY1 type='hex'>FFFFFFFF</KEY1>") << 0;
    QTest::newRow("int") << QByteArray("<KEY1 type='int'>65</KEY1>") << 65;
    QTest::newRow("int, negative") << QByteArray("<KEY1 type='int'>-1</KEY1>") << -1;
    QTest::newRow("int that is none") << QByteArray("<KEY1 type='int'>6A</KEY1>") << 0;
    QTest::newRow("int too large") << QByteArray("<KEY1 type='int'>2147483648</KEY1>") << 0;
    QTest::newRow("character") << QByteArray("<KEY1>A</KEY1>") << 65;
    QTest::newRow("character of a type") << QByteArray("<KEY1 type='char'>A</KEY1>") << 65;
    QTest::newRow("first of several") << QByteArray("<KEY1 type='char'>ABC</KEY1>") << 65;
    QTest::newRow("a letter stays small") << QByteArray("<KEY1>a</KEY1>") << 97;
    QTest::newRow("beyond ASCII") << QByteArray("<KEY1>\xE2\x86\x90</KEY1>") << 0x2190;
    QTest::newRow("half of an emoji") << QByteArray("<KEY1>\xF0\x9F\x98\x80</KEY1>") << 0xD83D;
    QTest::newRow("escaped") << QByteArray("<KEY1>&lt;</KEY1>") << 60;
    QTest::newRow("no character") << QByteArray("<KEY1 type='char'></KEY1>") << -1;
    QTest::newRow("blanks alone are no text") << QByteArray("<KEY1> </KEY1>") << -1;
    QTest::newRow("type names mind the case") << QByteArray("<KEY1 type='INT'>65</KEY1>") << int('6');
    QTest::newRow("special must match") << QByteArray("<KEY1 type='specials'>vertical</KEY1>") << int('v');
    QTest::newRow("midi minds the case") << QByteArray("<KEY1 type='MIDI'>x</KEY1>") << int('x');
}

void tst_XmlMappingReaderEntries::keysAreDecodedByTheirType()
{
    QFETCH(QByteArray, key);
    QFETCH(int, code);
    QCOMPARE(entry("<NORMAL>" + key + "</NORMAL>").key1, code);
    const QByteArray second = QByteArray(key).replace("KEY1", "KEY2");
    QCOMPARE(entry("<NORMAL>" + second + "</NORMAL>").key2, code);
    const QByteArray third = QByteArray(key).replace("KEY1", "KEY3");
    QCOMPARE(entry("<NORMAL>" + third + "</NORMAL>").key3, code);
}

void tst_XmlMappingReaderEntries::aMissingKeyIsNoKey()
{
    const shortCut read = entry("<NORMAL><KEY1 type='int'>17</KEY1><KEY2 type='int'>90</KEY2></NORMAL>");
    QCOMPARE(read.key1, 17);
    QCOMPARE(read.key2, 90);
    QCOMPARE(read.key3, -1);
    const shortCut none = entry("<NORMAL/>");
    QCOMPARE(none.key1, -1);
    QCOMPARE(none.key2, -1);
    QCOMPARE(none.key3, -1);
}

void tst_XmlMappingReaderEntries::theFirstElementOfEachKeyNameCounts()
{
    const shortCut read =
        entry("<NORMAL><!-- KEY --><KEY3 type='int'>3</KEY3><KEY1 type='int'>1</KEY1>"
              "<KEY1 type='int'>9</KEY1><KEY4 type='int'>8</KEY4><key2 type='int'>7</key2></NORMAL>");
    QCOMPARE(read.key1, 1);
    QCOMPARE(read.key2, -1);
    QCOMPARE(read.key3, 3);
}

void tst_XmlMappingReaderEntries::aSpecialKeyEndsTheReadingOfItsLayer_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("code");
    QTest::newRow("case") << QByteArray("Monitor Right") << 3;
    QTest::newRow("left and right") << QByteArray("\xE2\x86\x90 \xE2\x86\x92 Key") << 7;
    QTest::newRow("up and down") << QByteArray(" \xE2\x86\x93  \xE2\x86\x91 Key") << 8;
    QTest::newRow("unknown") << QByteArray("fly") << 0;
    QTest::newRow("none") << QByteArray() << 0;
}

void tst_XmlMappingReaderEntries::aSpecialKeyEndsTheReadingOfItsLayer()
{
    QFETCH(QByteArray, text);
    QFETCH(int, code);
    const shortCut read =
        entry("<SHIFT1 label='L'><KEY1 type='special'>" + text +
                  "</KEY1><KEY2 type='int'>65</KEY2><KEY3 type='midi' channel='5'/></SHIFT1>",
              7, 1);
    QCOMPARE(read.key1, 0x1FFFFFF);
    QCOMPARE(read.key2, code);
    QCOMPARE(read.key3, -1);
    QCOMPARE(read.label, QStringLiteral("L"));
    QCOMPARE(read.channel, 0);
}

void tst_XmlMappingReaderEntries::midiAttributesAreRead()
{
    const shortCut read = entry("<SHIFT2 label='Fader'><KEY1 type='midi' channel='2' cc='7' on_touch='126' "
                                "after_touch='3' note='1' after_touch_on='0'/></SHIFT2>",
                                4, 2);
    QCOMPARE(read.key1, 0x1001262);
    QCOMPARE(read.label, QStringLiteral("Fader"));
    QCOMPARE(read.channel, 2);
    QCOMPARE(read.cc, 7);
    QCOMPARE(read.v_on, 126);
    QCOMPARE(read.v_off, 3);
    QVERIFY(read.note);
    QVERIFY(!read.v_off_enable);

    const shortCut odd = entry("<NORMAL><KEY1 type='midi' channel='x' cc='-1'/></NORMAL>");
    QCOMPARE(odd.channel, 0);
    QCOMPARE(odd.cc, -1);
    QCOMPARE(odd.v_on, 0);
    QVERIFY(!odd.v_off_enable); // a missing flag is not 1
}

void tst_XmlMappingReaderEntries::everyTypeWithMidiInItIsAMidiAction_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<int>("marker");
    QTest::newRow("midi") << QByteArray("midi") << 0x1001262;
    QTest::newRow("midi_knob") << QByteArray("midi_knob") << 0x1001261;
    QTest::newRow("midi_knobs") << QByteArray("midi_knobs") << 0x1001262;
    QTest::newRow("a midi thing") << QByteArray("a midi thing") << 0x1001262;
}

void tst_XmlMappingReaderEntries::everyTypeWithMidiInItIsAMidiAction()
{
    QFETCH(QByteArray, type);
    QFETCH(int, marker);
    QCOMPARE(entry("<NORMAL><KEY1 type='" + type + "' channel='1'/></NORMAL>").key1, marker);
}

void tst_XmlMappingReaderEntries::midiFlagsAreTrueOnlyForOne_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("expected");
    QTest::newRow("0") << QByteArray("0") << false;
    QTest::newRow("1") << QByteArray("1") << true;
    QTest::newRow("2") << QByteArray("2") << false;
    QTest::newRow("-1") << QByteArray("-1") << false;
    QTest::newRow("01") << QByteArray("01") << true;
    QTest::newRow("true") << QByteArray("true") << false;
    QTest::newRow("empty") << QByteArray("") << false;
}

void tst_XmlMappingReaderEntries::midiFlagsAreTrueOnlyForOne()
{
    QFETCH(QByteArray, value);
    QFETCH(bool, expected);
    const shortCut read = entry("<NORMAL><KEY1 type='midi' channel='1' note='" + value +
                                "' after_touch_on='" + value + "'/></NORMAL>");
    QCOMPARE(read.note, expected);
    QCOMPARE(read.v_off_enable, expected);
}

void tst_XmlMappingReaderEntries::aMidiKeyWithoutChannelGetsGeneratedValues()
{
    // The button at position 4 has another id: positions make the number, ids the place.
    list("<ZR><MAPPING><b/><b/><b/><b/><BUTTON id='7'><NORMAL/><SHIFT1 label='mine'>"
         "<KEY1 type='midi' cc='99' on_touch='1' after_touch='5' note='1' after_touch_on='0'/>"
         "</SHIFT1></BUTTON></MAPPING></ZR>");
    const shortCut &read = m_list.first()->actions[7][Layer::Shift1];
    QCOMPARE(read.key1, 0x1001262);
    QCOMPARE(read.channel, 14);
    QCOMPARE(read.cc, 41);
    QCOMPARE(read.v_on, 127);
    QCOMPARE(read.v_off, 0);
    QVERIFY(!read.note);
    QVERIFY(read.v_off_enable);
    QCOMPARE(read.label, QStringLiteral("14cc41"));

    const shortCut first = entry("<NORMAL><KEY1 type='midi_knob' channel=''/></NORMAL>");
    QCOMPARE(first.key1, 0x1001261);
    QCOMPARE(first.cc, 0);
    QCOMPARE(first.label, QStringLiteral("14cc0"));
}

void tst_XmlMappingReaderEntries::commentsTakeAPositionLikeEveryNode()
{
    list("<ZR><MAPPING>\n <!-- one --> <BUTTON id='0'>\n  <!-- two -->\n text <NORMAL>"
         "<KEY1 type='midi'/></NORMAL></BUTTON></MAPPING></ZR>");
    // Blanks between elements are no nodes; the comments and the text are.
    QCOMPARE(m_list.first()->actions[0][Layer::Normal].cc, 12);
}

void tst_XmlMappingReaderEntries::aMidiActionLeavesTheOtherKeysEmpty()
{
    const shortCut alone = entry("<NORMAL><KEY1 type='midi' channel='1'/></NORMAL>");
    QCOMPARE(alone.key2, -1);
    QCOMPARE(alone.key3, -1);
    // Reading goes on behind a MIDI key, unlike behind a special one.
    const shortCut more = entry("<NORMAL><KEY1 type='midi' channel='1'/><KEY2 type='int'>5</KEY2></NORMAL>");
    QCOMPARE(more.key1, 0x1001262);
    QCOMPARE(more.key2, 5);
    // Wherever it stands, a MIDI key decides what the entry is.
    const shortCut second = entry("<NORMAL><KEY1>A</KEY1><KEY2 type='midi' channel='1'/></NORMAL>");
    QCOMPARE(second.key1, 0x1001262);
    QCOMPARE(second.channel, 1);
}

void tst_XmlMappingReaderEntries::theKnobFieldsOfAFileNeverReachTheMap()
{
    const shortCut read = entry("<NORMAL><KEY1 type='midi_knob' channel='1' knobcc='20' m01h='1' m3fh='1' "
                                "m0_127='1'/></NORMAL>");
    QCOMPARE(read.key1, 0x1001261);
    QCOMPARE(read.knobcc, 0);
    QVERIFY(!read.m01h);
    QVERIFY(!read.m3fh);
    QVERIFY(!read.m0_127);
}

void tst_XmlMappingReaderEntries::buttonsAreAddressedByIdWhateverTheyAreCalled()
{
    list("<ZR><MAPPING><KNOB id='9'><NORMAL label='knob'/></KNOB><x id='2'><SHIFT2 label='two'/></x>"
         "</MAPPING></ZR>");
    QCOMPARE(m_list.first()->actions[9][Layer::Normal].label, QStringLiteral("knob"));
    QCOMPARE(m_list.first()->actions[2][Layer::Shift2].label, QStringLiteral("two"));
}

void tst_XmlMappingReaderEntries::aButtonWithoutIdIsButtonZero()
{
    list("<ZR><MAPPING><BUTTON><SHIFT1 label='zero'/></BUTTON></MAPPING></ZR>");
    QCOMPARE(m_list.first()->actions[0][Layer::Shift1].label, QStringLiteral("zero"));
}

void tst_XmlMappingReaderEntries::unknownLayersAndButtonsAreIgnored()
{
    list("<ZR><MAPPING>text<BUTTON id='10'><NORMAL label='x'/></BUTTON><BUTTON id='-1'><NORMAL "
         "label='x'/></BUTTON>"
         "<BUTTON id='1'>text<normal label='x'/><SHIFT3 label='x'/><!-- x --></BUTTON></MAPPING></ZR>");
    const ZRButtonMap fresh(QString(), nullptr);
    for (int button = 0; button < ActionTable::controlCount; ++button) {
        for (const Layer layer : Layers::all) {
            QVERIFY(m_list.first()->actions[button][layer] == fresh.actions[button][layer]);
        }
    }
}

void tst_XmlMappingReaderEntries::theLaterOfTwoEntriesForOnePlaceWins()
{
    list("<ZR><MAPPING><BUTTON id='1'><NORMAL label='a'/><NORMAL label='b'/></BUTTON>"
         "<BUTTON id='2'><NORMAL label='c'/></BUTTON><BUTTON id='2'><NORMAL "
         "label='d'/></BUTTON></MAPPING></ZR>");
    QCOMPARE(m_list.first()->actions[1][Layer::Normal].label, QStringLiteral("b"));
    QCOMPARE(m_list.first()->actions[2][Layer::Normal].label, QStringLiteral("d"));
}

void tst_XmlMappingReaderEntries::lineEndsAndTabsInLabelsAreRead()
{
    QCOMPARE(entry("<NORMAL label='  a&#10;b&#9;c&#13;d &lt;&amp;&quot; '/>").label,
             QStringLiteral("  a\nb\tc\rd <&\" "));
}

QTEST_GUILESS_MAIN(tst_XmlMappingReaderEntries)
#include "tst_XmlMappingReaderEntries.moc"
