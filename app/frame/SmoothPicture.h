#pragma once

#include <QLabel>
#include <QPixmap>

/// A label whose style sheet's picture is made to measure where a screen's scale is no whole number.
///
/// Pictures come in one and in two times their size. The toolkit shows anything between by leaving out pixels of the
/// larger one: edges become jagged, and of two equal lines one may be twice as wide. Here each pixel is the mean of
/// what lies below it, worked out once per scale.
class SmoothPicture : public QLabel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SmoothPicture)

public:
    explicit SmoothPicture(QWidget *parent = nullptr);
    ~SmoothPicture() override = default;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap madeFor(qreal scale);

    QPixmap m_made;
    QString m_madeOf; // the style sheet
};
