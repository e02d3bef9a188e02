#include "tests/support/main/Main.h"
#include "ui/ComboMenuStyle.h"

#include <QImage>
#include <QMenu>
#include <QPainter>
#include <QPixmapCache>
#include <QStyleFactory>
#include <QStyleOptionMenuItem>
#include <QTest>

#include <memory>

/// How the pop-up menus are painted.
class tst_ComboMenuStyle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { QPixmapCache::setCacheLimit(m_limit); }

    void anArrowIsTheToolkits_data();
    void anArrowIsTheToolkits();
    void paintingAgainFillsNoCache_data();
    void paintingAgainFillsNoCache();

private:
    QImage painted(const QStyle &style) const;

    const int m_limit = QPixmapCache::cacheLimit();
    ComboMenuStyle m_style;
    QMenu m_menu;
    QStyleOptionMenuItem m_entry;
};

void tst_ComboMenuStyle::init()
{
    m_style.applyTo(m_menu);
    m_entry.initFrom(&m_menu);
    m_entry.menuItemType = QStyleOptionMenuItem::SubMenu;
    m_entry.menuRect = m_entry.rect = QRect(0, 0, 200, 24);
    m_entry.font = m_menu.font();
}

QImage tst_ComboMenuStyle::painted(const QStyle &style) const
{
    QImage image(m_entry.rect.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    style.drawControl(QStyle::CE_MenuItem, &m_entry, &painter, &m_menu);
    return image;
}

void tst_ComboMenuStyle::anArrowIsTheToolkits_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        const QByteArray side = direction == Qt::LeftToRight ? "left to right" : "right to left";
        QTest::newRow(side + ", plain") << int(QStyle::State_Enabled) << direction;
        QTest::newRow(side + ", chosen") << int(QStyle::State_Enabled | QStyle::State_Selected) << direction;
        QTest::newRow(side + ", disabled") << int(QStyle::State_None) << direction;
        QTest::newRow(side + ", disabled and chosen") << int(QStyle::State_Selected) << direction;
    }
}

void tst_ComboMenuStyle::anArrowIsTheToolkits()
{
    QFETCH(int, state);
    QFETCH(Qt::LayoutDirection, direction);
    m_entry.state = QStyle::State(state);
    m_entry.direction = direction;
    m_entry.palette.setCurrentColorGroup((state & QStyle::State_Enabled) ? QPalette::Active
                                                                         : QPalette::Disabled);
    const std::unique_ptr<QStyle> fusion(QStyleFactory::create(QStringLiteral("Fusion")));
    const QImage arrow = painted(m_style);
    QCOMPARE(arrow, painted(*fusion));
    m_entry.menuItemType = QStyleOptionMenuItem::Normal;
    QVERIFY(arrow != painted(m_style));
}

void tst_ComboMenuStyle::paintingAgainFillsNoCache_data()
{
    QTest::addColumn<int>("state");
    QTest::newRow("plain") << int(QStyle::State_Enabled);
    QTest::newRow("chosen") << int(QStyle::State_Enabled | QStyle::State_Selected);
}

void tst_ComboMenuStyle::paintingAgainFillsNoCache()
{
    QFETCH(int, state);
    m_entry.state = QStyle::State(state);
    // Of so many small pictures the oldest goes when there is one more.
    QPixmapCache::clear();
    QPixmapCache::setCacheLimit(20);
    QPixmap picture(1, 1);
    picture.fill(Qt::white);
    const QPixmapCache::Key oldest = QPixmapCache::insert(picture);
    for (int i = 0; i < 50; ++i) {
        painted(m_style);
    }
    QVERIFY(QPixmapCache::find(oldest, &picture));
}

QTEST_MAIN(tst_ComboMenuStyle)
#include "tst_ComboMenuStyle.moc"
