#include "app/FileDrop.h"
#include "app/ZRMainWindow.h"
#include "app/frame/ZRDialog.h"
#include "mapping/MappingSession.h"
#include "tests/support/main/Main.h"
#include "tests/support/page/PageRig.h"
#include "ui/DeviceZR.h"

#include <QDropEvent>
#include <QFile>
#include <QLabel>
#include <QMimeData>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

class tst_FileDrop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aDroppedFileIsImported();
    void severalAreImportedInTurn();
    void ofManyAFewAreNamed();
    void whatIsWrongIsSaid();
    void whatIsNoFileIsNotTaken_data();
    void whatIsNoFileIsNotTaken();
    void anImportIsAStepThatIsTakenBack();

private:
    QString file(const QString &name, const QByteArray &content) const;
    bool drop(const QMimeData &data);
    ZRDialog *message() const { return m_window->findChild<ZRDialog *>(); }
    QStringList own() const
    {
        QStringList names;
        for (const ZRButtonMap *map : m_rig->mappings.custom()) {
            names.append(map->name);
        }
        return names;
    }

    std::unique_ptr<PageRig> m_rig;
    std::unique_ptr<ZRMainWindow> m_window;
    std::unique_ptr<FileDrop> m_drop;
};

namespace
{

std::unique_ptr<QMimeData> files(const QStringList &paths)
{
    auto data = std::make_unique<QMimeData>();
    QList<QUrl> urls;
    for (const QString &path : paths) {
        urls.append(QUrl::fromLocalFile(path));
    }
    data->setUrls(urls);
    return data;
}

} // namespace

void tst_FileDrop::init()
{
    m_rig = std::make_unique<PageRig>();
    m_window = std::make_unique<ZRMainWindow>(
        PageRig::makeSerial(),
        [this](QWidget *parent, SerialProtocol *link, ZRUpdater *updater) {
            return m_rig->makePage(parent, link, updater);
        },
        nullptr, m_rig->engine.clock);
    m_drop = std::make_unique<FileDrop>(
        *m_window, [this](const QStringList &files) { m_window->devicePage()->importFiles(files); });
    m_window->show();
}

void tst_FileDrop::cleanup()
{
    m_drop.reset();
    m_window.reset();
    m_rig.reset();
}

QString tst_FileDrop::file(const QString &name, const QByteArray &content) const
{
    m_rig->writeFile(name, content);
    return m_rig->data.filePath(name);
}

// As the toolkit does it; whether the drop was taken.
bool tst_FileDrop::drop(const QMimeData &data)
{
    QDragEnterEvent enter(QPoint(400, 300), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                          Qt::NoModifier);
    QCoreApplication::sendEvent(m_window.get(), &enter);
    if (!enter.isAccepted()) {
        return false;
    }
    QDropEvent event(QPoint(400, 300), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                     Qt::NoModifier);
    event.setDropAction(Qt::MoveAction);
    QCoreApplication::sendEvent(m_window.get(), &event);
    QCoreApplication::processEvents();
    // Or whoever dragged it would remove it.
    return event.isAccepted() && event.dropAction() == Qt::CopyAction;
}

void tst_FileDrop::aDroppedFileIsImported()
{
    const QString path = file(QStringLiteral("one.xml"), "<ZR><MAPPING software=\"Mix\"/></ZR>");
    QVERIFY(drop(*files({path})));
    QCOMPARE(own(), QStringList(QStringLiteral("Mix")));
    QVERIFY(QFile::exists(path));
    // The page that would say so is not to be seen.
    QVERIFY(message());
    QCOMPARE(message()->findChild<QLabel *>(QStringLiteral("message"))->text(),
             QString::fromUtf8("\u201cMix\u201d was imported."));
}

void tst_FileDrop::severalAreImportedInTurn()
{
    const QString one = file(QStringLiteral("one.xml"), "<ZR><MAPPING software=\"Mix\"/></ZR>");
    const QString bad = file(QStringLiteral("bad.xml"), "nothing");
    QVERIFY(drop(*files({one, bad, one})));
    QCOMPARE(own(), QStringList({QStringLiteral("Mix"), QStringLiteral("Mix (2)")}));
    QCOMPARE(message()->findChild<QLabel *>(QStringLiteral("message"))->text().count(QLatin1Char('\n')), 2);
}

