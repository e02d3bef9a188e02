#include "app/ZRMainWindow.h"
#include "app/frame/AppFonts.h"
#include "app/frame/ZRDialog.h"
#include "tests/support/main/Main.h"
#include "tests/unit/app/PageInWindow.h"
#include "tests/unit/ui_menus/PopUp.h"
#include "ui/ComboMapping.h"
#include "ui/MidiMenu.h"
#include "ui/SaveDialog.h"
#include "ui/SensitivitySlider.h"
#include "ui/ShortcutKey.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QTest>

#include <cmath>

namespace
{

constexpr double forText = 4.5;
constexpr double forFrames = 3;

double luminance(QRgb colour)
{
    const auto part = [](int value) {
        const double linear = value / 255.0;
        return linear <= 0.03928 ? linear / 12.92 : std::pow((linear + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(qRed(colour)) + 0.7152 * part(qGreen(colour)) + 0.0722 * part(qBlue(colour));
}

/// As the guidelines on accessible content define it: 1 to 21.
double contrast(QRgb a, QRgb b)
{
    const double lighter = std::max(luminance(a), luminance(b)) + 0.05;
    const double darker = std::min(luminance(a), luminance(b)) + 0.05;
    return lighter / darker;
}

QImage seen(QWidget &widget)
{
    return widget.window()->grab(QRect(widget.mapTo(widget.window(), QPoint()), widget.size())).toImage();
}

/// The colour of most of its pixels.
QRgb groundOf(const QImage &image)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ++counts[image.pixel(x, y)];
        }
    }
    return std::max_element(counts.keyValueBegin(), counts.keyValueEnd(),
                            [](const auto &a, const auto &b) { return a.second < b.second; })
        ->first;
}

/// Of what stands out most. Letters are smoothed: only their darkest pixels have their colour.
double mostContrast(const QImage &image)
{
    const QRgb ground = groundOf(image);
    double most = 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            most = std::max(most, contrast(image.pixel(x, y), ground));
        }
    }
    return most;
}

/// How many pixels the focus changes so that the change is seen.
int changedBy(const QImage &before, const QImage &after)
{
    int changed = 0;
    for (int y = 0; y < before.height(); ++y) {
        for (int x = 0; x < before.width(); ++x) {
            changed += contrast(before.pixel(x, y), after.pixel(x, y)) >= forFrames ? 1 : 0;
        }
    }
    return changed;
}

} // namespace

/// What is seen of texts, frames and the focus, by the pixels.
class tst_Seen : public QObject, private PageInWindow
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { end(); }

    void theFocusOnThePage();
    void theFocusInTheDialogs();
    void theFocusInAMessage();
    void textsOnThePage();
    void textsInTheDialogs();
    void framesInTheDialogs();
    void theSliders();
    void theCheckBoxOfThePage();
    void disabledEntriesOfTheMenus();
    void theBoxesFrames();

private:
    void everyControlShowsTheFocus(QWidget &window);
};

void tst_Seen::init()
{
    begin();
    m_window->setAttribute(Qt::WA_StyledBackground);
    m_window->setStyleSheet(QStringLiteral("QWidget { background-color: #5342d9; }"));
    makePage();
    QApplication::setActiveWindow(m_window.get());
}

void tst_Seen::everyControlShowsTheFocus(QWidget &window)
{
    QApplication::setActiveWindow(&window);
    int checked = 0;
    const QList<QWidget *> all = window.findChildren<QWidget *>();
    for (QWidget *control : all) {
        if (!(control->focusPolicy() & Qt::TabFocus) || !control->isVisible() || !control->isEnabled() ||
            control->window() != &window) {
            continue;
        }
        if (QApplication::focusWidget() != nullptr) {
            QApplication::focusWidget()->clearFocus();
        }
        const QImage before = seen(*control);
        control->setFocus(Qt::TabFocusReason);
        QCOMPARE(QApplication::focusWidget(), control);
        if (auto *field = qobject_cast<QLineEdit *>(control)) {
            field->deselect();
        }
        const int changed = changedBy(before, seen(*control));
        // A line of one pixel along most of its edge.
        const int wanted = control->width() + control->height();
        QVERIFY2(changed >= wanted, qPrintable(QStringLiteral("%1 %2: %3 pixels of %4")
                                                   .arg(QLatin1String(control->metaObject()->className()),
                                                        control->accessibleName())
                                                   .arg(changed)
                                                   .arg(wanted)));
        ++checked;
    }
    QVERIFY(checked > 0);
}

