#pragma once

#include "mapping/ActionTable.h"

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
    explicit ZRButtonMap(const QString &name, QObject *parent = nullptr);

    /// Stores `key1` to `v_off_enable` of @p action; the knob fields of the stored entry stay as they are.
    /// Does nothing for a button outside 0 to 9 or a layer outside 0 to 2 (see Layers::number()).
    void setAction(int button, int layer, const shortCut &action);

    /// The form for mapping files: @p button as decimal text (text that is no number addresses button 0),
    /// @p layer as its Layers::fileName(), compared case-sensitively.
    void setAction(const QString &button, const QString &layer, shortCut action);

    ActionTable actions; ///< indexed [button][layer]
    QString name;        ///< shown in the selector, "software" in the files
};

Q_DECLARE_METATYPE(ZRButtonMap *)
Q_DECLARE_METATYPE(QList<ZRButtonMap *>)