void tst_FileDrop::ofManyAFewAreNamed()
{
    QByteArray many;
    for (int i = 1; i <= 8; ++i) {
        many += "<MAPPING software=\"M" + QByteArray::number(i) + "\"/>";
    }
    QStringList paths{file(QStringLiteral("many.xml"), "<ZR>" + many + "</ZR>")};
    QSignalSpy steps(&m_rig->mappings, &MappingSession::stepped);
    while (paths.size() < 8) {
        paths << file(QStringLiteral("one.xml"), "<ZR><MAPPING software=\"Mix\"/></ZR>");
    }
    paths << file(QStringLiteral("bad.xml"), "nothing");
    QVERIFY(drop(*files(paths)));

    // What failed comes first, whenever it did.
    const QStringList lines = message()->accessibleName().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 6);
    QVERIFY2(lines.at(0).contains(QStringLiteral("bad.xml")), qPrintable(lines.at(0)));
    QCOMPARE(lines.at(1), QString::fromUtf8("Imported: M1, M2, M3, M4, M5, \u2026 and 3 more"));
    QCOMPARE(lines.at(5), QString::fromUtf8("\u2026 and 4 more"));
    QVERIFY(message()->height() < 400);
    // The page's line, its tool tip and what is read out.
    QCOMPARE(steps.at(0).at(0).value<MappingStep>().name,
             QString::fromUtf8("M1, M2, M3, M4, M5, \u2026 and 3 more"));
}

void tst_FileDrop::whatIsWrongIsSaid()
{
    const QString path = file(QStringLiteral("bad.xml"),
                              "<ZR>\n<MAPPING software=\"Mix\">\n<BUTTON id=\"77\"/></MAPPING></ZR>");
    QVERIFY(drop(*files({path})));
    QCOMPARE(own(), QStringList());
    QVERIFY(message()->isVisible());
    QCOMPARE(message()->accessibleName(),
             QString::fromUtf8(
                 "\u201cbad.xml\u201d was not imported: line 3, \u201cMix\u201d: \u201c77\u201d is no "
                 "number of a control, which are 0 to 9."));
    QTest::keyClick(message(), Qt::Key_Return);
    QVERIFY(!message()->isVisible());
}

void tst_FileDrop::whatIsNoFileIsNotTaken_data()
{
    QTest::addColumn<QString>("url");

    QTest::newRow("text") << QString();
    QTest::newRow("of the web") << QStringLiteral("https://example.invalid/mix.xml");
    QTest::newRow("of another computer") << QStringLiteral("sftp://example.invalid/mix.xml");
}

void tst_FileDrop::whatIsNoFileIsNotTaken()
{
    QFETCH(QString, url);
    QMimeData data;
    data.setText(QStringLiteral("<ZR/>"));
    if (!url.isEmpty()) {
        data.setUrls({QUrl(url)});
    }
    QVERIFY(!drop(data));
    QVERIFY(!drop(*files(QStringList())));
    QStringList many;
    for (int i = 0; i <= FileDrop::mostFiles; ++i) {
        many.append(QStringLiteral("/none.xml"));
    }
    QVERIFY(!drop(*files(many)));
    QCOMPARE(message(), nullptr);
}

void tst_FileDrop::anImportIsAStepThatIsTakenBack()
{
    const QString path = file(QStringLiteral("one.xml"), "<ZR><MAPPING software=\"Mix\"/></ZR>");
    QVERIFY(drop(*files({path})));
    QVERIFY(m_rig->mappings.takeBack());
    QCOMPARE(own(), QStringList());
    QVERIFY(m_rig->mappings.redo());
    QCOMPARE(own(), QStringList(QStringLiteral("Mix")));
}

QTEST_MAIN(tst_FileDrop)
#include "tst_FileDrop.moc"
