#pragma once

#include <QByteArray>
#include <QString>

/// Tells whether a file is what the holder of the maker's private key has signed, as what it is offered for:
/// Ed25519 (RFC 8032) over a text of four lines, "veltrix", the kind ("installer" or "library"), the version,
/// and the file's SHA-512 in hexadecimal. Keys and signatures are base64.
class SignatureCheck
{
public:
    enum class Kind { Installer, Library };

    /// Checks with @p publicKey. Without one nothing is checked; one that is no key lets no file pass.
    explicit SignatureCheck(QByteArray publicKey = builtInKey());

    /// The key that was chosen when the program was built; empty if none was.
    static QByteArray builtInKey();

    bool isRequired() const { return !m_publicKey.isEmpty(); }

    /// What speaks against @p file being @p kind of @p version with @p signature, in plain English; empty if
    /// that verifies or if nothing is checked.
    QString faultOf(const QString &file, Kind kind, const QString &version, const QString &signature) const;

    /// The same for a text that stands for itself.
    QString faultOf(const QByteArray &text, const QString &signature) const;

    /// The text that is signed.
    static QByteArray signedText(Kind kind, const QString &version, const QByteArray &sha512);

private:
    QByteArray m_publicKey;
};
