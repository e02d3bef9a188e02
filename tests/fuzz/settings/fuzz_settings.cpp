// Any bytes as the file of the user's settings, read by everything that reads settings. Every value is within
// its range, what was of no use as settings is left beside the file, and what is set then is kept.

#include "app/SettingsPlace.h"
#include "engine/KnobSettings.h"
#include "engine/Settings.h"
#include "mapping/BrokenFile.h"
#include "tests/fuzz/support/FuzzFolder.h"
#include "ui/ComboMenuSettings.h"

#include <QCoreApplication>
#include <QDir>
#include <QLoggingCategory>

namespace
{

using fuzz::require;

const QString organisation = QStringLiteral("organisation");

void useAll(Settings &settings)
{
    for (int control = 0; control < ActionTable::controlCount; ++control) {
        ComboMenuSettings(settings, control).upgrade();
    }
    const ActionTable before = ComboMenuSettings::readAll(settings);
    KnobSettings knob(settings);
    require(knob.sensitivityNormal() >= KnobSettings::minimum &&
                knob.sensitivityNormal() <= KnobSettings::maximum,
            "the sensitivity is one");
    require(knob.sensitivityShift1() >= KnobSettings::minimum &&
                knob.sensitivityShift1() <= KnobSettings::maximum,
            "the other sensitivity is one");
    settings.setUsedBy(QStringLiteral("1.10"));
    require(!Settings::isOlder(settings, QStringLiteral("1.10")), "what is set is there");
    require(settings.write(), "it can be written");
    const ActionTable after = ComboMenuSettings::readAll(settings);
    for (int control = 0; control < ActionTable::controlCount; ++control) {
        for (const Layer layer : Layers::all) {
            require(before[control][layer] == after[control][layer], "writing changes nothing else");
        }
    }
}

} // namespace

// The toolkit remembers some files: that is looked for as a leak after every input, and takes most of the
// time.
extern "C" const char *__asan_default_options()
{
    return "detect_leaks=0";
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static const QCoreApplication application(*argc, *argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    qputenv("XDG_CONFIG_HOME", fuzz::folder().toLocal8Bit());
    qputenv("XDG_CONFIG_DIRS", fuzz::folder().toLocal8Bit());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static int number = 0; // the toolkit remembers what it has read under a name
    const QString name = QString::number(++number);
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const QString path = QStringLiteral("%1/%2/%3.conf").arg(fuzz::folder(), organisation, name);
    QDir(fuzz::folder()).mkpath(organisation);
    fuzz::write(path, bytes);
    {
        const SettingsPlace place(organisation, name);
        require(place.file() == path, "the file is where it belongs");
        const bool aside = QFile::exists(BrokenFile::copyName(path));
        require(!aside || fuzz::content(BrokenFile::copyName(path)) == bytes, "what is set aside is whole");
        require(aside || fuzz::content(path) == bytes, "what is not set aside is there");
        Settings settings(organisation, name);
        useAll(settings);
    }
    {
        const Settings again(organisation, name);
        require(!Settings::isOlder(again, QStringLiteral("1.10")), "what was written is read");
    }
    QFile::remove(path);
    QFile::remove(BrokenFile::copyName(path));
    return 0;
}
