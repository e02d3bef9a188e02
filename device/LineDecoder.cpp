#include "device/LineDecoder.h"

#include "device/DeviceLog.h"

#include <QString>

namespace
{

constexpr std::string_view terminator = "\n\r\n";

std::optional<DeviceEvent> decodeNumber(std::string_view line)
{
    const std::string_view text = line.substr(0, line.find('\0'));
    QString number = QString::fromUtf8(text.data(), static_cast<int>(text.size()));
    number.remove(QStringLiteral("\n\r\n"));
    bool isNumber = false;
    const int count = number.toInt(&isNumber, 10);
    if (!isNumber) {
        return std::nullopt;
    }
    return DeviceEvent::knobCounted(count);
}

std::optional<DeviceEvent> decodeLine(std::string_view line)
{
    const std::string_view command = line.substr(0, 2);
    const char argument = line.size() > 2 ? line[2] : '\0';
    if (command == "BP" || command == "BR") {
        return DeviceEvent::buttonChanged(static_cast<unsigned char>(argument) - '0', command == "BP");
    }
    if (command == "KN") {
        return DeviceEvent::knobChanged(argument);
    }
    return decodeNumber(line);
}

} // namespace

void LineDecoder::append(const QByteArray &bytes)
{
    if (m_lineStart == m_buffer.size()) {
        clear();
    } else if (m_lineStart > 0) {
        m_buffer.remove(0, m_lineStart);
        m_terminator = m_terminator < 0 ? -1 : m_terminator - m_lineStart;
        m_lineStart = 0;
    }

    const int heldBefore = m_buffer.size();
    m_buffer.append(bytes);
    if (m_terminator < 0) {
        // Up to two bytes of the terminator may have been there before.
        m_terminator = findTerminator(qMax(0, heldBefore - 2));
    }
    if (m_terminator >= 0) {
        m_decoding = true;
    } else if (m_buffer.size() > maxUnterminatedBytes) {
        qCWarning(lcDevice) << "dropped" << m_buffer.size() << "bytes without a line end from the device";
        clear();
    }
}

std::optional<DeviceEvent> LineDecoder::next()
{
    while (m_decoding) {
        if (m_lineStart == m_buffer.size()) {
            clear();
            break;
        }
        if (const auto event = decodeLine(takeLine())) {
            return event;
        }
    }
    return std::nullopt;
}

void LineDecoder::clear()
{
    m_buffer.clear();
    m_lineStart = 0;
    m_terminator = -1;
    m_decoding = false;
}

int LineDecoder::findTerminator(int from) const
{
    const std::string_view held(m_buffer.constData(), static_cast<std::size_t>(m_buffer.size()));
    const std::size_t found = held.find(terminator, static_cast<std::size_t>(from));
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

std::string_view LineDecoder::takeLine()
{
    const char *const line = m_buffer.constData() + m_lineStart;
    const int held = m_buffer.size() - m_lineStart;
    qCDebug(lcDevice).nospace() << "data: " << QByteArray::fromRawData(line, held);

    // Two terminators may share a byte ("\n\r\n\r\n"), so the search goes on one byte further, not three.
    const int second = m_terminator < 0 ? -1 : findTerminator(m_terminator + 1);
    const int start = m_lineStart;
    if (second < 0) {
        m_lineStart = m_buffer.size();
        m_terminator = -1;
    } else {
        m_lineStart = m_terminator + static_cast<int>(terminator.size());
        m_terminator = second >= m_lineStart ? second : findTerminator(m_lineStart);
    }
    return {line, static_cast<std::size_t>(m_lineStart - start)};
}
