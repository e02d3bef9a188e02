#include "app/Translations.h"
#include "app/frame/ActionLabels.h"
#include "app/frame/AppFonts.h"
#include "mapping/FileResult.h"
#include "mapping/SpecialAction.h"
#include "mapping/XmlMappingReader.h"
#include "tests/support/main/Main.h"
#include "tests/unit/translations/TranslationFile.h"
#include "tests/unit/ui_menus/MenuRig.h"
#include "ui/ComboMenuEntries.h"

#include <QApplication>
#include <QLabel>
#include <QLocale>
#include <QTest>

#include <algorithm>

/// The example library's labels follow the language of the page, and the stored ones do not.
class tst_LibraryLabels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void eachIsTranslated();
    void reasonsWithNumbersAre();
    void translatedOnesFitTheirBoxes();
    void whatIsStoredStaysAsItIs();

private:
    QObject m_owner;
    QList<ZRButtonMap *> m_maps;
};

void tst_LibraryLabels::initTestCase()
{
    Translations::install(QLocale(QLocale::German));
    XmlMappingReader reader;
    connect(&reader, &XmlMappingReader::newMapListReady, this, [this](const QList<ZRButtonMap *> &maps) {
        m_maps = maps;
        for (ZRButtonMap *map : maps) {
            map->setParent(&m_owner);
        }
    });
    reader.readMapList(QStringLiteral(VELTRIX_LIBRARY), false);
    QVERIFY(m_maps.size() > 20);
}

void tst_LibraryLabels::reasonsWithNumbersAre()
{
    const auto said = [](const char *reason) {
        return FileResult::failed(QString::fromUtf8(reason)).inWords();
    };
    QCOMPARE(said("line 3: unexpected end of file (column 8)"),
             QStringLiteral("Zeile 3: unerwartetes Ende der Datei (Spalte 8)"));
    QCOMPARE(said("line 1: <html> is no mapping file's (column 6)"),
             QString::fromUtf8("Zeile 1: <html> geh\u00f6rt in keine Belegungsdatei (Spalte 6)"));
    QCOMPARE(said("more than 8000000 tags"), QStringLiteral("mehr als 8000000 Marken"));
    QCOMPARE(said("it holds the character U+0001"), QString::fromUtf8("sie enth\u00e4lt das Zeichen U+0001"));
    QCOMPARE(said("something else"), QStringLiteral("something else"));
}

void tst_LibraryLabels::eachIsTranslated()
{
    QMap<QString, QString> german;
    for (const Translation &each : readTranslations(QStringLiteral("de"))) {
        if (each.context == QLatin1String("LibraryLabels")) {
            german.insert(each.source, each.text);
        }
    }
    QVERIFY(german.size() > 400);
    int checked = 0;
    for (const ZRButtonMap *map : qAsConst(m_maps)) {
        for (const auto &control : map->actions) {
            for (const shortCut &action : control) {
                const auto found = german.constFind(action.label);
                if (found != german.constEnd()) {
                    QCOMPARE(ComboMenuEntries::displayed(action.label), *found);
                    ++checked;
                }
            }
        }
    }
    QVERIFY2(checked > 800, qPrintable(QString::number(checked)));
    QCOMPARE(ComboMenuEntries::displayed(QStringLiteral("Copy")), QStringLiteral("Kopieren"));
    QCOMPARE(ComboMenuEntries::displayed(QStringLiteral("A name of the user's")),
             QStringLiteral("A name of the user's"));
}

void tst_LibraryLabels::translatedOnesFitTheirBoxes()
{
    QStringList cut;
    for (const ZRButtonMap *map : qAsConst(m_maps)) {
        for (const auto &control : map->actions) {
            const auto shown = [&](Layer layer) { return ComboMenuEntries::displayed(control[layer].label); };
            // The program's own names are longer in German; what they leave no room for is in the tool tip.
            if (std::any_of(control.begin(), control.end(), [](const shortCut &action) {
                    return actionKind(action) == ActionKind::Special;
                })) {
                continue;
            }
            if (!ActionLabels::fit(shown(Layer::Normal), shown(Layer::Shift1), shown(Layer::Shift2))) {
                cut << QStringLiteral("%1: %2 / %3 | %4")
                           .arg(map->name, shown(Layer::Normal), shown(Layer::Shift1), shown(Layer::Shift2));
            }
        }
    }
    for (const QString &each : qAsConst(cut)) {
        qWarning().noquote() << each;
    }
    QVERIFY(cut.isEmpty());
}

void tst_LibraryLabels::whatIsStoredStaysAsItIs()
{
    MenuRig rig(3);
    shortCut copy;
    copy.key1 = 17;
    copy.key2 = 67;
    copy.label = QStringLiteral("Copy");
    rig.menu().getShorcut(0, copy);
    const QList<QLabel *> labels = rig.menu().findChildren<QLabel *>();
    QVERIFY(std::any_of(labels.begin(), labels.end(),
                        [](const QLabel *label) { return label->text() == QLatin1String("KOPIEREN"); }));
    QCOMPARE(rig.menu().assignment(Layer::Normal).label, QStringLiteral("Copy"));
    QCOMPARE(rig.stored(QStringLiteral("tonAction.Normal.label")).toString(), QStringLiteral("Copy"));
}

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    AppFonts::load();
    tst_LibraryLabels test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_LibraryLabels.moc"
