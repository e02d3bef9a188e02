#include "app/HidingNotice.h"
#include "engine/Settings.h"
#include "tests/support/main/Main.h"

#include <QTemporaryDir>
#include <QTest>

class tst_HidingNotice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isGivenOnceForEachUser();
};

void tst_HidingNotice::isGivenOnceForEachUser()
{
    const QTemporaryDir folder;
    QStringList shown;
    const auto show = [&shown](const QString &title, const QString &text) { shown << title << text; };
    for (int start = 0; start < 2; ++start) {
        Settings settings(folder.filePath(QStringLiteral("settings.conf")));
        HidingNotice::giveOnce(settings, show);
        HidingNotice::giveOnce(settings, show);
    }
    QCOMPARE(shown, QStringList({QStringLiteral("Veltrix goes on"),
                                 QStringLiteral("This desktop has no tray. Start Veltrix once more to bring "
                                                "its window back.")}));
}

QTEST_GUILESS_MAIN(tst_HidingNotice)
#include "tst_HidingNotice.moc"
