#pragma once

#include <QByteArray>
#include <QCryptographicHash>

#include <sodium.h>

/// A private key for tests, always the same for the same @p number.
class SigningKey
{
public:
    explicit SigningKey(char number = 1)
        : m_public(crypto_sign_PUBLICKEYBYTES, 0)
        , m_secret(crypto_sign_SECRETKEYBYTES, 0)
    {
        const QByteArray seed(crypto_sign_SEEDBYTES, number);
        crypto_sign_seed_keypair(bytes(m_public), bytes(m_secret), bytes(seed));
    }

    QByteArray publicKey() const { return m_public.toBase64(); }

    QByteArray sign(const QByteArray &message) const
    {
        QByteArray signature(crypto_sign_BYTES, 0);
        crypto_sign_detached(bytes(signature), nullptr, bytes(message), static_cast<quint64>(message.size()),
                             bytes(m_secret));
        return signature.toBase64();
    }

    /// The signature of a file, as it is offered with an answer. @p kind is "installer" or "library".
    QByteArray signFile(const QByteArray &kind, const QByteArray &version, const QByteArray &content) const
    {
        const QByteArray hash = QCryptographicHash::hash(content, QCryptographicHash::Sha512).toHex();
        return sign("veltrix\n" + kind + '\n' + version + '\n' + hash + '\n');
    }

private:
    static uchar *bytes(QByteArray &data) { return reinterpret_cast<uchar *>(data.data()); }
    static const uchar *bytes(const QByteArray &data)
    {
        return reinterpret_cast<const uchar *>(data.constData());
    }

    QByteArray m_public;
    QByteArray m_secret;
};
