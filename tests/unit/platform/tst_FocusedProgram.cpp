#include "engine/platform/FocusedProgram.h"
#include "tests/support/main/Main.h"

#include <QSignalSpy>
#include <QTest>

class tst_FocusedProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNameIsTheSameForEveryVersion_data();
    void aNameIsTheSameForEveryVersion();
    void whereNothingIsToldNothingIs();
};

void tst_FocusedProgram::aNameIsTheSameForEveryVersion_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("name");
    const auto row = [](const char *text, const char *id, const char *name) {
        QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(id) << QString::fromUtf8(name);
    };
    row("Gimp-2.10", "gimp", "Gimp");
    row("gimp-3.0.2", "gimp", "Gimp");
    row("Painter 12", "painter", "Painter");
    row("firefox", "firefox", "Firefox");
    row("Firefox-esr", "firefox-esr", "Firefox-esr");
    row("org.gnome.Nautilus", "org.gnome.nautilus", "Nautilus");
    row("steam_app_1234", "steam_app_1234", "Steam_app_1234"); // a program each
    row("x2", "x2", "X2");
    row("2.10", "2.10", "2.10");
    row("-1", "-1", "-1");
    row("two  words\tand\nmore", "two words and more", "Two words and more");
    row("übung", "übung", "Übung");
    row("", "", "");
    row("   ", "", "");
}

void tst_FocusedProgram::aNameIsTheSameForEveryVersion()
{
    QFETCH(QString, text);
    const FocusedProgram::Program program = FocusedProgram::Program::called(text);
    QTEST(program.id, "id");
    QTEST(program.name, "name");
}

void tst_FocusedProgram::whereNothingIsToldNothingIs()
{
    FocusedProgram focus;
    const QSignalSpy told(&focus, &FocusedProgram::focused);
    QVERIFY(!focus.isTold());
    focus.setWatched(true);
    QCOMPARE(told.count(), 0);
}

QTEST_GUILESS_MAIN(tst_FocusedProgram)
#include "tst_FocusedProgram.moc"
