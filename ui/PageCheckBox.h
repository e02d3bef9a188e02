#pragma once

#include <QCheckBox>

/// A check box whose square is seen on the page's violet: the toolkit's own is nearly as dark as that.
class PageCheckBox : public QCheckBox
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PageCheckBox)

public:
    explicit PageCheckBox(QWidget *parent = nullptr);
    ~PageCheckBox() override = default;

protected:
    void paintEvent(QPaintEvent *event) override;
};
