#pragma once

#include "app/frame/SheetPicture.h"

#include <QLabel>
#include <QRect>
#include <QStringList>

/// The drawing of the device. Each of its controls tells in a tool tip what it does.
class DevicePicture : public QLabel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DevicePicture)

public:
    /// Where the drawing lies on the page, and where on it the marks of the ten controls and of the knob are.
    static constexpr QRect place{248, 258, 402, 192};

    /// The mark of control @p control on the page; of the knob for -1.
    static QRect mark(int control);

    explicit DevicePicture(QWidget *parent);

    /// One text per control.
    void setControlToolTips(const QStringList &texts) { m_toolTips = texts; }
    void setKnobToolTip(const QString &text) { m_knobToolTip = text; }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString toolTipAt(QPoint position) const;

    SheetPicture m_picture;
    QStringList m_toolTips;
    QString m_knobToolTip;
};
