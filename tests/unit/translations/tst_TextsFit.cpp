#include "app/FindingText.h"
#include "app/Translations.h"
#include "app/ZRMainWindow.h"
#include "app/frame/AppFonts.h"
#include "app/frame/LicenceDialog.h"
#include "app/frame/WelcomeWindow.h"
#include "app/frame/ZRDialog.h"
#include "device/DeviceSearch.h"
#include "tests/support/main/Main.h"
#include "tests/support/page/PageRig.h"
#include "tests/unit/translations/TranslationFile.h"
#include "ui/ComboMapping.h"
#include "ui/ComboMenu.h"
#include "ui/ComboMenuLabel.h"
#include "ui/MidiMenu.h"
#include "ui/SaveDialog.h"
#include "ui/ShortcutKey.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QStyleOptionButton>
#include <QTest>
#include <QTextDocument>

#include <functional>

namespace
{

const QChar ellipsis(0x2026);

int roomOf(const QAbstractButton &button)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    return button.style()
        ->subElementRect(qobject_cast<const QCheckBox *>(&button) ? QStyle::SE_CheckBoxContents
                                                                  : QStyle::SE_PushButtonContents,
                         &option, &button)
        .width();
}

/// Empty when @p shown fits into @p room, whole or with the whole text in the tool tip.
QString problem(const QWidget &widget, const QString &shown, int room, const QString &whole,
                const QString &toolTip)
{
    const int width = widget.fontMetrics().horizontalAdvance(shown);
    if (width > room) {
        return QStringLiteral("\"%1\" needs %2 pixels and has %3").arg(shown).arg(width).arg(room);
    }
    if (shown.contains(ellipsis) && (whole.contains(ellipsis) || !toolTip.contains(whole))) {
        return QStringLiteral("\"%1\" is cut, and its tool tip says \"%2\"").arg(shown, toolTip);
    }
    return {};
}

/// A place may be lower than a line is high, as long as this text's letters are not cut. The lowest row of
/// the rectangle that the toolkit tells is faint: as many rows as @p faint may be missing.
QString heightProblem(const QLabel &label, const QString &text, int faint)
{
    const QFontMetrics metrics = label.fontMetrics();
    const QRect line = label.style()->itemTextRect(metrics, label.contentsRect(),
                                                   static_cast<int>(label.alignment()), true, text);
    const QRect letters = metrics.tightBoundingRect(text).translated(0, line.top() + metrics.ascent());
    return letters.top() >= 0 && letters.bottom() < label.height() + faint
               ? QString()
               : QStringLiteral("\"%1\" reaches from %2 to %3 of %4 pixels")
                     .arg(text)
                     .arg(letters.top())
                     .arg(letters.bottom())
                     .arg(label.height());
}

QString problemOf(const QLabel &label, int faint)
{
    const QRect room = label.contentsRect();
    if (label.text().isEmpty()) {
        return {};
    }
    if (const auto *parts = qobject_cast<const ComboMenuLabel *>(&label)) {
        // The bar's tool tip says in words what the labels say.
        const QWidget &bar = *label.parentWidget();
        const bool cut = parts->shownText().contains(ellipsis);
        return problem(label, parts->shownText(), room.width(), {}, cut ? bar.toolTip() : QString());
    }
    if (label.wordWrap()) {
        const int height = label.heightForWidth(label.width());
        return height <= label.height()
                   ? QString()
                   : QStringLiteral("\"%1\" is %2 pixels high").arg(label.text()).arg(height);
    }
    QString text = label.text();
    if (label.textFormat() == Qt::RichText) {
        QTextDocument document;
        document.setHtml(text);
        text = document.toPlainText();
    }
    const QString found = problem(label, text, room.width(), label.accessibleName(), label.toolTip());
    return found.isEmpty() ? heightProblem(label, text, faint) : found;
}

QString problemOf(const QMenu &menu)
{
    for (const QAction *action : menu.actions()) {
        const int room = menu.actionGeometry(const_cast<QAction *>(action)).width();
        const QString found = problem(menu, action->text(), room, {}, action->toolTip());
        if (!found.isEmpty()) {
            return found;
        }
    }
    return menu.sizeHint().width() <= 450 ? QString()
                                          : QStringLiteral("the menu is wider than half the page");
}

