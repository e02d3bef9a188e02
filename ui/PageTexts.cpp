#include "ui/PageTexts.h"

#include "app/frame/FittingText.h"
#include "app/frame/Look.h"
#include "engine/MidiActions.h"

#include <QFontMetrics>
#include <QLabel>

namespace
{

QString sheet(PageTexts::Ink ink)
{
    constexpr const char *alphas[] = {"0.87", "0.57", "0.60", "0.40"};
    return QStringLiteral("QLabel { color : rgba(255,255,255,%1); }")
        .arg(QLatin1String(alphas[static_cast<int>(ink)]));
}

// The port's name is not this program's, the word for none is.
QString shownName(const QString &midiPortName)
{
    return midiPortName == QLatin1String(MidiActions::notAvailable)
               ? QCoreApplication::translate("MidiActions", MidiActions::notAvailable)
               : midiPortName;
}

// The scale's ends are words that other languages have no shorter ones for; there is room between them.
void addScaleEnd(QWidget &page, const char *word, QRect place, bool left)
{
    const QString text = PageTexts::tr(word);
    const QFont font = Look::font(Look::Face::Page, 11);
    if (text != QLatin1String(word)) {
        // The words of the design have no descenders.
        const QFontMetrics metrics(font);
        const int wider = qMax(0, metrics.horizontalAdvance(text) - place.width());
        const int taller = qMax(0, metrics.height() - place.height() + 1) / 2;
        place.adjust(left ? 0 : -wider, -taller, left ? wider : 0, taller);
    }
    PageTexts::add(page, text, place, PageTexts::Ink::Dim, 11, QFont::Normal)->setAlignment(Qt::AlignVCenter);
}

} // namespace

QLabel *PageTexts::add(QWidget &page, const QString &text, const QRect &place, Ink ink, int pointSize,
                       int weight)
{
    return Look::addText(&page, text, place, sheet(ink), Look::font(Look::Face::Page, pointSize, weight));
}

void PageTexts::addAll(QWidget &page, const QString &midiPortName)
{
    const struct {
        QString text;
        QRect place;
        Ink ink;
        int pointSize;
        int weight;
        Qt::Alignment alignment;
    } texts[] = {
        {tr("VELTRIX"), {260, 129, 378, 44}, Ink::Bright, 37, QFont::Light, Qt::AlignCenter},
        {tr("Knob and buttons settings."),
         {295, 185, 301, 60},
         Ink::Middle,
         20,
         QFont::Light,
         Qt::AlignCenter},
        {tr("Knob sensitivity adjustment"),
         {349, 490, 200, 20},
         Ink::Bright,
         13,
         QFont::Normal,
         Qt::AlignCenter},
        {tr("NORMAL"), {315, 524, 38, 11}, Ink::Bright, 8, QFont::Normal, Qt::AlignVCenter},
        {tr("SHIFT 1"), {315, 564, 34, 11}, Ink::Bright, 8, QFont::Normal, Qt::AlignVCenter},
    };
    for (const auto &each : texts) {
        add(page, each.text, each.place, each.ink, each.pointSize, each.weight)->setAlignment(each.alignment);
    }

    addScaleEnd(page, QT_TR_NOOP("Slow"), {359, 590, 30, 14}, true);
    addScaleEnd(page, QT_TR_NOOP("Fast"), {520, 590, 26, 14}, false);

    QLabel *midi = add(page, QString(), {690, 625, 200, 15}, Ink::Faint, 10, QFont::Normal);
    midi->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    midi->setObjectName(QStringLiteral("midiPort"));
    FittingText::show(
        midi, tr("MIDI: ") + shownName(midiPortName),
        tr("The MIDI output in use: the first one whose name contains \"FROM\" when the program "
           "starts"));
}

QLabel *PageTexts::addNotice(QWidget &page)
{
    QLabel *label = add(page, QString(), {150, 606, 600, 16}, Ink::Bright, 10, QFont::Normal);
    label->setAlignment(Qt::AlignCenter);
    label->hide();
    return label;
}

void PageTexts::showNotice(QLabel &notice, const QString &sentence, const char *objectName)
{
    if (!sentence.isEmpty()) {
        notice.setObjectName(QLatin1String(objectName));
        FittingText::show(&notice, sentence);
        notice.show();
    }
}
