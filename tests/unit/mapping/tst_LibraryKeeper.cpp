#include "mapping/LibraryKeeper.h"
#include "mapping/XmlMappingReader.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

#include <memory>

namespace
{

const QByteArray good =
    R"(<?xml version="1.0" encoding="UTF-8"?><ZR><MAPPING software="A" default="1"/></ZR>)";
const QByteArray better = R"(<ZR><MAPPING software="A"/><MAPPING software="B"/></ZR>)";

void expectFault(const char *fault)
{
    QTest::ignoreMessage(
        QtWarningMsg, QRegularExpression(QStringLiteral("^The library .*ZR.xml is not a mapping file: .*") +
                                         QLatin1String(fault)));
}

void expectPutBack()
{
    QTest::ignoreMessage(QtWarningMsg, "The last library that was read has been put back");
}

} // namespace

class tst_LibraryKeeper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void keptBesideTheLibrary();
    void usableLibraryIsLeftAlone();
    void newerLibraryIsLeftAlone();
    void whatIsNoMappingFileIsReplaced_data();
    void whatIsNoMappingFileIsReplaced();
    void missingLibraryIsLeftToTheSeedFiles();
    void nothingKeptSaysSo();
    void withNothingKeptTheSeedTakesItsPlace();
    void aSeedThatIsBrokenDoesNot();
    void aLibraryThatMustNotBeWrittenIsReplacedToo();
    void keptFileThatIsBrokenIsNotPutBack();
    void replacedByALaterLibrary();
    void libraryWithoutMappingsIsNotKept();
    void sameLibraryIsNotWrittenAgain();
    void placeThatCannotBeWrittenIsReported();
    void everyEncodingOfALibraryCounts();
    void whatIsPutBackCanBeRead();
    void nothingIsLeftBeside();

private:
    void write(const QString &path, const QByteArray &content);
    QByteArray content(const QString &path) const;

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_library;
};

void tst_LibraryKeeper::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_library = m_dir->filePath(QStringLiteral("ZR.xml"));
}

void tst_LibraryKeeper::write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

QByteArray tst_LibraryKeeper::content(const QString &path) const
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

void tst_LibraryKeeper::keptBesideTheLibrary()
{
    QCOMPARE(LibraryKeeper::keptFile(m_library), m_library + QStringLiteral(".kept"));
    write(m_library, good);
    QVERIFY(LibraryKeeper::keep(m_library, 1));
    QCOMPARE(content(LibraryKeeper::keptFile(m_library)), good);
    QCOMPARE(content(m_library), good);
}

void tst_LibraryKeeper::usableLibraryIsLeftAlone()
{
    write(m_library, good);
    QCOMPARE(LibraryKeeper::restore(m_library), LibraryKeeper::Outcome::Usable); // nothing is kept yet
    QVERIFY(LibraryKeeper::keep(m_library, 1));
    QCOMPARE(LibraryKeeper::restore(m_library), LibraryKeeper::Outcome::Usable);
    QCOMPARE(content(m_library), good);
}

void tst_LibraryKeeper::newerLibraryIsLeftAlone()
{
    write(m_library, good);
    QVERIFY(LibraryKeeper::keep(m_library, 1));
    write(m_library, better);
    QCOMPARE(LibraryKeeper::restore(m_library), LibraryKeeper::Outcome::Usable);
    QCOMPARE(content(m_library), better);
}

void tst_LibraryKeeper::whatIsNoMappingFileIsReplaced_data()
{
    QTest::addColumn<QByteArray>("downloaded");
    QTest::newRow("empty body") << QByteArray();
    QTest::newRow("broken off in an element") << good.left(good.size() - 10);
    QTest::newRow("broken off in the declaration") << good.left(10);
    QTest::newRow("error page") << QByteArray(
        "<!DOCTYPE html><html><head><meta charset=\"utf-8\">"
        "<title>404</title></head><body><p>Not found<br></body></html>");
    QTest::newRow("page that is well-formed") << QByteArray("<html><body><p>Sign in</p></body></html>");
    QTest::newRow("library without mappings") << QByteArray("<ZR/>");
    QTest::newRow("JSON") << QByteArray(R"({"error":"not found"})");
    QTest::newRow("bytes that are not UTF-8")
        << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?><ZR><MAPPING software=\"\xE9t\xE9\"/></ZR>");
    QTest::newRow("encoding nobody knows")
        << QByteArray("<?xml version=\"1.0\" encoding=\"x-of-our-own\"?><ZR><MAPPING software=\"A\"/></ZR>");
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("compressed") << QByteArray("\x1f\x8b\x08\x00\x00\x00\x00\x00\x00\x03", 10);
}

