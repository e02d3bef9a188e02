#pragma once

#include <QLabel>
#include <QStringList>

/// A line of texts with bars between them. When it gets too narrow, the longest texts are the first to lose
/// their ends; text() keeps all of it.
class ComboMenuLabel : public QLabel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ComboMenuLabel)

public:
    explicit ComboMenuLabel(QWidget *parent);

    /// text() is @p parts joined by " | ".
    void setParts(const QStringList &parts);

    /// What there is room for.
    QString shownText() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QStringList m_parts;
};
