#include "engine/platform/PlatformFactory.h"

#include "engine/platform/PlatformLog.h"
#include "engine/platform/recording/Recorder.h"
#include "engine/platform/recording/RecordingAppearance.h"
#include "engine/platform/recording/RecordingInjector.h"
#include "engine/platform/recording/RecordingPointer.h"

#include <vector>

// VELTRIX_BACKENDS is the list in engine/platform/CMakeLists.txt: BACKEND(x11) for a folder x11/ with a
// function x11Backend().
#define BACKEND(name) Backend name##Backend();
VELTRIX_BACKENDS
#undef BACKEND

namespace
{

/// Every way to the desktop that was built, in the order in which they are tried.
const std::vector<Backend> &backends()
{
#define BACKEND(name) name##Backend(),
    static const std::vector<Backend> all{VELTRIX_BACKENDS};
#undef BACKEND
    return all;
}

const QString automatic = QStringLiteral("auto");

/// Takes down what would have happened, for whoever reads the verbose log.
Recorder &nowhere()
{
    static Recorder recorder(
        [](const QString &line) { qCDebug(lcPlatform).noquote() << "not sent:" << line; });
    return recorder;
}

} // namespace

PlatformFactory::PlatformFactory(const CrashTask &task)
{
    for (const Backend &backend : backends()) {
        if (void *memory = backend.prepare ? backend.prepare(task) : nullptr) {
            m_crashMemory = memory;
        }
    }
}

QStringList PlatformFactory::choices()
{
    QStringList names(automatic);
    for (const Backend &backend : backends()) {
        names.append(QString::fromLatin1(backend.name));
    }
    return names;
}

Platform PlatformFactory::create(const QString &choice) const
{
    Platform platform;
    for (const Backend &backend : backends()) {
        if (backend.addSystem) {
            backend.addSystem(platform);
        }
    }
    QStringList problems;
    for (const Backend &backend : backends()) {
        if (choice == automatic ? !backend.fits() : choice != QLatin1String(backend.name)) {
            continue;
        }
        if (backend.addInput(platform)) {
            for (const QString &problem : qAsConst(problems)) {
                qCWarning(lcPlatform).noquote() << "a better way for input is closed:" << problem;
            }
            qCInfo(lcPlatform).noquote() << "input goes through" << platform.input;
            return platform;
        }
        problems.append(platform.input);
    }
    platform.input = problems.join(QLatin1String("; "));
    qCWarning(lcPlatform).noquote() << "input goes nowhere:" << platform.input;
    platform.injector = std::make_unique<RecordingInjector>(nowhere());
    platform.pointer = std::make_unique<RecordingPointer>(nowhere());
    platform.appearance = std::make_unique<RecordingAppearance>(nowhere());
    platform.watchMouse = [why = platform.input](const std::function<void()> &) {
        qCWarning(lcPlatform).noquote() << "the user's own mouse is not watched:" << why;
        return std::unique_ptr<QObject>();
    };
    return platform;
}
