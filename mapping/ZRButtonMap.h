#pragma once

#include "mapping/ShortCut.h"

#include <QList>
#include <QMetaType>
#include <QObject>
#include <QString>

/// One named mapping: what each of the ten controls does in each of the three layers.
///
/// Holds data only. Lists of maps travel through signals; whoever receives a list owns its maps.
class ZRButtonMap : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ZRButtonMap)

public:
    static constexpr int buttonCount = 10;
    static constexpr int layerCount = 3; ///< 0 Normal, 1 Shift 1, 2 Shift 2

    explicit ZRButtonMap(const QString &name, QObject *parent = nullptr);

    /// Stores `key1` to `v_off_enable` of @p action; the knob fields of the stored entry stay as they are.
    /// Does nothing for a button outside 0 to 9 or a layer outside 0 to 2.
    void setAction(int button, int layer, const shortCut &action);

    /// The form for mapping files: @p button as decimal text (text that is no number addresses button 0),
    /// @p layer as one of the names of layerName(), compared case-sensitively.
    void setAction(const QString &button, const QString &layer, shortCut action);

    /// "NORMAL", "SHIFT1" or "SHIFT2", as mapping files write it. @p layer is 0 to 2.
    static QString layerName(int layer);

    shortCut actions[buttonCount][layerCount]; ///< indexed [button][layer]
    QString name;                              ///< shown in the selector, "software" in the files
};

Q_DECLARE_METATYPE(ZRButtonMap *)
Q_DECLARE_METATYPE(QList<ZRButtonMap *>)