void tst_LibraryKeeper::whatIsNoMappingFileIsReplaced()
{
    QFETCH(QByteArray, downloaded);
    write(m_library, good);
    QVERIFY(LibraryKeeper::keep(m_library, 1));
    write(m_library, downloaded);
    expectFault(".");
    expectPutBack();
    QCOMPARE(LibraryKeeper::restore(m_library), LibraryKeeper::Outcome::PutBack);
    QCOMPARE(content(m_library), good);
    QCOMPARE(content(LibraryKeeper::keptFile(m_library)), good);
    QCOMPARE(LibraryKeeper::restore(m_library), LibraryKeeper::Outcome::Usable);
}

void tst_LibraryKeeper::missingLibraryIsLeftToTheSeedFiles()
{
    QCOMPARE(LibraryKeeper::restore(m_library), LibraryKeeper::Outcome::Missing);
    write(LibraryKeeper::keptFile(m_library), good);
    QCOMPARE(LibraryKeeper::restore(m_library), LibraryKeeper::Outcome::Missing);
    QVERIFY(!QFile::exists(m_library));
}

void tst_LibraryKeeper::nothingKeptSaysSo()
{
    write(m_library, "<html/>");
    expectFault("it holds no mapping$");
    QTest::ignoreMessage(QtWarningMsg, "The last library that was read could not be put back: there is none");
    QCOMPARE(LibraryKeeper::restore(m_library), LibraryKeeper::Outcome::Lost);
    QCOMPARE(content(m_library), QByteArray("<html/>"));
}

void tst_LibraryKeeper::withNothingKeptTheSeedTakesItsPlace()
{
    const QString seed = m_dir->filePath(QStringLiteral("seed.xml"));
    write(seed, better);
    QVERIFY(QFile::setPermissions(seed, QFile::ReadOwner));
    write(m_library, "<html/>");
    expectFault("it holds no mapping$");
    QTest::ignoreMessage(QtWarningMsg, "The last library that was read could not be put back: there is none");
    QTest::ignoreMessage(QtWarningMsg, "The library that came with the program has taken its place");
    QCOMPARE(LibraryKeeper::restore(m_library, seed), LibraryKeeper::Outcome::PutBack);
    QCOMPARE(content(m_library), better);
    QVERIFY(QFile::permissions(m_library) & QFile::WriteOwner);
    QCOMPARE(LibraryKeeper::restore(m_library, seed), LibraryKeeper::Outcome::Usable);
}

void tst_LibraryKeeper::aSeedThatIsBrokenDoesNot()
{
    const QString seed = m_dir->filePath(QStringLiteral("seed.xml"));
    write(seed, "<ZR/>");
    write(m_library, "<html/>");
    expectFault("it holds no mapping$");
    QTest::ignoreMessage(QtWarningMsg, "The last library that was read could not be put back: there is none");
    QTest::ignoreMessage(
        QtWarningMsg, "The library that came with the program could not take its place: it holds no mapping");
    QCOMPARE(LibraryKeeper::restore(m_library, seed), LibraryKeeper::Outcome::Lost);
    QCOMPARE(content(m_library), QByteArray("<html/>"));
}

void tst_LibraryKeeper::aLibraryThatMustNotBeWrittenIsReplacedToo()
{
    write(m_library, good);
    QVERIFY(LibraryKeeper::keep(m_library, 1));
    write(m_library, "broken");
    QVERIFY(QFile::setPermissions(m_library, QFile::ReadOwner));
    expectFault(".");
    expectPutBack();
    QCOMPARE(LibraryKeeper::restore(m_library), LibraryKeeper::Outcome::PutBack);
    QCOMPARE(content(m_library), good);
    QVERIFY(QFile::permissions(m_library) & QFile::WriteOwner);
}

