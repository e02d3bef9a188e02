#include "app/UpdateDialog.h"
#include "app/frame/ZRDialog.h"
#include "tests/platform/net/FakePrompt.h"
#include "tests/support/main/Main.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QWidget>

#include <algorithm>
#include <functional>

namespace
{

/// Presses the first (0) or the second (1) button of the question that stands.
using Press = std::function<void(int)>;

QStringList answered(UpdatePrompt &prompt, const Press &press)
{
    QStringList lines;
    const auto note = [&](const char *what) {
        lines.append(QLatin1String(what) + (prompt.isVisible() ? QStringLiteral(", a question stands")
                                                               : QStringLiteral(", none stands")));
    };
    const auto action = [&note](const char *name) { return [&note, name] { note(name); }; };
    const QString text = QStringLiteral("Now?");
    const QString yes = QStringLiteral("OK");
    const QString no = QStringLiteral("Cancel");

    note("at first");
    prompt.ask(text, yes, no, action("yes"), action("no"));
    note("asked");
    press(0);
    note("after the first button");
    prompt.ask(text, yes, no, action("yes"), action("no"));
    press(1);
    note("after the second button");

    prompt.ask(text, yes, no, {}, {});
    press(1);
    note("after a button without an action");

    prompt.ask(text, yes, QString(), action("yes"), {});
    note("asked with one button");
    press(0);
    note("after the only button");

    prompt.ask(text, yes, no, action("the first question"), action("the first question"));
    prompt.ask(text, yes, no, action("the second question"), action("the second question"));
    note("asked twice");
    press(0);
    note("after an answer to both");

    prompt.ask(text, yes, no, [&] { prompt.ask(text, yes, no, action("asked from an answer"), {}); }, {});
    press(0);
    note("after an answer that asks");
    press(0);
    note("after its answer");
    return lines;
}

} // namespace

/// The prompt that the updater's tests believe, compared with the dialog.
class tst_PromptDouble : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itAnswersAsTheDialogDoes()
    {
        QWidget window;
        window.resize(900, 650);
        window.show();
        UpdateDialog dialog;
        dialog.setWindow(&window);
        const QStringList expected =
            answered(dialog, [&window](int button) { pressInDialog(window, button); });
        QCOMPARE(expected.size(), 16);

        FakePrompt ours;
        const QStringList told = answered(ours, [&ours](int button) { ours.press(button); });
        QCOMPARE(told.join(QLatin1Char('\n')), expected.join(QLatin1Char('\n')));
    }

private:
    static void pressInDialog(QWidget &window, int button)
    {
        const QList<ZRDialog *> dialogs = window.findChildren<ZRDialog *>();
        const auto shown = std::find_if(dialogs.begin(), dialogs.end(),
                                        [](const ZRDialog *each) { return each->isVisible(); });
        QVERIFY(shown != dialogs.end());
        const QString text = button == 0 ? QStringLiteral("OK") : QStringLiteral("Cancel");
        for (QPushButton *each : (*shown)->findChildren<QPushButton *>()) {
            if (each->text() == text) {
                QTest::mouseClick(each, Qt::LeftButton);
                return;
            }
        }
        QFAIL("the button is missing");
    }
};

QTEST_MAIN(tst_PromptDouble)
#include "tst_PromptDouble.moc"
