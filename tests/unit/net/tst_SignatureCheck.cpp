#include "net/SignatureCheck.h"
#include "tests/support/main/Main.h"
#include "tests/support/signing/SigningKey.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace
{

const char *const notSigned = "it is not signed";
const char *const noSignature = "its signature is not one";
const char *const wrong = "its signature does not verify";
const char *const noKey = "there is no key to check its signature with";
const char *const unreadable = "it cannot be read";

constexpr auto installer = SignatureCheck::Kind::Installer;
const QString version = QStringLiteral("2.1");

const QByteArray message = "what the maker has built";

} // namespace

class tst_SignatureCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void standardVectorsVerify_data();
    void standardVectorsVerify();
    void flippedBitOfAVectorDoesNot_data() { standardVectorsVerify_data(); }
    void flippedBitOfAVectorDoesNot();
    void whatIsRefused_data();
    void whatIsRefused();
    void aLibraryIsSignedAsOne();
    void withoutAKeyNothingIsChecked();
    void keyThatIsNoneLetsNothingPass_data();
    void keyThatIsNoneLetsNothingPass();
    void weakKeysLetNothingPass_data();
    void weakKeysLetNothingPass();
    void largeFileVerifiesAndItsLastByteCounts();
    void whatIsNoFileIsRefused();

private:
    QString write(const QByteArray &content) const;
    QByteArray signInstaller(const QByteArray &content) const
    {
        return m_key.signFile("installer", version.toLatin1(), content);
    }

    const SigningKey m_key;
    QTemporaryDir m_directory;
};

QString tst_SignatureCheck::write(const QByteArray &content) const
{
    QFile file(m_directory.filePath(QStringLiteral("file")));
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? file.fileName()
                                                                                    : QString();
}

// RFC 8032, section 7.1
void tst_SignatureCheck::standardVectorsVerify_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("signature");
    const auto row = [](const char *name, const char *key, const char *content, const char *signature) {
        QTest::newRow(name) << QByteArray::fromHex(key).toBase64() << QByteArray::fromHex(content)
                            << QByteArray::fromHex(signature).toBase64();
    };
    row("empty", "d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a", "",
        "e5564300c360ac729086e2cc806e828a84877f1eb8e5d974d873e065224901555fb8821590a33bacc61e39701cf9b46b"
        "d25bf5f0595bbe24655141438e7a100b");
    row("one byte", "3d4017c3e843895a92b70aa74d1b7ebc9c982ccf2ec4968cc0cd55f12af4660c", "72",
        "92a009a9f0d4cab8720e820b5f642540a2b27b5416503f8fb3762223ebdb69da085ac1e43e15996e458f3613d0f11d8c"
        "387b2eaeb4302aeeb00d291612bb0c00");
    row("two bytes", "fc51cd8e6218a1a38da47ed00230f0580816ed13ba3303ac5deb911548908025", "af82",
        "6291d657deec24024827e69c3abe01a30ce548a284743a445e3680d7db5ac3ac18ff9b538d16f290ae67f760984dc659"
        "4a7c15e9716ed28dc027beceea1ec40a");
    row("64 bytes", "ec172b93ad5e563bf4932c70e1245034c35467ef2efd4d64ebf819683467e2bf",
        "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a2192992a274fc1a836ba3c23a3feebbd"
        "454d4423643ce80e2a9ac94fa54ca49f",
        "dc2a4459e7369633a52b1bf277839a00201009a3efbf3ecb69bea2186c26b58909351fc9ac90b3ecfdfbc7c66431e030"
        "3dca179c138ac17ad9bef1177331a704");
}

void tst_SignatureCheck::standardVectorsVerify()
{
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, signature);
    QCOMPARE(SignatureCheck(key).faultOf(content, QString::fromLatin1(signature)), QString());
}

void tst_SignatureCheck::flippedBitOfAVectorDoesNot()
{
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, signature);
    const QByteArray genuine = QByteArray::fromBase64(signature);
    for (int position = 0; position < genuine.size(); ++position) {
        QByteArray forged = genuine;
        forged[position] = static_cast<char>(forged[position] ^ 1);
        QCOMPARE(SignatureCheck(key).faultOf(content, QString::fromLatin1(forged.toBase64())),
                 QLatin1String(wrong));
    }
}

