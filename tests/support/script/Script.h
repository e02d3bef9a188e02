#pragma once

#include "mapping/Layer.h"
#include "mapping/ShortCut.h"

#include <QByteArray>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QVector>

/// One line of a text script in which something happens to the program.
struct ScriptStep {
    enum class Kind {
        // what is so before the device is plugged in
        Assign,      ///< `button`, `layer`, `action`
        Screens,     ///< `screens`
        At,          ///< `point`: where the pointer starts
        Sensitivity, ///< `number` (Normal), `number2` (Shift 1)
        // what happens then
        Button,    ///< `button`, `pressing`
        KnobType,  ///< `type`
        KnobCount, ///< `number`
        Wait,      ///< `number` milliseconds
        Plug,
        Unplug,
        Raw,   ///< `bytes` from the device
        Mouse, ///< `point`: where the user moves the mouse
        Remap, ///< as Assign
    };

    Kind kind = Kind::Wait;
    int line = 0; ///< where it stands in the file, from 1
    int button = 0;
    Layer layer = Layer::Normal;
    bool pressing = false;
    char type = 0;
    int number = 0;
    int number2 = 0;
    QPoint point;
    QByteArray bytes;
    QVector<QRect> screens;
    shortCut action;
};

/// A text script: what is set up, what the device does, what the program puts out.
struct Script {
    QVector<ScriptStep> setUp;
    QVector<ScriptStep> events;
    QStringList expected;
    bool inProcessOnly = false; ///< cannot run against the real program
};
