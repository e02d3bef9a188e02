#pragma once

#include "device/DeviceEvent.h"

#include <QByteArray>

#include <optional>
#include <string_view>

/// Cuts the device's byte stream into lines and the lines into events.
///
/// A message ends with the terminator "\n\r\n". Bytes are held until a terminator has come; then everything
/// that is held is decoded, line by line:
///  - while the held bytes contain two terminators or more, a line goes up to and including the first one;
///  - with only one left, the line is all that is held. A message that is still incomplete behind that last
///    terminator is swallowed with it. This is deliberate.
///
/// "BP" or "BR" and one byte is a button, "KN" and one byte a knob event, a decimal number a knob count.
/// Anything else is dropped without a word.
///
/// Takes time in proportion to the bytes, however they are cut into pieces. May be fed while events are being
/// taken.
///
///     decoder.append(port.readAll());
///     while (const auto event = decoder.next()) { ... }
class LineDecoder
{
    Q_DISABLE_COPY_MOVE(LineDecoder)

public:
    /// More bytes than this without a terminator are not from a sound device: they are dropped, with a log
    /// line.
    static constexpr int maxUnterminatedBytes = 64 * 1024;

    LineDecoder() = default;

    /// Adds bytes as they were read, in pieces of any size.
    void append(const QByteArray &bytes);

    /// The next event, or nothing when more bytes have to come first.
    std::optional<DeviceEvent> next();

    /// Forgets everything that is held.
    void clear();

private:
    int findTerminator(int from) const;
    std::string_view takeLine();

    QByteArray m_buffer;
    /// Where the next line starts in the buffer. What lies before has been decoded.
    int m_lineStart = 0;
    /// The first terminator at or behind m_lineStart, -1 when there is none.
    int m_terminator = -1;
    /// True from the terminator's arrival until all that was held has been decoded.
    bool m_decoding = false;
};
