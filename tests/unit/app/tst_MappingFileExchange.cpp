#include "app/frame/ZRDialog.h"
#include "mapping/ImportedMappings.h"
#include "mapping/MappingSession.h"
#include "tests/support/main/Main.h"
#include "tests/support/page/PageRig.h"
#include "ui/ComboMapping.h"
#include "ui/DeviceZR.h"
#include "ui/MappingFileExchange.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QTest>

class tst_MappingFileExchange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void whatThePageShowsIsExported();
    void aMappingWithoutANameGetsOne();
#ifdef Q_OS_UNIX
    void theFileForADragIsTheUsersAlone();
#endif
    void whatCannotBeWrittenIsSaid();
    void whatComesForProgramsIsSaid();
    void theSelectorsContextMenuHasTheEntries();
    void aPressAloneDragsNothingAndReachesNobodyElse();

private:
    QString path(const char *name) const
    {
        return m_rig->data.filePath(QLatin1String(name));
    }
    MappingFileExchange *files() const
    {
        return m_page->findChild<MappingFileExchange *>();
    }
    ZRDialog *message() const
    {
        return m_page->findChild<ZRDialog *>();
    }

    std::unique_ptr<PageRig> m_rig;
    std::unique_ptr<SerialProtocol> m_serial;
    std::unique_ptr<DeviceZR> m_page;
};

void tst_MappingFileExchange::init()
{
    m_rig = std::make_unique<PageRig>();
    m_serial = PageRig::makeSerial();
    m_page.reset(m_rig->makePage(nullptr, m_serial.get(), nullptr));
    m_page->show();
}

void tst_MappingFileExchange::cleanup()
{
    m_page.reset();
    m_serial.reset();
    m_rig.reset();
}

void tst_MappingFileExchange::whatThePageShowsIsExported()
{
    ZRButtonMap map(QStringLiteral("Mix"));
    map.actions[2][Layer::Shift1].key1 = 81;
    map.actions[2][Layer::Shift1].label = QStringLiteral("Q");
    m_rig->mappings.use(map);
    shortCut unsaved;
    unsaved.key1 = 82;
    unsaved.label = QStringLiteral("R");
    m_rig->mappings.assign(3, Layer::Normal, unsaved);

    files()->exportTo(path("out.xml"));
    const ImportedMappings read(path("out.xml"));
    QCOMPARE(read.fault(), QString());
    QCOMPARE(read.maps().front()->name, QStringLiteral("Mix"));
    QVERIFY(read.maps().front()->actions == m_rig->mappings.actions());
    QVERIFY(!message());
}

void tst_MappingFileExchange::aMappingWithoutANameGetsOne()
{
    QVERIFY(m_rig->mappings.name().isEmpty());
    files()->exportTo(path("out.xml"));
    QCOMPARE(ImportedMappings(path("out.xml")).maps().front()->name, QStringLiteral("Untitled"));
}

#ifdef Q_OS_UNIX // on Windows, what is in a user's folder has its rights
void tst_MappingFileExchange::theFileForADragIsTheUsersAlone()
{
    m_rig->mappings.use(ZRButtonMap(QStringLiteral("../Mix")));
    const QFileInfo file(files()->fileForDrag());
    QCOMPARE(file.fileName(), QStringLiteral("__Mix.xml"));
    constexpr QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                          QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QVERIFY(!(QFile::permissions(file.absolutePath()) & others));
    QVERIFY(ImportedMappings(file.filePath()).fault().isEmpty());
    m_page.reset();
    QVERIFY(!QFileInfo::exists(file.absolutePath()));
}
#endif

void tst_MappingFileExchange::whatCannotBeWrittenIsSaid()
{
    files()->exportTo(path("no such folder/out.xml"));
    QVERIFY(message());
    QVERIFY2(
        message()->accessibleName().startsWith(QString::fromUtf8("\u201cUntitled\u201d was not exported: ")),
        qPrintable(message()->accessibleName()));
}

// The page tells of what can be taken back there; this cannot.
void tst_MappingFileExchange::whatComesForProgramsIsSaid()
{
    m_rig->writeFile(QStringLiteral("there.xml"), "<ZR><MAPPING program=\"gimp\" title=\"Gimp\"/></ZR>");
    files()->import({path("there.xml")});
    QVERIFY(message());
    QCOMPARE(message()->accessibleName(), QStringLiteral("Imported, each for one program: Gimp"));
}

void tst_MappingFileExchange::theSelectorsContextMenuHasTheEntries()
{
    auto *selector = m_page->findChild<ComboMapping *>();
    QCOMPARE(selector->contextMenuPolicy(), Qt::CustomContextMenu);
    QStringList texts;
    for (const QAction *action : selector->actions()) {
        texts.append(action->text());
    }
    QCOMPARE(texts, QStringList({QString::fromUtf8("Export\u2026"), QString::fromUtf8("Import\u2026")}));
    // What the toolkit makes of the menu key.
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(10, 10), selector->mapToGlobal({10, 10}));
    QCoreApplication::sendEvent(selector, &key);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    QCOMPARE(menu->actions().size(), 2);
    // It does not stay behind when the page slides away.
    m_page->hide();
    QVERIFY(!menu->isVisible());
}

void tst_MappingFileExchange::aPressAloneDragsNothingAndReachesNobodyElse()
{
    QWidget line(m_page.get());
    line.setGeometry(0, 0, 100, 20);
    line.show();
    files()->addDragTo(&line);
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(10, 10), Qt::LeftButton, Qt::LeftButton, {});
    QVERIFY(QCoreApplication::sendEvent(&line, &press));
    QMouseEvent move(QEvent::MouseMove, QPointF(11, 10), Qt::NoButton, Qt::LeftButton, {});
    QVERIFY(QCoreApplication::sendEvent(&line, &move));
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(11, 10), Qt::LeftButton, {}, {});
    QCoreApplication::sendEvent(&line, &release);
}

QTEST_MAIN(tst_MappingFileExchange)
#include "tst_MappingFileExchange.moc"
