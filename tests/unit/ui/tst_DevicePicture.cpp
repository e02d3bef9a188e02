#include "ui/DevicePicture.h"

#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>
#include <QtTest>

class tst_DevicePicture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLabelOfAFileIsTextAndNoMarkup();
};

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
    QCOMPARE(shown.toPlainText().replace(QChar::Nbsp, QLatin1Char(' ')), text);
    QToolTip::hideText();
}

QTEST_MAIN(tst_DevicePicture)
#include "tst_DevicePicture.moc"
