#include "net/SignatureCheck.h"

#include <QCryptographicHash>
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

QByteArray SignatureCheck::signedText(Kind kind, const QString &version, const QByteArray &sha512)
{
    const QByteArray name = kind == Kind::Installer ? "installer" : "library";
    return "veltrix\n" + name + '\n' + version.toUtf8() + '\n' + sha512.toHex() + '\n';
}

QString SignatureCheck::faultOf(const QString &file, Kind kind, const QString &version,
                                const QString &signature) const
{
    if (!isRequired()) {
        return {};
    }
    QFile data(file);
    QCryptographicHash hash(QCryptographicHash::Sha512);
    if (!QFileInfo(file).isFile() || !data.open(QIODevice::ReadOnly) || !hash.addData(&data)) {
        return QStringLiteral("it cannot be read");
    }
    return faultOf(signedText(kind, version, hash.result()), signature);
}

QString SignatureCheck::faultOf(const QByteArray &text, const QString &signature) const
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
    const bool verifies = crypto_sign_verify_detached(bytes(signatureBytes), bytes(text),
                                                      static_cast<quint64>(text.size()), bytes(key)) == 0;
    return verifies ? QString() : QStringLiteral("its signature does not verify");
}
