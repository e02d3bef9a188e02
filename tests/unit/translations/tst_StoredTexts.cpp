#include "app/Translations.h"
#include "app/frame/AppFonts.h"
#include "tests/support/main/Main.h"
#include "tests/support/page/PageRig.h"
#include "tests/unit/ui_menus/PopUp.h"
#include "ui/ComboMapping.h"
#include "ui/ComboMenu.h"
#include "ui/MidiMenu.h"
#include "ui/SaveDialog.h"
#include "ui/ShortcutKey.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace
{

/// What the user's choices have left behind.
struct Stored {
    QByteArray settings;
    QByteArray workingCopy;
    QByteArray customMappings;
};

void click(QWidget *dialog, const QString &picture)
{
    const QString sheet = OverlayDialog::pictureSheet(picture, false);
    for (QLabel *button : dialog->findChildren<QLabel *>()) {
        if (button->styleSheet() == sheet) {
            const QPoint place = button->mapTo(dialog, button->rect().center());
            QTest::mouseClick(dialog, Qt::LeftButton, Qt::NoModifier, place);
            return;
        }
    }
    QFAIL(qPrintable(picture));
}

void type(ShortcutKey *dialog, const QVector<int> &codes)
{
    for (const int code : codes) {
        QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier);
        QCoreApplication::sendEvent(dialog, &press);
    }
}

/// Chooses the entry at the same place of the menu in every language.
void choose(ComboMenu *menu, int layer, int nth)
{
    PopUp::whenOpen([&] {
        QList<QMenu *> layers;
        for (QAction *action : PopUp::active()->actions()) {
            if (action->menu()) {
                layers << action->menu();
            }
        }
        PopUp::active()->setActiveAction(layers.at(layer)->menuAction());
        QTest::keyClick(PopUp::active(), Qt::Key_Right);
        QList<QAction *> entries;
        for (QAction *action : layers.at(layer)->actions()) {
            if (!action->isSeparator()) {
                entries << action;
            }
        }
        layers.at(layer)->setActiveAction(entries.at(nth));
        QTest::keyClick(layers.at(layer), Qt::Key_Return);
    });
    menu->dislayMenu();
}

} // namespace

/// What is stored depends on what was chosen, and not on how it was displayed.
class tst_StoredTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void areTheSameInEveryLanguage();

private:
    Stored chooseEverything();
    void choose(DeviceZR *page);
};

void tst_StoredTexts::choose(DeviceZR *page)
{
    const QList<ComboMenu *> menus = page->findChildren<ComboMenu *>();
    // There is one of each, of the one menu that is asked for it.
    const auto shortcutKey = [&] { return page->findChild<ShortcutKey *>(); };
    const auto midiMenu = [&] { return page->findChild<MidiMenu *>(); };
    enum Entry { Shortcut, Midi, FirstPlain, KnobMidi = 9, FirstShift = 10, LastShift = 11 };

    // All that need no dialog, in all layers.
    for (int entry = FirstPlain; entry < KnobMidi; ++entry) {
        for (const Layer layer : Layers::all) {
            ::choose(menus.at(entry - FirstPlain), Layers::number(layer), entry);
        }
    }
    ::choose(menus.at(7), 0, FirstShift);
    ::choose(menus.at(8), 0, LastShift);

    ::choose(menus.at(9), 0, Shortcut);
    type(shortcutKey(), {17, 36, 46});
    click(shortcutKey(), QStringLiteral("ok"));
    // Cancelled, shown again, and confirmed as it then stands.
    ::choose(menus.at(9), 1, Shortcut);
    type(shortcutKey(), {18, 33});
    click(shortcutKey(), QStringLiteral("cancel"));
    ::choose(menus.at(9), 1, Shortcut);
    click(shortcutKey(), QStringLiteral("ok"));

    ::choose(menus.at(6), 1, Midi);
    midiMenu()->findChildren<QLineEdit *>().constFirst()->setText(QStringLiteral("7"));
    midiMenu()->findChildren<QCheckBox *>().constFirst()->click();
    QTest::keyClick(midiMenu(), Qt::Key_Return);
    ::choose(menus.at(6), 2, KnobMidi);
    midiMenu()->findChildren<QCheckBox *>().constFirst()->click();
    QTest::keyClick(midiMenu(), Qt::Key_Return);

    // Once under the name that the dialog offers.
    auto *save = page->findChild<SaveDialog *>();
    save->show();
    click(save, QStringLiteral("ok"));
    // Everything so far goes into the working copy.
    ::choose(menus.at(9), 2, Shortcut);
    type(shortcutKey(), {44});
    click(shortcutKey(), QStringLiteral("ok"));
}

Stored tst_StoredTexts::chooseEverything()
{
    PageRig rig;
    const auto serial = PageRig::makeSerial();
    QWidget window;
    window.resize(900, 650);
    DeviceZR *page = rig.makePage(&window, serial.get(), nullptr);
    page->resize(900, 650);
    window.show();
    choose(page);

    rig.store.sync();
    QFile file(rig.store.fileName());
    Stored stored;
    stored.settings = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    stored.workingCopy = rig.readFile(QStringLiteral("current.xml"));
    stored.customMappings = rig.readFile(QStringLiteral("custom.xml"));
    return stored;
}

void tst_StoredTexts::areTheSameInEveryLanguage()
{
    const Stored english = chooseEverything();
    QVERIFY(english.settings.contains("key1=16781922"));
    QVERIFY(english.settings.contains("label=Ctrl + home + del"));
    QVERIFY(english.settings.contains("label=type a shorcut"));
    QVERIFY(english.settings.contains("label=M.Left"));
    QVERIFY(english.workingCopy.contains("label=\"PrtScn\""));
    QVERIFY(english.workingCopy.contains("label=\"Midi for Knob\""));
    QVERIFY(english.customMappings.contains("software=\"Untitled\""));

    Translations::install(QLocale(QLocale::German));
    QCOMPARE(QCoreApplication::translate("SaveDialog", "Save Mapping"), QStringLiteral("Belegung speichern"));
    const Stored german = chooseEverything();
    QCOMPARE(german.settings, english.settings);
    QCOMPARE(german.workingCopy, english.workingCopy);
    QCOMPARE(german.customMappings, english.customMappings);
}

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    AppFonts::load();
    tst_StoredTexts test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_StoredTexts.moc"
