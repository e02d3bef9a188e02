#pragma once

#include <QtGlobal>

/// One decoded report of the device. A plain value; the fields that its kind does not name are zero.
struct DeviceEvent {
    enum class Kind {
        Button,    ///< a button went down or up: `button`, `pressing`
        KnobType,  ///< the knob was touched, let go or turned a step: `type`
        KnobCount, ///< the knob turned by a number of steps: `count`
    };

    Kind kind = Kind::Button;
    /// 0 to 9 for a sound device. A garbled report can carry any byte's code minus 48, so -48 to 207.
    int button = 0;
    bool pressing = false;
    /// The character that the device sent, unchanged.
    char type = 0;
    /// Any int; the sign is the direction.
    int count = 0;

    static DeviceEvent buttonChanged(int button, bool pressing)
    {
        return {Kind::Button, button, pressing, 0, 0};
    }
    static DeviceEvent knobChanged(char type) { return {Kind::KnobType, 0, false, type, 0}; }
    static DeviceEvent knobCounted(int count) { return {Kind::KnobCount, 0, false, 0, count}; }

    friend bool operator==(const DeviceEvent &a, const DeviceEvent &b)
    {
        return a.kind == b.kind && a.button == b.button && a.pressing == b.pressing && a.type == b.type &&
               a.count == b.count;
    }
    friend bool operator!=(const DeviceEvent &a, const DeviceEvent &b) { return !(a == b); }
};
