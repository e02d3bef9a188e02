#include "app/frame/AppFonts.h"
#include "app/frame/FittingText.h"
#include "tests/support/main/Main.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QLabel>
#include <QTest>
#include <QTextDocument>

namespace
{

const QString text = QStringLiteral("Knob sensitivity");

/// The widget, so wide that it has room for this part of the text in percent.
template <typename Widget>
void prepare(Widget &widget, int percent, int besides = 0)
{
    widget.setFont(QFont(QStringLiteral("Source Sans Pro"), 12));
    const int needed = QFontMetrics(widget.font()).horizontalAdvance(text);
    widget.resize(needed * percent / 100 + besides, 24);
}

} // namespace

class tst_FittingText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { AppFonts::load(); }
    void leavesATextThatFitsAlone();
    void drawsATextNarrowerThatIsALittleTooWide();
    void cutsNothingThatFitsWhenDrawnNarrowest();
    void cutsATextThatIsMuchTooWideAndTellsTheWhole();
    void startsAnewWithEveryText();
    void cutsWhereItIsTold();
    void knowsTheRoomBesideACheckBox();
    void showsMarkupAsItIs();
    void measuresWhatWasUnmeasuredWhenItIsShown();
    void leavesALaterTextAndNameAlone();
};

void tst_FittingText::leavesATextThatFitsAlone()
{
    QLabel label;
    prepare(label, 101);
    const QFont before = label.font();
    FittingText::show(&label, text, QStringLiteral("help"));
    QCOMPARE(label.text(), text);
    QCOMPARE(label.font(), before);
    QCOMPARE(label.toolTip(), QStringLiteral("help"));
    QCOMPARE(label.accessibleName(), text);
}

void tst_FittingText::drawsATextNarrowerThatIsALittleTooWide()
{
    QLabel label;
    prepare(label, 90);
    FittingText::show(&label, text);
    QCOMPARE(label.text(), text);
    QVERIFY(label.font().stretch() >= 80 && label.font().stretch() <= 90);
    QVERIFY(label.fontMetrics().horizontalAdvance(text) <= label.width());
    QCOMPARE(label.toolTip(), QString());
}

void tst_FittingText::cutsNothingThatFitsWhenDrawnNarrowest()
{
    // Where widths are rounded letter by letter, a text shrinks in jumps and not by what was asked for.
    int steppedDown = 0;
    for (const char *word : {"Fast", "Slow", "iiiiiiii", "Updating maps", "Illimitable will"}) {
        const QString shown = QString::fromLatin1(word);
        for (int size = 7; size <= 12; ++size) {
            QFont font(QStringLiteral("Source Sans Pro"), size);
            font.setHintingPreference(QFont::PreferFullHinting);
            const int needed = QFontMetrics(font).horizontalAdvance(shown);
            for (int width = needed * 3 / 4; width < needed; ++width) {
                QLabel label;
                label.setFont(font);
                label.resize(width, 24);
                FittingText::show(&label, shown);
                const bool fits = label.fontMetrics().horizontalAdvance(shown) <= width;
                QVERIFY(fits ? label.text() == shown : label.font().stretch() == 80);
                steppedDown += label.font().stretch() < qMax(80, width * 100 / (needed + 1)) ? 1 : 0;
            }
        }
    }
    QVERIFY(steppedDown > 0); // or nothing was tested
}

void tst_FittingText::cutsATextThatIsMuchTooWideAndTellsTheWhole()
{
    QLabel label;
    prepare(label, 50);
    FittingText::show(&label, text, QStringLiteral("help"));
    QVERIFY(label.text().startsWith(QStringLiteral("Knob")) && label.text().endsWith(QChar(0x2026)));
    QVERIFY(label.fontMetrics().horizontalAdvance(label.text()) <= label.width());
    QCOMPARE(label.toolTip(), text + QStringLiteral("\nhelp"));
    QCOMPARE(label.accessibleName(), text);
}

void tst_FittingText::startsAnewWithEveryText()
{
    QLabel label;
    prepare(label, 50);
    FittingText::show(&label, text);
    FittingText::show(&label, QStringLiteral("Knob"));
    QCOMPARE(label.text(), QStringLiteral("Knob"));
    QCOMPARE(label.font().stretch(), int(QFont::Unstretched));
    QCOMPARE(label.toolTip(), QString());
}

void tst_FittingText::cutsWhereItIsTold()
{
    QLabel label;
    prepare(label, 50);
    FittingText::show(&label, text, {}, Qt::ElideLeft);
    QVERIFY(label.text().startsWith(QChar(0x2026)) && label.text().endsWith(QStringLiteral("ity")));
}

void tst_FittingText::knowsTheRoomBesideACheckBox()
{
    QCheckBox box;
    prepare(box, 101);
    FittingText::show(&box, text);
    QVERIFY(box.font().stretch() < int(QFont::Unstretched) || box.text() != text);
    prepare(box, 101, 40);
    FittingText::show(&box, text);
    QCOMPARE(box.text(), text);
    QVERIFY(box.font().stretch() == QFont::AnyStretch || box.font().stretch() == QFont::Unstretched);
}

void tst_FittingText::showsMarkupAsItIs()
{
    const QString markup = QStringLiteral("2<h1>Veltrix</h1><img src='file:///x.png'> now?");
    QLabel label;
    prepare(label, 50);
    FittingText::show(&label, markup);
    QCOMPARE(label.textFormat(), Qt::PlainText);
    QTextDocument toolTip;
    toolTip.setHtml(label.toolTip());
    QCOMPARE(toolTip.toPlainText(), markup);
}

void tst_FittingText::measuresWhatWasUnmeasuredWhenItIsShown()
{
    QWidget page;
    auto *label = new QLabel(&page);
    prepare(*label, 50);
    const QFont before = label->font();
    FittingText::showUnmeasured(label, text);
    QCOMPARE(label->text(), text);
    QCOMPARE(label->font(), before);
    QCOMPARE(label->accessibleName(), text);
    page.show();
    QVERIFY(label->text().endsWith(QChar(0x2026)));
    QVERIFY(label->fontMetrics().horizontalAdvance(label->text()) <= label->width());
    QCOMPARE(label->toolTip(), text);
    QCOMPARE(label->accessibleName(), text);
}

void tst_FittingText::leavesALaterTextAndNameAlone()
{
    QWidget page;
    auto *label = new QLabel(&page);
    prepare(*label, 50);
    FittingText::showUnmeasured(label, text);
    label->setAccessibleName(QStringLiteral("name"));
    label->setToolTip(QStringLiteral("help"));
    auto *other = new QLabel(&page);
    prepare(*other, 50);
    const QFont before = other->font();
    FittingText::showUnmeasured(other, text);
    FittingText::show(other, QStringLiteral("Knob"));
    page.show();
    QCOMPARE(label->accessibleName(), QStringLiteral("name"));
    QCOMPARE(label->toolTip(), QStringLiteral("help"));
    QCOMPARE(other->text(), QStringLiteral("Knob"));
    QCOMPARE(other->font(), before);
}

QTEST_MAIN(tst_FittingText)
#include "tst_FittingText.moc"