void tst_Seen::theFocusOnThePage()
{
    everyControlShowsTheFocus(*m_window);
    m_page->onUpdateAvailable(QStringLiteral("2.0"));
    everyControlShowsTheFocus(*m_window);
    m_page->onDownloadStart();
    everyControlShowsTheFocus(*m_window);
}

void tst_Seen::theFocusInTheDialogs()
{
    MidiMenu midi(m_page);
    midi.show(0, 13, shortCut());
    everyControlShowsTheFocus(midi);
    midi.showKnob(0, 3, shortCut());
    everyControlShowsTheFocus(midi);
    midi.hide();
    SaveDialog save(m_page);
    save.show();
    everyControlShowsTheFocus(save);
}

void tst_Seen::theFocusInAMessage()
{
    ZRDialog message(QStringLiteral("A question?"), QStringLiteral("OK"), QStringLiteral("Cancel"));
    message.show();
    QApplication::setActiveWindow(&message);
    const QList<QPushButton *> buttons = message.findChildren<QPushButton *>();
    // The button that Return presses shows it from the beginning.
    QCOMPARE(QApplication::focusWidget(), buttons.at(0));
    const QImage focused = seen(*buttons.at(0));
    buttons.at(1)->setFocus();
    QVERIFY(changedBy(seen(*buttons.at(0)), focused) > 2 * buttons.at(0)->width());
    everyControlShowsTheFocus(message);
}

void tst_Seen::textsOnThePage()
{
    // All that the page says at times, at once.
    m_page->dowloadFinished(true);
    m_page->showRefusedInput();
    m_rig->autostart.refuses = true;
    m_page->setLaunchOnStartup(true);
    m_rig->mappings.assign(3, Layer::Normal, shortCut{17, 16, 'S', QStringLiteral("Save")});
    ZRButtonMap map(QStringLiteral("Other"));
    map.actions = m_rig->mappings.actions();
    m_page->newMap(&map);
    m_rig->engine.dispatcher->onButtonpress(3, true);
    m_rig->engine.dispatcher->onButtonpress(3, false);
    const auto shows = [this](const char *name) {
        const auto *widget = m_page->findChild<QWidget *>(QLatin1String(name));
        return widget != nullptr && widget->isVisible();
    };
    for (const char *name : {"mapNotice", "notKept", "keep", "undo", "failure", "refusedInput", "nameLine",
                             "programChoice", "showChanges"}) {
        QVERIFY2(shows(name), name);
    }
    QTRY_VERIFY(shows("sent"));

    // Of a quiet colour each, and meant so. The links of the header are texts with their colour in them.
    const QStringList quiet = {QStringLiteral("Knob and buttons settings."),
                               QStringLiteral("Slow"),
                               QStringLiteral("Fast"),
                               QStringLiteral("Launch on startup"),
                               m_page->findChild<QLabel *>(QStringLiteral("midiPort"))->text(),
                               m_page->findChild<QLabel *>(QStringLiteral("version"))->text()};
    int left = 0;
    int checked = 0;
    const auto check = [&](QWidget &widget, const QString &text) {
        if (!widget.isVisible() || text.isEmpty() || widget.window() != m_window.get()) {
            return;
        }
        if (quiet.contains(text) || text.startsWith(QLatin1String("<a "))) {
            ++left;
            return;
        }
        const double found = mostContrast(seen(widget));
        QVERIFY2(found >= forText, qPrintable(QStringLiteral("%1: %2").arg(text).arg(found)));
        ++checked;
    };
    for (QLabel *label : m_page->findChildren<QLabel *>()) {
        check(*label, label->text());
    }
    for (QCheckBox *box : m_page->findChildren<QCheckBox *>()) {
        check(*box, box->text());
    }
    QCOMPARE(left, quiet.size() + 3);
    QVERIFY2(checked >= 15, qPrintable(QString::number(checked)));
}

void tst_Seen::textsInTheDialogs()
{
    MidiMenu midi(m_page);
    midi.setSubject(QStringLiteral("Button 3, Shift 1"));
    midi.show(1, 13, shortCut());
    ShortcutKey keys(m_page);
    keys.setSubject(QStringLiteral("Button 3, Shift 1"));
    keys.show(1);
    SaveDialog save(m_page);
    save.show();
    save.showFailure(QStringLiteral("the disk is full"));
    int checked = 0;
    for (QWidget *dialog :
         {static_cast<QWidget *>(&midi), static_cast<QWidget *>(&keys), static_cast<QWidget *>(&save)}) {
        const QList<QLabel *> labels = dialog->findChildren<QLabel *>();
        for (QLabel *label : labels) {
            if (label->isVisible() && !label->text().isEmpty()) {
                QVERIFY2(mostContrast(seen(*label)) >= forText, qPrintable(label->text()));
                ++checked;
            }
        }
    }
    QVERIFY(checked >= 8);
}

