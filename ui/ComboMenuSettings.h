#pragma once

#include "mapping/ActionTable.h"

#include <QString>

class Settings;

/// What the user's settings hold of one control: its assignment in each layer, under the names of ActionKeys.
///
/// Written values reach the file when control returns to the event loop.
class ComboMenuSettings
{
    Q_DISABLE_COPY_MOVE(ComboMenuSettings)

public:
    /// What @p settings hold of all ten controls.
    static ActionTable readAll(Settings &settings);

    /// @p control is 0 to 9. @p settings must outlive this object.
    ComboMenuSettings(Settings &settings, int control);

    /// Brings what an older version of the program has stored into today's form.
    void upgrade();

    /// The stored assignment. What is not stored has the value that a new entry has.
    shortCut read(Layer layer) const;

    /// Stores all fourteen fields.
    void write(Layer layer, const shortCut &action);

    /// Stores the three keys and the label, and leaves the rest of the layer's fields as they are.
    void writeKeys(Layer layer, const shortCut &action);

private:
    QString key(Layer layer, const char *field) const;
    QString key(Layer layer, const QString &field) const;

    Settings &m_settings;
    const int m_control;
};
