#include "tests/support/main/Main.h"

#include <QFile>
#include <QTest>
#include <QtEndian>

/// Reads the cursor file that the build makes the way the system's loader does.
class tst_TransparentPointer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void holdsOneCursorOf32By32();
    void hasItsHotSpotInTheCornerLikeTheArrow();
    void pictureIsMonochromeAndEndsWithTheFile();
    void everyPixelShowsWhatIsBelow();

private:
    int word(int offset) const { return qFromLittleEndian<quint16>(m_file.constData() + offset); }
    int doubleWord(int offset) const { return qFromLittleEndian<qint32>(m_file.constData() + offset); }
    int picture() const { return doubleWord(18); }

    QByteArray m_file;
};

void tst_TransparentPointer::initTestCase()
{
    QFile file(QStringLiteral(VELTRIX_TRANSPARENT_POINTER));
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.errorString()));
    m_file = file.readAll();
    QVERIFY(m_file.size() > 22 + 40);
}

void tst_TransparentPointer::holdsOneCursorOf32By32()
{
    QCOMPARE(word(0), 0);
    QCOMPARE(word(2), 2);
    QCOMPARE(word(4), 1);
    QCOMPARE(int(m_file.at(6)), 32);
    QCOMPARE(int(m_file.at(7)), 32);
    QCOMPARE(int(m_file.at(9)), 0);
}

void tst_TransparentPointer::hasItsHotSpotInTheCornerLikeTheArrow()
{
    QCOMPARE(word(10), 0);
    QCOMPARE(word(12), 0);
}

void tst_TransparentPointer::pictureIsMonochromeAndEndsWithTheFile()
{
    QCOMPARE(picture(), 22);
    QCOMPARE(doubleWord(14), m_file.size() - picture());
    QCOMPARE(doubleWord(picture()), 40);
    QCOMPARE(doubleWord(picture() + 4), 32);
    QCOMPARE(doubleWord(picture() + 8), 64);
    QCOMPARE(word(picture() + 12), 1);
    QCOMPARE(word(picture() + 14), 1);
    QCOMPARE(doubleWord(picture() + 16), 0);
    QCOMPARE(m_file.size(), picture() + 40 + 2 * 4 + 2 * 128);
}

void tst_TransparentPointer::everyPixelShowsWhatIsBelow()
{
    const int masks = picture() + 40 + 2 * 4;
    QCOMPARE(m_file.mid(masks, 128), QByteArray(128, '\x00'));
    QCOMPARE(m_file.mid(masks + 128, 128), QByteArray(128, '\xFF'));
}

QTEST_APPLESS_MAIN(tst_TransparentPointer)

#include "tst_TransparentPointer.moc"