void tst_LibraryKeeper::keptFileThatIsBrokenIsNotPutBack()
{
    write(m_library, "broken");
    write(LibraryKeeper::keptFile(m_library), "<ZR/>");
    expectFault(".");
    QTest::ignoreMessage(QtWarningMsg,
                         "The last library that was read could not be put back: it holds no mapping");
    QCOMPARE(LibraryKeeper::restore(m_library), LibraryKeeper::Outcome::Lost);
    QCOMPARE(content(m_library), QByteArray("broken"));
}

void tst_LibraryKeeper::replacedByALaterLibrary()
{
    write(m_library, good);
    QVERIFY(LibraryKeeper::keep(m_library, 1));
    write(m_library, better);
    QVERIFY(LibraryKeeper::keep(m_library, 2));
    QCOMPARE(content(LibraryKeeper::keptFile(m_library)), better);
}

void tst_LibraryKeeper::libraryWithoutMappingsIsNotKept()
{
    write(m_library, good);
    QVERIFY(LibraryKeeper::keep(m_library, 1));
    write(m_library, "<html/>"); // which the reader reads, as a list of none
    QVERIFY(LibraryKeeper::keep(m_library, 0));
    QCOMPARE(content(LibraryKeeper::keptFile(m_library)), good);
}

void tst_LibraryKeeper::sameLibraryIsNotWrittenAgain()
{
    write(m_library, good);
    QVERIFY(LibraryKeeper::keep(m_library, 1));
    QFile kept(LibraryKeeper::keptFile(m_library));
    const QDateTime longAgo(QDate(2001, 2, 3), QTime(4, 5));
    QVERIFY(kept.open(QIODevice::ReadWrite));
    QVERIFY(kept.setFileTime(longAgo, QFileDevice::FileModificationTime));
    kept.close();
    QVERIFY(LibraryKeeper::keep(m_library, 1));
    QCOMPARE(QFileInfo(kept.fileName()).lastModified(), longAgo);
}

void tst_LibraryKeeper::placeThatCannotBeWrittenIsReported()
{
    write(m_library, good);
    QVERIFY(QDir().mkdir(LibraryKeeper::keptFile(m_library)));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^The library .*ZR.xml could not be kept: .")));
    QVERIFY(!LibraryKeeper::keep(m_library, 1));
    QCOMPARE(content(m_library), good);
}

void tst_LibraryKeeper::everyEncodingOfALibraryCounts()
{
    const QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-16\"?><ZR><MAPPING/></ZR>");
    write(m_library, QTextCodec::codecForName("UTF-16")->fromUnicode(text));
    QCOMPARE(LibraryKeeper::restore(m_library), LibraryKeeper::Outcome::Usable);
    write(m_library, "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><ZR><MAPPING software=\"\xE9\"/></ZR>");
    QCOMPARE(LibraryKeeper::restore(m_library), LibraryKeeper::Outcome::Usable);
    write(m_library, "<OTHER><DEEPER><MAPPING/></DEEPER></OTHER>"); // the reader searches at any depth
    QCOMPARE(LibraryKeeper::restore(m_library), LibraryKeeper::Outcome::Usable);
}

void tst_LibraryKeeper::whatIsPutBackCanBeRead()
{
    write(m_library, better);
    QVERIFY(LibraryKeeper::keep(m_library, 2));
    write(m_library, better.left(30));
    expectFault(".");
    expectPutBack();
    LibraryKeeper::restore(m_library);

    XmlMappingReader reader;
    QList<ZRButtonMap *> maps;
    connect(&reader, &XmlMappingReader::newMapListReady,
            [&maps](const QList<ZRButtonMap *> &list) { maps = list; });
    reader.readMapList(m_library, false);
    QCOMPARE(maps.size(), 2);
    qDeleteAll(maps);
}

void tst_LibraryKeeper::nothingIsLeftBeside()
{
    write(m_library, good);
    QVERIFY(LibraryKeeper::keep(m_library, 1));
    write(m_library, "broken");
    expectFault(".");
    expectPutBack();
    LibraryKeeper::restore(m_library);
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files | QDir::Hidden, QDir::Name),
             (QStringList{QStringLiteral("ZR.xml"), QStringLiteral("ZR.xml.kept")}));
}

QTEST_GUILESS_MAIN(tst_LibraryKeeper)
#include "tst_LibraryKeeper.moc"
