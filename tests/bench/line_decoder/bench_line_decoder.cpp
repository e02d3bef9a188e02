// How many of the device's lines are decoded in a second, fed in large and in small pieces.
// Ends with status 1 when it is fewer than a million with large ones.

#include "device/LineDecoder.h"

#include <QElapsedTimer>

#include <cstdio>

namespace
{

constexpr int lines = 2'000'000;
constexpr double requiredPerSecond = 1e6;

QByteArray session()
{
    static const char *const messages[] = {"BP3", "BR3", "KND", "KNR", "KNL", "12", "-3", "KNU"};
    QByteArray stream;
    for (int i = 0; i < lines; ++i) {
        stream += messages[i % 8];
        stream += "\n\r\n";
    }
    return stream;
}

double linesPerSecond(const QByteArray &stream, int pieceSize)
{
    QElapsedTimer clock;
    clock.start();
    LineDecoder decoder;
    int events = 0;
    for (int at = 0; at < stream.size(); at += pieceSize) {
        decoder.append(stream.mid(at, pieceSize));
        while (decoder.next()) {
            ++events;
        }
    }
    const double seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
    std::printf("pieces of %8d bytes: %6.2f million lines per second (%d events)\n", pieceSize,
                lines / seconds / 1e6, events);
    return lines / seconds;
}

} // namespace

int main()
{
    const QByteArray stream = session();
    linesPerSecond(stream, 32);
    linesPerSecond(stream, 512);
    linesPerSecond(stream, 32 * 1024);
    const double best = linesPerSecond(stream, stream.size());
    if (best < requiredPerSecond) {
        std::printf("fewer than %.0f lines per second\n", requiredPerSecond);
        return 1;
    }
    return 0;
}
