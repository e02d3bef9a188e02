#include "net/SignatureCheck.h"

#include <QFile>
#include <QFileInfo>

#include <sodium.h>
#include <utility>

namespace
{

// Exactly @p size bytes, or nothing.
QByteArray decoded(const QByteArray &base64, uint size)
{
    const auto result = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
    const bool fits = result && static_cast<uint>(result.decoded.size()) == size;
    return fits ? result.decoded : QByteArray();
}

const uchar *bytes(const QByteArray &data)
{
    return reinterpret_cast<const uchar *>(data.constData());
}

} // namespace

SignatureCheck::SignatureCheck(QByteArray publicKey)
    : m_publicKey(std::move(publicKey))
{
}

QByteArray SignatureCheck::builtInKey()
{
    return QByteArrayLiteral(VELTRIX_SIGNING_KEY);
}

QString SignatureCheck::faultOf(const QString &file, const QString &signature) const
{
    if (!isRequired()) {
        return {};
    }
    const QByteArray key = decoded(m_publicKey, crypto_sign_PUBLICKEYBYTES);
    if (key.isEmpty() || sodium_init() < 0) {
        return QStringLiteral("there is no key to check its signature with");
    }
    if (signature.isEmpty()) {
        return QStringLiteral("it is not signed");
    }
    const QByteArray signatureBytes = decoded(signature.toLatin1(), crypto_sign_BYTES);
    if (signatureBytes.isEmpty()) {
        return QStringLiteral("its signature is not one");
    }

    QFile data(file);
    if (!QFileInfo(file).isFile() || !data.open(QIODevice::ReadOnly)) {
        return QStringLiteral("it cannot be read");
    }
    const qint64 size = data.size();
    // The whole message is wanted at once. Pages of a mapping are read when they are looked at, and given up
    // when memory is needed elsewhere.
    const uchar nothing = 0;
    const uchar *message = size > 0 ? data.map(0, size) : &nothing;
    if (!message) {
        return QStringLiteral("it cannot be read");
    }
    const bool verifies = crypto_sign_verify_detached(bytes(signatureBytes), message,
                                                      static_cast<quint64>(size), bytes(key)) == 0;
    return verifies ? QString() : QStringLiteral("its signature does not verify");
}