/// Every text of a widget, the ones that are heard or shown on request too.
QStringList textsOf(const QWidget &widget)
{
    QStringList texts{widget.toolTip(), widget.accessibleName(), widget.accessibleDescription(),
                      widget.windowTitle()};
    if (const auto *label = qobject_cast<const QLabel *>(&widget)) {
        texts << label->text();
    } else if (const auto *button = qobject_cast<const QAbstractButton *>(&widget)) {
        texts << button->text();
    } else if (const auto *field = qobject_cast<const QLineEdit *>(&widget)) {
        texts << field->placeholderText();
    } else if (const auto *menu = qobject_cast<const QMenu *>(&widget)) {
        texts << menu->title();
        for (const QAction *action : menu->actions()) {
            texts << action->text() << action->toolTip();
        }
    }
    return texts;
}

} // namespace

/// The whole window with its dialogs and menus, in each language.
class tst_TextsFit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everywhere_data();
    void everywhere();

private:
    void check();
    void openEverything(ZRMainWindow *window, MappingSession &session);

    QStringList m_untranslated; // sources that a translation differs from
    int m_checked = 0;
};

void tst_TextsFit::everywhere_data()
{
    QTest::addColumn<QLocale>("locale");
    // In this order: a language that is in force stays.
    QTest::newRow("English") << QLocale(QLocale::English);
    QTest::newRow("German") << QLocale(QLocale::German);
}

void tst_TextsFit::check()
{
    if (QTest::currentTestFailed()) {
        return; // said once
    }
    for (const QWidget *widget : QApplication::allWidgets()) {
        QString found;
        if (const auto *label = qobject_cast<const QLabel *>(widget)) {
            // What the design's places do to its own words is the design's.
            found = problemOf(*label, m_untranslated.isEmpty() ? 1 : 0);
        } else if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
            found = problem(*button, button->text(), roomOf(*button), button->accessibleName(),
                            button->toolTip());
        } else if (const auto *menu = qobject_cast<const QMenu *>(widget)) {
            found = problemOf(*menu);
        } else if (const auto *field = qobject_cast<const QLineEdit *>(widget)) {
            found = problem(*field, field->placeholderText(), field->width() - 10, {}, {});
        }
        QVERIFY2(found.isEmpty(), qPrintable(found));
        for (const QString &text : textsOf(*widget)) {
            QVERIFY2(!m_untranslated.contains(text), qPrintable(text));
            m_checked += text.isEmpty() ? 0 : 1;
        }
    }
}

