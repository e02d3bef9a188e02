#include "app/frame/FittingText.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QEvent>
#include <QFontMetrics>
#include <QLabel>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTextDocument>

#include <utility>

namespace
{

// Percent; below it letters look wrong.
constexpr int narrowest = 80;

int roomFor(const QAbstractButton &button)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    const auto contents = qobject_cast<const QCheckBox *>(&button) ? QStyle::SE_CheckBoxContents
                                                                   : QStyle::SE_PushButtonContents;
    return button.style()->subElementRect(contents, &option, &button).width();
}

int roomFor(const QLabel &label)
{
    return label.contentsRect().width() - 2 * label.margin();
}

// Until the label has been shown, or has got another text.
class FitWhenShown : public QObject
{
    Q_DISABLE_COPY_MOVE(FitWhenShown)

public:
    FitWhenShown(QLabel *label, QString text)
        : QObject(label)
        , m_label(label)
        , m_text(std::move(text))
    {
        label->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show) {
            watched->removeEventFilter(this);
            deleteLater();
            if (m_label->text() == m_text) {
                // What it was told meanwhile stays.
                const QString name = m_label->accessibleName();
                const QString help = m_label->toolTip();
                FittingText::show(m_label, m_text);
                m_label->setAccessibleName(name);
                if (!help.isEmpty()) {
                    m_label->setToolTip(help);
                }
            }
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QLabel *m_label;
    QString m_text;
};

} // namespace

QString FittingText::toolTip(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

QString FittingText::fit(QWidget *widget, const QString &text, int width, const QString &help,
                         Qt::TextElideMode mode)
{
    // Most texts fit as they are. Their fonts are left alone: each other font is looked up and loaded anew.
    const bool narrowed = widget->font().stretch() > 0 && widget->font().stretch() < QFont::Unstretched;
    QString shown = text;
    if (narrowed || widget->fontMetrics().horizontalAdvance(text) > width) {
        QFont font = widget->font();
        font.setStretch(QFont::Unstretched);
        const int wanted = QFontMetrics(font).horizontalAdvance(text);
        if (wanted > width) {
            int stretch = qMax(narrowest, width * 100 / (wanted + 1));
            font.setStretch(stretch);
            // Letters have whole widths on some systems, which do not shrink evenly.
            while (stretch > narrowest && QFontMetrics(font).horizontalAdvance(text) > width) {
                font.setStretch(--stretch);
            }
        }
        widget->setFont(font);
        const QFontMetrics metrics(font);
        if (metrics.horizontalAdvance(text) > width) {
            shown = metrics.elidedText(text, mode, width);
        }
    }
    QString tip = help;
    if (shown != text) {
        tip = help.isEmpty() ? text : text + QLatin1Char('\n') + help;
    }
    widget->setToolTip(toolTip(tip));
    widget->setAccessibleName(text);
    return shown;
}

void FittingText::show(QLabel *label, const QString &text, const QString &help, Qt::TextElideMode mode)
{
    label->setTextFormat(Qt::PlainText); // parts of it may come from the network
    label->setText(fit(label, text, roomFor(*label), help, mode));
}

void FittingText::show(QAbstractButton *button, const QString &text, const QString &help)
{
    button->setText(fit(button, text, roomFor(*button), help));
}

void FittingText::showUnmeasured(QLabel *label, const QString &text)
{
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setAccessibleName(text);
    if (!text.isEmpty()) {
        new FitWhenShown(label, text);
    }
}
