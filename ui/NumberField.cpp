#include "ui/NumberField.h"

namespace
{

const QLatin1String invalidStyle("QLineEdit { color : red;}");

} // namespace

NumberField::NumberField(int highest, const QString &style, QWidget *parent)
    : QLineEdit(parent)
    , m_style(style)
    , m_highest(highest)
{
    setStyleSheet(m_style);
}

void NumberField::setValue(int value)
{
    m_value = value;
    setText(QString::number(value));
    showValidity(isInRange(value));
}

bool NumberField::isInRange(int number) const
{
    return number >= 0 && number <= m_highest;
}

void NumberField::showValidity(bool valid)
{
    setStyleSheet(valid ? m_style : QString(invalidStyle));
}

bool NumberField::takeOver()
{
    bool isNumber = false;
    const int number = text().toInt(&isNumber);
    const bool valid = isHidden() || (isNumber && isInRange(number));
    if (valid && !isHidden()) {
        m_value = number;
    }
    showValidity(valid);
    return valid;
}
