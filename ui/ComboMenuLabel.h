#pragma once

#include <QLabel>
#include <QStringList>
#include <QVector>

/// A line of texts with bars between them. When it gets too narrow, the longest texts are the first to lose
/// their ends; text() keeps all of it. A combination of keys is written shorter instead, and what is lost at
/// last is its beginning: its last key is the one that tells it from others.
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

    /// The parts of which letters are missing in shownText(), by their place in the line.
    QVector<int> cutParts() const;

    /// The part @p index is drawn in the colours of its ground, and its ground in its own; none for -1.
    void setStandingOut(int index);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QStringList shownParts() const;

    QStringList m_parts;
    int m_standingOut = -1;
};
