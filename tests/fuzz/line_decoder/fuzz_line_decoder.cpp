// Feeds the decoder arbitrary bytes in arbitrary pieces and compares it with the plain form of the framing
// rule.
//
// The input is a row of pieces: one byte gives the length of the piece that follows. The length 255 stands
// for a piece of blanks that is nearly as long as the bound on bytes without a terminator.

#include "device/LineDecoder.h"
#include "tests/unit/device/NaiveFraming.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>

namespace
{

constexpr std::size_t longPiece = 255;
constexpr int piecesBehindALongOne = 6;

void silence(QtMsgType, const QMessageLogContext &, const QString &) {}

QByteArray takePiece(const uint8_t *&data, std::size_t &size)
{
    const std::size_t length = *data;
    ++data;
    --size;
    if (length == longPiece) {
        return QByteArray(LineDecoder::maxUnterminatedBytes - 16, ' ');
    }
    const std::size_t taken = std::min(length, size);
    const QByteArray piece(reinterpret_cast<const char *>(data), static_cast<int>(taken));
    data += taken;
    size -= taken;
    return piece;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    qInstallMessageHandler(silence);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    LineDecoder decoder;
    NaiveFraming reference;
    int piecesLeft = INT_MAX;
    while (size > 0 && piecesLeft-- > 0) {
        if (*data == longPiece) {
            piecesLeft = std::min(piecesLeft, piecesBehindALongOne);
        }
        const QByteArray piece = takePiece(data, size);
        decoder.append(piece);
        for (const DeviceEvent &expected : reference.feed(piece)) {
            const auto event = decoder.next();
            if (!event || *event != expected) {
                std::abort();
            }
        }
        if (decoder.next()) {
            std::abort();
        }
    }
    return 0;
}
