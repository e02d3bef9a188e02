#pragma once

#include "engine/KnobMode.h"

#include <QLabel>
#include <QRect>
#include <QString>

/// The quiet line under the drawing of the device, printed with it: which mapping is in use, whether it has
/// been changed since, and what the knob does, if that is not the usual thing. Follows nothing by itself.
class NameLine : public QLabel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(NameLine)

public:
    /// On the page, below the drawing and its lines.
    static constexpr QRect place{249, 451, 402, 20};

    explicit NameLine(QWidget *page);

    /// @p name is empty for a mapping that has none.
    void setMapping(const QString &name, bool changed);
    void setKnobMode(KnobMode mode);

private:
    void refresh();

    QString m_name;
    bool m_changed = false;
    KnobMode m_mode = KnobMode::Circular;
};
