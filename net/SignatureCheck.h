#pragma once

#include <QByteArray>
#include <QString>

/// Tells whether a file is what the holder of the maker's private key has signed: Ed25519 (RFC 8032) over the
/// file's bytes. Keys and signatures are base64.
class SignatureCheck
{
public:
    /// Checks with @p publicKey. Without one nothing is checked; one that is no key lets no file pass.
    explicit SignatureCheck(QByteArray publicKey = builtInKey());

    /// The key that was chosen when the program was built; empty if none was.
    static QByteArray builtInKey();

    bool isRequired() const { return !m_publicKey.isEmpty(); }

    /// What speaks against @p file with @p signature, in plain English; empty if it verifies or if nothing is
    /// checked. The file is mapped into memory while it is read, and must not be cut off meanwhile.
    QString faultOf(const QString &file, const QString &signature) const;

private:
    QByteArray m_publicKey;
};
