#include "device/PortFinder.h"
#include "tests/support/main/Main.h"
#include "tests/unit/device/FakePortLister.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace
{

QString nameOf(const std::optional<PortDescription> &port)
{
    return port ? port->portName : QStringLiteral("none");
}

bool makeFile(const QString &path)
{
    return QFile(path).open(QIODevice::WriteOnly);
}

} // namespace

class TestPortFinder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void recognisesTheDevice_data()
    {
        QTest::addColumn<QString>("serialNumber");
        QTest::addColumn<int>("product");
        QTest::addColumn<bool>("expected");
        QTest::newRow("serial number is the mark") << "HIDFG" << 0 << true;
        QTest::newRow("mark at the start") << "HIDFG0042" << 0 << true;
        QTest::newRow("mark in the middle") << "00-HIDFG-42" << 0 << true;
        QTest::newRow("mark at the end") << "42HIDFG" << 0 << true;
        QTest::newRow("mark in lower case") << "hidfg0042" << 0 << false;
        QTest::newRow("mark in mixed case") << "HidFG" << 0 << false;
        QTest::newRow("mark cut short") << "HIDF" << 0 << false;
        QTest::newRow("product alone") << "" << 0x9206 << true;
        QTest::newRow("product with another serial number") << "A5001" << 37382 << true;
        QTest::newRow("another product") << "A5001" << 0x9207 << false;
        QTest::newRow("neither") << "" << 0 << false;
    }

    void recognisesTheDevice()
    {
        QFETCH(QString, serialNumber);
        QFETCH(int, product);
        QFETCH(bool, expected);
        start();
        m_lister->show({{QStringLiteral("p"), QStringLiteral("/dev/p"), serialNumber, quint16(product)}});
        QCOMPARE(m_finder->find().has_value(), expected);
    }

    void propertiesThatComeLateAndQuietlyAreFound()
    {
        start();
        const PortDescription bare{QStringLiteral("ttyACM0"), QStringLiteral("/dev/ttyACM0"), QString(), 0};
        m_finder->find();
        m_lister->show({bare});
        constexpr int looksIn30Seconds = 60;
        for (int look = 0; look < looksIn30Seconds; ++look) {
            QVERIFY(!m_finder->find());
        }
        m_lister->quietly({portWithSerial(QStringLiteral("ttyACM0"), QStringLiteral("HIDFG"))});
        QVERIFY(m_finder->find().has_value());
    }

    void aPortThatNeverHasPropertiesIsLookedAtForAMinute()
    {
        const PortDescription own{QStringLiteral("ttyS0"), QStringLiteral("/dev/ttyS0"), QString(), 0};
        const PortDescription bare{QStringLiteral("rfcomm0"), QStringLiteral("/dev/rfcomm0"), QString(), 0};
        start();
        m_lister->show({own});
        for (int look = 0; look < 50; ++look) {
            m_finder->find();
        }
        QCOMPARE(m_lister->fullLooks, 1 + PortFinder::settlingLooks);
        m_lister->show({own, bare});
        for (int look = 0; look < 300; ++look) {
            m_finder->find();
        }
        const int looks = m_lister->fullLooks - 1 - PortFinder::settlingLooks;
        QVERIFY2(looks >= PortFinder::looksAtBarePort && looks <= PortFinder::looksAtBarePort + 1,
                 qPrintable(QString::number(looks)));
    }

    void noPortsMeansNoDevice()
    {
        start();
        QVERIFY(!m_finder->find().has_value());
    }

    void firstMatchInTheListEndsTheWalk()
    {
        start();
        m_lister->show({portWithSerial(QStringLiteral("other"), QStringLiteral("X")),
                        portWithProduct(QStringLiteral("byProduct"), 0x9206),
                        portWithSerial(QStringLiteral("bySerial"), QStringLiteral("HIDFG"))});
        QCOMPARE(nameOf(m_finder->find()), QStringLiteral("byProduct"));
    }

    void listsPortsOnlyOnTheFirstLooksWhenNothingChanges()
    {
        start();
        m_lister->show({devicePort()});
        for (int i = 0; i < 1 + PortFinder::settlingLooks; ++i) {
            QCOMPARE(nameOf(m_finder->find()), QStringLiteral("ttyACM0"));
        }
        const int settled = m_lister->fullLooks;
        QCOMPARE(settled, 1 + PortFinder::settlingLooks);
        for (int i = 0; i < PortFinder::cheapLooksAtMost; ++i) {
            QCOMPARE(nameOf(m_finder->find()), QStringLiteral("ttyACM0"));
        }
        QCOMPARE(m_lister->fullLooks, settled);
    }

    void changeOfTheFolderIsSeenByTheNextLook()
    {
        start();
        settle();
        m_lister->show({devicePort()});
        QCOMPARE(nameOf(m_finder->find()), QStringLiteral("ttyACM0"));
        settle();
        m_lister->show({});
        QVERIFY(!m_finder->find().has_value());
    }

    void propertiesThatComeLateAreSeen()
    {
        start();
        settle();
        m_lister->show({{QStringLiteral("ttyACM0"), QStringLiteral("/dev/ttyACM0"), QString(), 0}});
        for (int i = 0; i < PortFinder::settlingLooks; ++i) {
            QVERIFY(!m_finder->find().has_value());
        }
        m_lister->quietly({devicePort()});
        QVERIFY(m_finder->find().has_value());
    }

    void changeWithoutATraceIsSeenInTheEnd()
    {
        start();
        settle();
        m_lister->quietly({devicePort()});
        int looks = 1;
        while (!m_finder->find() && looks <= PortFinder::cheapLooksAtMost + 1) {
            ++looks;
        }
        QCOMPARE(looks, PortFinder::cheapLooksAtMost + 1);
    }

    void lookAgainMakesOneFullLook()
    {
        start();
        settle();
        const int before = m_lister->fullLooks;
        m_finder->lookAgain();
        m_finder->find();
        QCOMPARE(m_lister->fullLooks, before + 1);
        m_finder->find();
        QCOMPARE(m_lister->fullLooks, before + 1);
    }

    void everyLookIsFullWhereTheSystemHasNoStamp()
    {
        start();
        m_lister->hasStamp = false;
        for (int i = 1; i <= 50; ++i) {
            m_finder->find();
            QCOMPARE(m_lister->fullLooks, i);
        }
    }

    void namedPathComesFirstAsLongAsItExists()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("port"));
        start(path);
        m_lister->show({devicePort()});
        QCOMPARE(nameOf(m_finder->find()), QStringLiteral("ttyACM0"));
        QVERIFY(makeFile(path));
        QCOMPARE(m_finder->find()->systemLocation, QFileInfo(path).canonicalFilePath());
        QVERIFY(QFile::remove(path));
        QCOMPARE(nameOf(m_finder->find()), QStringLiteral("ttyACM0"));
    }

    void namedPathThatExistsAsksTheListerNothing()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("port"));
        QVERIFY(makeFile(path));
        start(path);
        QVERIFY(m_finder->find().has_value());
        QCOMPARE(m_lister->fullLooks + m_lister->cheapLooks, 0);
    }

