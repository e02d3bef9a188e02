#pragma once

#include "engine/platform/Pointer.h"
#include "engine/platform/uinput/UinputDevices.h"

#include <functional>

/// The pointer of a session that does not say where it is.
///
/// What counts is what the program itself has done: the place is that of the last jump plus the steps since.
/// Before the first jump, and once the screens have changed, it is unknown; it then counts from the desktop's
/// corner. Steps are relative motion, to which the desktop applies its pointer acceleration.
class UinputPointer final : public Pointer
{
    Q_DISABLE_COPY_MOVE(UinputPointer)

public:
    using Screens = std::function<QVector<QRect>()>;

    /// @p screens gives the outputs' places in the compositor's order, or nothing while they are unknown.
    UinputPointer(std::shared_ptr<UinputDevices> devices, Screens screens);

    QPoint position() const override;

    /// Moves by the difference to position(): a step is sent as it is, and a return to an earlier position
    /// takes back the steps since, those after a jump to another screen at most.
    void moveTo(QPoint position) override;

    /// Puts the pointer there; while its place is unknown, onto the middle of the screen that is meant. Does
    /// nothing with a single screen.
    void jumpTo(QPoint position) override;

    QVector<QRect> screens() const override;

private:
    void forgetPlaceOnOtherScreens();

    std::shared_ptr<UinputDevices> m_devices;
    Screens m_screens;
    QVector<QRect> m_jumpScreens; // as they were at the last jump
    QPoint m_place;               // of the last jump
    QPoint m_moved;               // since then
    bool m_known = false;
};
