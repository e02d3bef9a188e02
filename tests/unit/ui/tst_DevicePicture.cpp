#include "tests/support/main/Main.h"
#include "ui/DevicePicture.h"

#include <QHelpEvent>
#include <QImage>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>
#include <QVector>

#include <algorithm>
#include <utility>

class tst_DevicePicture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesHaveOneWidthAtEveryScale();
    void aLabelOfAFileIsTextAndNoMarkup();
    void aClickTellsTheControl();
};

// This program runs once for each of several scales.
void tst_DevicePicture::linesHaveOneWidthAtEveryScale()
{
    const qreal scale = qApp->devicePixelRatio();
    QWidget page;
    page.setStyleSheet(QStringLiteral("background-color:#5342d9"));
    page.resize(900, 650);
    DevicePicture picture(&page);
    page.show();
    QImage seen((QSizeF(DevicePicture::place.size()) * scale).toSize(), QImage::Format_ARGB32);
    seen.setDevicePixelRatio(scale);
    seen.fill(Qt::black);
    picture.render(&seen);
    seen.setDevicePixelRatio(1);

    // The five lines to the boxes on each side, by how much of a column each of them colours.
    const QRgb ground = qRgb(0x53, 0x42, 0xd9);
    for (const int place : {20, DevicePicture::place.width() - 20}) {
        QVector<double> lines;
        bool within = false;
        for (int y = 0; y < seen.height(); ++y) {
            const QRgb pixel = seen.pixel(int(place * scale), y);
            if (pixel == ground) {
                within = false;
                continue;
            }
            if (!std::exchange(within, true)) {
                lines.append(0);
            }
            lines.last() += qRed(pixel) - qRed(ground);
        }
        QCOMPARE(lines.size(), 5);
        const auto [thinnest, widest] = std::minmax_element(lines.begin(), lines.end());
        qInfo() << "the widest line is" << *widest / *thinnest << "times as wide as the thinnest";
        QVERIFY(*widest / *thinnest < 1.1);
    }
}

void tst_DevicePicture::aLabelOfAFileIsTextAndNoMarkup()
{
    QWidget page;
    page.resize(900, 650);
    DevicePicture picture(&page);
    const QString text = QStringLiteral("Normal: <h1>Undo</h1>\nShift 1: <b>Redo</b>");
    picture.setControlToolTips({text});
    page.show();
    const QPoint place = DevicePicture::mark(0).center() - DevicePicture::place.topLeft();
    QHelpEvent help(QEvent::ToolTip, place, picture.mapToGlobal(place));
    QCoreApplication::sendEvent(&picture, &help);
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    QCOMPARE(shown.toPlainText().replace(QChar::Nbsp, QLatin1Char(' ')),
             QStringLiteral("Button 0\n") + text + QStringLiteral("\nClick to change what it does"));
    QToolTip::hideText();
}

void tst_DevicePicture::aClickTellsTheControl()
{
    QWidget page;
    page.resize(900, 650);
    DevicePicture picture(&page);
    picture.setControlToolTips({{}, {}, {}, {}, {}, {}, {}, {}, {}, {}});
    page.show();
    QSignalSpy clicked(&picture, &DevicePicture::clicked);
    const auto at = [](int control) {
        return DevicePicture::mark(control).center() - DevicePicture::place.topLeft();
    };
    QTest::mouseClick(&picture, Qt::LeftButton, {}, at(7));
    QCOMPARE(clicked.size(), 1);
    QCOMPARE(clicked.constFirst().constFirst().toInt(), 7);
    QTest::mouseClick(&picture, Qt::LeftButton, {}, at(-1)); // the knob has no box
    QTest::mouseClick(&picture, Qt::RightButton, {}, at(7));
    QTest::mouseClick(&picture, Qt::LeftButton, {}, QPoint(5, 5));
    QCOMPARE(clicked.size(), 1);
}

QTEST_MAIN(tst_DevicePicture)
#include "tst_DevicePicture.moc"