#ifdef Q_OS_UNIX // where a link stands for its target in every call
    void namedLinkIsFollowedAndADanglingOneDoesNotExist()
    {
        QTemporaryDir folder;
        const QString target = folder.filePath(QStringLiteral("target"));
        const QString link = folder.filePath(QStringLiteral("link"));
        QVERIFY(QFile::link(target, link));
        start(link);
        QVERIFY(!m_finder->find().has_value());
        QVERIFY(makeFile(target));
        QCOMPARE(m_finder->find()->systemLocation, QFileInfo(target).canonicalFilePath());
        QVERIFY(QFile::remove(target));
        QVERIFY(!m_finder->find().has_value());
    }
#endif

    void relativePathStaysWhereItWasGiven()
    {
        QTemporaryDir folder;
        QVERIFY(makeFile(folder.filePath(QStringLiteral("port"))));
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder.path()));
        start(QStringLiteral("port"));
        QVERIFY(QDir::setCurrent(before));
        QVERIFY(m_finder->find().has_value());
    }

    void nameInTheListCountsLikeAPath_data()
    {
        QTest::addColumn<QString>("given");
        QTest::newRow("short name") << QStringLiteral("COM7");
        QTest::newRow("location") << QStringLiteral("\\\\.\\COM7");
    }

    void nameInTheListCountsLikeAPath()
    {
        QFETCH(QString, given);
        start(given);
        m_lister->hasStamp = false;
        m_lister->show({devicePort(QStringLiteral("COM3"))});
        QCOMPARE(nameOf(m_finder->find()), QStringLiteral("COM3"));
        m_lister->show({devicePort(QStringLiteral("COM3")),
                        {QStringLiteral("COM7"), QStringLiteral("\\\\.\\COM7"), QString(), 0}});
        QCOMPARE(nameOf(m_finder->find()), QStringLiteral("COM7"));
    }

private:
    void start(const QString &explicitPort = QString())
    {
        auto lister = std::make_unique<FakePortLister>();
        m_lister = lister.get();
        m_finder = std::make_unique<PortFinder>(std::move(lister), explicitPort);
    }
    void settle()
    {
        for (int i = 0; i <= PortFinder::settlingLooks; ++i) {
            m_finder->find();
        }
    }

    std::unique_ptr<PortFinder> m_finder;
    FakePortLister *m_lister = nullptr;
};

QTEST_GUILESS_MAIN(TestPortFinder)
#include "tst_PortFinder.moc"
