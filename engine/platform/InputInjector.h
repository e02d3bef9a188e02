#pragma once

#include <QVector>
#include <QtGlobal>

/// Injects keyboard and mouse-button input into whatever application has the focus.
///
/// The primitives only: chords, their order and layers are expanded above. A call returns once the event is
/// on its way; an event that the system refuses is lost without a word. Used on the GUI thread.
class InputInjector
{
    Q_DISABLE_COPY_MOVE(InputInjector)

public:
    InputInjector() = default;
    virtual ~InputInjector() = default;

    /// Sends one key event. @p virtualKey is a Windows virtual-key code, which is what mappings store on
    /// every platform. A code that this system has no key for is logged once and skipped.
    virtual void sendKey(quint16 virtualKey, bool down) = 0;

    /// Sends one event of the left mouse button.
    virtual void sendLeftButton(bool down) = 0;

    /// Tells which keys will be wanted soon, so that what is costly about them is done before the press.
    virtual void prepareKeys(const QVector<quint16> &virtualKeys) { Q_UNUSED(virtualKeys) }
};