void tst_SignatureCheck::whatIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("signature");
    QTest::addColumn<QString>("fault");
    const QByteArray genuine = signInstaller(message);
    const QByteArray raw = QByteArray::fromBase64(genuine);
    const auto row = [](const char *name, const QByteArray &content, const QByteArray &signature,
                        const char *fault) {
        QTest::newRow(name) << content << QString::fromLatin1(signature) << QString::fromLatin1(fault);
    };
    row("genuine", message, genuine, "");
    row("another key's", message, SigningKey(2).signFile("installer", "2.1", message), wrong);
    row("of another file", message, signInstaller("another file"), wrong);
    row("of an older version", message, m_key.signFile("installer", "2.0", message), wrong);
    row("of a newer version", message, m_key.signFile("installer", "2.1.1", message), wrong);
    row("a library's", message, m_key.signFile("library", "2.1", message), wrong);
    row("over the file alone", message, m_key.sign(message), wrong);
    QByteArray flipped = message;
    flipped[7] = static_cast<char>(flipped[7] ^ 0x20);
    row("file with a byte changed", flipped, genuine, wrong);
    row("file cut off", message.left(message.size() - 1), genuine, wrong);
    row("file with a byte more", message + '\0', genuine, wrong);
    row("empty file", "", genuine, wrong);
    row("none", message, "", notSigned);
    row("cut off", message, raw.left(63).toBase64(), noSignature);
    row("too long", message, (raw + '\0').toBase64(), noSignature);
    row("hexadecimal", message, raw.toHex(), noSignature);
    row("no base64", message, "?" + genuine.mid(1), noSignature);
    row("line end within", message, genuine.left(20) + '\n' + genuine.mid(20), noSignature);
    row("blank behind", message, genuine + ' ', noSignature);
    row("zeros", message, QByteArray(64, '\0').toBase64(), wrong);
    row("ones", message, QByteArray(64, '\xff').toBase64(), wrong);
    row("megabytes", message, QByteArray(4'000'000, 'A'), noSignature);
}

void tst_SignatureCheck::whatIsRefused()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, signature);
    QFETCH(QString, fault);
    QCOMPARE(SignatureCheck(m_key.publicKey()).faultOf(write(content), installer, version, signature), fault);
}

void tst_SignatureCheck::aLibraryIsSignedAsOne()
{
    const SignatureCheck check(m_key.publicKey());
    const auto fault = [&](const QByteArray &signature) {
        return check.faultOf(write(message), SignatureCheck::Kind::Library, version,
                             QString::fromLatin1(signature));
    };
    QCOMPARE(fault(m_key.signFile("library", "2.1", message)), QString());
    QCOMPARE(fault(signInstaller(message)), QLatin1String(wrong));
}

void tst_SignatureCheck::withoutAKeyNothingIsChecked()
{
    const SignatureCheck check{QByteArray()};
    QVERIFY(!check.isRequired());
    QCOMPARE(check.faultOf(write(message), installer, version, QString()), QString());
    QCOMPARE(check.faultOf(write(message), installer, version, QStringLiteral("anything")), QString());
    QVERIFY(SignatureCheck(m_key.publicKey()).isRequired());
}

void tst_SignatureCheck::keyThatIsNoneLetsNothingPass_data()
{
    QTest::addColumn<QByteArray>("key");
    const QByteArray genuine = QByteArray::fromBase64(m_key.publicKey());
    QTest::newRow("short") << genuine.left(31).toBase64();
    QTest::newRow("long") << (genuine + 'x').toBase64();
    QTest::newRow("hexadecimal") << genuine.toHex();
    QTest::newRow("text") << QByteArray("none");
    QTest::newRow("blank") << QByteArray(" ");
}

void tst_SignatureCheck::keyThatIsNoneLetsNothingPass()
{
    QFETCH(QByteArray, key);
    const SignatureCheck check(key);
    QVERIFY(check.isRequired());
    QCOMPARE(check.faultOf(write(message), installer, version, QString::fromLatin1(signInstaller(message))),
             QLatin1String(noKey));
}

// With these, a signature that fits every file could be made without a private key.
void tst_SignatureCheck::weakKeysLetNothingPass_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("zero") << QByteArray(32, '\0');
    QTest::newRow("one") << QByteArray(1, '\1') + QByteArray(31, '\0');
}

void tst_SignatureCheck::weakKeysLetNothingPass()
{
    QFETCH(QByteArray, key);
    const QByteArray neutral = QByteArray(1, '\1') + QByteArray(63, '\0'); // the neutral element, and s = 0
    QCOMPARE(SignatureCheck(key.toBase64())
                 .faultOf(write(message), installer, version, QString::fromLatin1(neutral.toBase64())),
             QLatin1String(wrong));
}

void tst_SignatureCheck::largeFileVerifiesAndItsLastByteCounts()
{
    QByteArray content(48 * 1024 * 1024 + 1, 'x');
    const QString signature = QString::fromLatin1(signInstaller(content));
    const SignatureCheck check(m_key.publicKey());
    QCOMPARE(check.faultOf(write(content), installer, version, signature), QString());
    content[content.size() - 1] = 'y';
    QCOMPARE(check.faultOf(write(content), installer, version, signature), QLatin1String(wrong));
}

void tst_SignatureCheck::whatIsNoFileIsRefused()
{
    const SignatureCheck check(m_key.publicKey());
    const QString signature = QString::fromLatin1(signInstaller(QByteArray()));
    QCOMPARE(check.faultOf(m_directory.filePath(QStringLiteral("missing")), installer, version, signature),
             QLatin1String(unreadable));
    QCOMPARE(check.faultOf(m_directory.path(), installer, version, signature), QLatin1String(unreadable));
}

QTEST_GUILESS_MAIN(tst_SignatureCheck)
#include "tst_SignatureCheck.moc"
