#include "app/frame/ZRDialog.h"
#include "mapping/ProgramsFile.h"
#include "tests/support/main/Main.h"
#include "tests/support/mapping/MappingSamples.h"
#include "tests/support/page/PageRig.h"
#include "ui/ComboMenu.h"
#include "ui/MappingFileExchange.h"
#include "ui/OverlayDialog.h"

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

/// The device page and the file of the programs' mappings.
class tst_ProgramsFileOnPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void whatADialogSetsIsWrittenWhenItIsDone();
    void whatCannotActIsSaid();

private:
    QString path() const { return m_rig->mappings.files().programs(); }

    std::unique_ptr<PageRig> m_rig;
    std::unique_ptr<SerialProtocol> m_serial;
    std::unique_ptr<DeviceZR> m_page;
};

void tst_ProgramsFileOnPage::init()
{
    m_rig = std::make_unique<PageRig>();
    m_serial = PageRig::makeSerial();
    m_page.reset(m_rig->makePage(nullptr, m_serial.get(), nullptr));
    m_page->show();
}

void tst_ProgramsFileOnPage::cleanup()
{
    m_page.reset();
    m_serial.reset();
    m_rig.reset();
}

void tst_ProgramsFileOnPage::whatADialogSetsIsWrittenWhenItIsDone()
{
    QVERIFY(m_rig->programMappings.give(QStringLiteral("gimp"), QStringLiteral("Gimp")));
    auto *box = m_page->findChild<ComboMenu *>();
    QTimer::singleShot(0, this, [] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Right);
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
    });
    box->dislayMenu();
    OverlayDialog *dialog = nullptr;
    for (OverlayDialog *each : m_page->findChildren<OverlayDialog *>()) {
        dialog = each->isVisible() ? each : dialog;
    }
    QVERIFY(dialog);
    QSignalSpy kept(&m_rig->programMappings, &ProgramMappings::kept);
    // No timer rings meanwhile: however slow the page is drawn here, typing does not rest.
    for (const qint32 code : {1, 12}) {
        Q_EMIT box->assignmentChanged({{Layer::Normal, key(code)}}, 1);
        QCoreApplication::sendPostedEvents();
    }
    QCOMPARE(kept.count(), 0);
    QVERIFY(!m_page->findChild<QLabel *>(QStringLiteral("notKept"))->isVisible());
    dialog->hide();
    QCoreApplication::sendPostedEvents();
    QCOMPARE(kept.count(), 1);
    const ProgramsFile::Content content = ProgramsFile::read(path());
    bool written = false;
    for (const auto &control : content.entries.at(0).actions) {
        written = written || control[Layer::Normal].key1 == 12;
    }
    QVERIFY(written);
}

void tst_ProgramsFileOnPage::whatCannotActIsSaid()
{
    FocusedProgram silent;
    const ProgramSwitch programs(silent, *m_rig->engine.dispatcher, m_rig->programMappings);
    m_rig->writeFile(QStringLiteral("there.xml"), "<ZR><MAPPING program=\"gimp\" title=\"Gimp\"/></ZR>");
    m_page->findChild<MappingFileExchange *>()->import({m_rig->data.filePath(QStringLiteral("there.xml"))});
    auto *message = m_page->findChild<ZRDialog *>();
    QVERIFY(message);
    QCOMPARE(message->accessibleName(),
             QStringLiteral("Imported, each for one program: Gimp. They are kept, but cannot act in this "
                            "session, which does not tell which program is in front"));
}

QTEST_MAIN(tst_ProgramsFileOnPage)
#include "tst_ProgramsFileOnPage.moc"