void tst_Seen::framesInTheDialogs()
{
    MidiMenu midi(m_page);
    midi.showKnob(1, 3, shortCut());
    SaveDialog save(m_page);
    save.show();
    QList<QWidget *> framed;
    for (QWidget *dialog : {static_cast<QWidget *>(&midi), static_cast<QWidget *>(&save)}) {
        for (QLineEdit *field : dialog->findChildren<QLineEdit *>()) {
            framed << field;
        }
    }
    for (QWidget *field : qAsConst(framed)) {
        if (field->isVisible()) {
            field->clearFocus();
            const QImage image = seen(*field);
            QVERIFY(contrast(image.pixel(0, image.height() / 2), qRgb(255, 255, 255)) >= forFrames);
        }
    }
    for (QCheckBox *box : midi.findChildren<QCheckBox *>()) {
        box->setChecked(false);
        box->clearFocus();
        const QImage image = seen(*box).copy(0, 0, 12, box->height()); // its square
        QVERIFY2(mostContrast(image) >= forFrames, qPrintable(box->text()));
    }
}

void tst_Seen::theSliders()
{
    for (SensitivitySlider *slider : m_page->findChildren<SensitivitySlider *>()) {
        slider->setValue(50);
        const QImage image = seen(*slider);
        const QRgb ground = image.pixel(image.width() / 4, image.height() - 5); // between groove and ticks
        QCOMPARE(ground, qRgb(0x53, 0x42, 0xd9));
        double groove = 1;
        double ticks = 1;
        for (int x = 0; x < image.width() / 3; ++x) { // where the handle is not
            for (int y = 0; y < image.height(); ++y) {
                double &which = y < image.height() - 5 ? groove : ticks;
                which = std::max(which, contrast(image.pixel(x, y), ground));
            }
        }
        QVERIFY2(groove >= forFrames, qPrintable(QString::number(groove)));
        QVERIFY2(ticks >= forFrames, qPrintable(QString::number(ticks)));
    }
}

void tst_Seen::theCheckBoxOfThePage()
{
    for (QCheckBox *box : m_page->findChildren<QCheckBox *>(QString(), Qt::FindDirectChildrenOnly)) {
        for (const bool checked : {false, true}) {
            const QSignalBlocker blocker(box);
            box->setChecked(checked);
            const QImage square = seen(*box).copy(0, 0, 16, box->height());
            double most = 1;
            for (int y = 0; y < square.height(); ++y) {
                for (int x = 0; x < square.width(); ++x) {
                    most = std::max(most, contrast(square.pixel(x, y), qRgb(0x53, 0x42, 0xd9)));
                }
            }
            QVERIFY2(most >= forFrames, qPrintable(QString::number(most)));
        }
    }
}

void tst_Seen::disabledEntriesOfTheMenus()
{
    double found = 0;
    PopUp::whenOpen([&] {
        QMenu *custom = PopUp::submenu(*PopUp::active(), QStringLiteral("Custom"));
        QAction *none = custom->actions().constFirst();
        QVERIFY(!none->isEnabled());
        custom->popup(QPoint(0, 0));
        found = mostContrast(custom->grab(custom->actionGeometry(none)).toImage());
    });
    m_page->findChild<ComboMapping *>()->dislayMenu();
    QVERIFY2(found >= forText, qPrintable(QString::number(found)));
}

void tst_Seen::theBoxesFrames()
{
    for (const char *name : {":/icons/comboboarder.png", ":/icons/comboboarder@2x.png"}) {
        QImage box(QString::fromLatin1(name));
        QImage image(box.size(), QImage::Format_RGB32);
        image.fill(qRgb(0x53, 0x42, 0xd9));
        QPainter(&image).drawImage(QRect({}, box.size()), box);
        const double frame = contrast(image.pixel(image.width() / 2, 0), qRgb(0x53, 0x42, 0xd9));
        QVERIFY2(frame >= forFrames, qPrintable(QString::number(frame)));
    }
}

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    AppFonts::load();
    tst_Seen test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_Seen.moc"
