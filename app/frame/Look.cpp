#include "app/frame/Look.h"

#include "app/frame/FittingText.h"

namespace
{

QString family(Look::Face face)
{
    switch (face) {
    case Look::Face::DialogLight:
        return QStringLiteral("Source Sans Pro ExtraLight");
    case Look::Face::DialogStrong:
        return QStringLiteral("Source Sans Pro Semibold");
    case Look::Face::Menu:
        return QStringLiteral("Segoe UI");
    case Look::Face::Page:
        break;
    }
    return QStringLiteral("Source Sans Pro");
}

} // namespace

QString Look::pageSheet()
{
    return QStringLiteral("background-color:#5342d9");
}

QString Look::accented(const char *rules)
{
    return QString::fromLatin1(rules).replace(QLatin1String("@accent"), accent.name());
}

QFont Look::font(Face face, int pointSize, int weight)
{
    return QFont(family(face), pointSize, weight);
}

QLabel *Look::addText(QWidget *parent, const QString &text, const QRect &place, const QString &sheet,
                      const QFont &font, Qt::Alignment alignment)
{
    auto *label = addPicture(parent, place, sheet);
    label->setFont(font);
    label->setAlignment(alignment);
    FittingText::showUnmeasured(label, text);
    return label;
}
