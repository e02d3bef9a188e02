#pragma once

#include <QString>
#include <QTimer>
#include <QWidget>

/// A text above everything near the bottom of the screen where the pointer is, for a moment. Takes neither
/// the focus nor a click, and is in no list of windows.
class ScreenNote : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ScreenNote)

public:
    static constexpr int shownFor = 800; ///< ms

    ScreenNote();

    /// Shows @p text; the time begins anew.
    void say(const QString &text);

    const QString &text() const { return m_text; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void place();

    QString m_text;
    QTimer m_end;
};
