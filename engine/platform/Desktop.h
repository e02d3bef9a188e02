#pragma once

#include <QtGlobal>

/// What the window system knows that the pages need. Used on the GUI thread; asked now and then, by a
/// person's doing.
class Desktop
{
    Q_DISABLE_COPY_MOVE(Desktop)

public:
    Desktop() = default;
    virtual ~Desktop() = default;

    /// The Windows virtual-key code of the key behind a key event, which is what mappings store on every
    /// platform: the code for which InputInjector presses that key again.
    ///
    /// The key counts, not what it types with the modifiers that are held: Shift and the key of 1 are 16 and
    /// 49. Only the keypad's keys differ with NumLock. Left and right Shift, Ctrl and Alt are 16, 17 and 18;
    /// AltGr is 165.
    ///
    /// @param nativeVirtualKey, nativeScanCode as the toolkit's key event has them.
    /// @return 0 when the key has no code. A key that types a character for which there is no code (ü, #, š)
    /// gives 0x100 plus the character.
    virtual int virtualKeyFromNative(quint32 nativeVirtualKey, quint32 nativeScanCode) const = 0;

    /// Whether windows can be translucent now: without a compositor, what is transparent comes out black.
    /// True also when there is no desktop to be seen at all.
    virtual bool isComposited() const = 0;

    /// Whether the print dialog can write a file; where it cannot, it does not even open without a printer.
    virtual bool printsToFiles() const { return true; }
};