void tst_TextsFit::openEverything(ZRMainWindow *window, MappingSession &session)
{
    for (ZRBaseWindow *page : window->findChildren<ZRBaseWindow *>()) {
        page->onUpdateAvailable(QStringLiteral("12.34.56"));
        check();
        page->onDownloadStart();
        check();
        page->onDownloading(100);
        check();
        page->onDownloadComplete();
    }
    using Kind = DeviceFinding::Kind;
    auto *welcome = window->findChild<WelcomeWindow *>();
    for (const Kind kind : {Kind::Nothing, Kind::NamedMissing, Kind::Other, Kind::Forbidden, Kind::Held,
                            Kind::Refused, Kind::Vanishing, Kind::Open}) {
        const QString sentence = FindingText::sentence({kind,
                                                        QStringLiteral("/dev/ttyACM0"),
                                                        QStringLiteral("dialout"),
                                                        {1, QStringLiteral("minicom")}});
        welcome->showFinding(sentence, true, QUrl());
        check();
        QCOMPARE(welcome->findChild<QLabel *>(QStringLiteral("finding"))->text(), sentence); // not cut
    }
    LicenceDialog licences(window);
    licences.setAttribute(Qt::WA_DeleteOnClose, false);
    licences.show();
    check();
    licences.hide();
    auto *page = window->devicePage();
    auto *menu = page->findChildren<ComboMenu *>().at(3);
    MidiMenu midi(page);
    midi.show(0, 13, menu->assignment(Layer::Normal));
    check();
    midi.hide();
    midi.showKnob(0, 3, menu->assignment(Layer::Normal));
    check();
    midi.hide();

    ShortcutKey shortcut(page);
    shortcut.show(0);
    check();
    for (const int key : {17, 36, 35, 33, 34, 44, 45, 46, 19, 144}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&shortcut, &press);
        check();
    }
    QKeyEvent refused(QEvent::KeyPress, Qt::Key_Dead_Hook, Qt::NoModifier);
    QCoreApplication::sendEvent(&shortcut, &refused);
    check();
    shortcut.hide();

    auto *save = page->findChild<SaveDialog *>();
    save->show();
    check();
    save->findChild<QLineEdit *>()->clear();
    check();
    save->setListed([](const QString &) { return true; });
    save->findChild<QLineEdit *>()->setText(QStringLiteral("Mix"));
    check();
    page->findChild<SaveDialog *>()->hide();

    // The line of what was done: a name of some length is cut, what is said about it is not.
    const QString mix = QStringLiteral("Video cutting");
    const auto *line = page->findChild<QLabel *>(QStringLiteral("notKept"));
    using Step = MappingStep::Kind;
    for (const Step kind : {Step::Assign, Step::Use, Step::Save, Step::Remove, Step::Restore}) {
        for (const auto way :
             {MappingSession::Way::Done, MappingSession::Way::TakenBack, MappingSession::Way::DoneAgain}) {
            const MappingStep step{kind, 3, kind == Step::Restore ? QStringLiteral("custom.xml") : mix};
            Q_EMIT session.stepped(step, way);
            check();
            if (line->isVisibleTo(page)) {
                QCOMPARE(line->text(), line->accessibleName()); // it has the room for that
            }
        }
    }

    // Every label that the program itself stores, in all layers.
    for (const char *label :
         {"Horizontal", "Vertical", "Circular", " \u2193  \u2191 Key", "\u2190 \u2192 Key", "M.Left",
          "M.Right", "Midi", "Midi for Knob", "empty", "type a shorcut", "Ctrl + home + del", "Shift 1"}) {
        shortCut action;
        action.label = QString::fromUtf8(label);
        for (const Layer layer : Layers::all) {
            menu->getShorcut(Layers::number(layer), action);
        }
        check();
    }
    // The line that offers to keep what was changed is there by now.
    QVERIFY(page->findChild<QLabel *>(QStringLiteral("notKept"))->isVisibleTo(page));
}

void tst_TextsFit::everywhere()
{
    QFETCH(QLocale, locale);
    Translations::install(locale);
    const QVector<Translation> all = readTranslations(QStringLiteral("de"));
    m_untranslated.clear();
    if (locale.language() != QLocale::English) {
        for (const Translation &each : all) {
            if (each.source != each.text) {
                m_untranslated << each.source;
            }
        }
    }

    PageRig rig;
    rig.notice = QCoreApplication::translate(
        "Platform", "Keys reach X11 programs only. The user guide says under Wayland what helps.");
    ZRMainWindow window(
        PageRig::makeSerial(),
        [&](QWidget *parent, SerialProtocol *link, ZRUpdater *updater) {
            return rig.makePage(parent, link, updater);
        },
        nullptr, rig.engine.clock);
    window.show();
    window.devicePage()->show();
    m_checked = 0;
    check();
    openEverything(&window, rig.mappings);
    Q_EMIT rig.mapUpdate.updateStarted();
    check();
    Q_EMIT rig.mapUpdate.dowloadFinished(true);
    check();
    window.displayControlPanel(QStringLiteral("ZR"));
    check();

    for (const Translation &each : all) {
        if (each.context == QLatin1String("ZRUpdater") && each.source.size() > 10) {
            const auto text = [&](const QByteArray &source) {
                return QCoreApplication::translate("ZRUpdater", source.constData());
            };
            ZRDialog dialog(text(each.source.toUtf8()), text("OK"), text("Cancel"));
            dialog.show();
            check();
        }
    }
    QVERIFY2(m_checked > 2000, qPrintable(QString::number(m_checked)));
}

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    AppFonts::load();
    tst_TextsFit test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_TextsFit.moc"
