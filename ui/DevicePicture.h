#pragma once

#include "app/frame/SheetPicture.h"

#include <QLabel>
#include <QRect>
#include <QStringList>

/// The drawing of the device. Each of its controls tells in a tool tip what it does, and can be clicked.
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

    /// What each control does, a line for each layer.
    void setControlToolTips(const QStringList &texts) { m_toolTips = texts; }

    /// Tool tips look as those of @p host, which must outlive this object.
    void setToolTipHost(QWidget *host) { m_toolTipHost = host; }

Q_SIGNALS:
    void clicked(int control); ///< 0 to 9, by the mouse

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    int controlAt(QPoint position) const;
    QString toolTipAt(QPoint position) const;

    SheetPicture m_picture;
    QStringList m_toolTips;
    QWidget *m_toolTipHost = this;
};
