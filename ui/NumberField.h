#pragma once

#include <QLineEdit>

/// A field for a number from 0 to a highest one. Anything else in it is shown red.
class NumberField : public QLineEdit
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(NumberField)

public:
    /// @p style is the field's sheet while what it holds is valid.
    NumberField(int highest, const QString &style, QWidget *parent);

    /// A @p value that is out of the range is taken too, and shown red.
    void setValue(int value);

    /// The last valid number.
    int value() const { return m_value; }

    /// Takes the text over as the value and shows whether it can be one. A hidden field keeps its value and
    /// is always valid.
    bool takeOver();

private:
    bool isInRange(int number) const;
    void showValidity(bool valid);

    const QString m_style;
    const int m_highest;
    int m_value = 0;
};
