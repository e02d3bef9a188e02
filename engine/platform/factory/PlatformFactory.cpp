#include "engine/platform/PlatformFactory.h"

#include "engine/platform/NativePlatform.h"
#include "engine/platform/PlatformLog.h"
#include "engine/platform/recording/Recorder.h"
#include "engine/platform/recording/RecordingAppearance.h"
#include "engine/platform/recording/RecordingInjector.h"
#include "engine/platform/recording/RecordingPointer.h"

namespace
{

/// Takes down what would have happened, for whoever reads the verbose log.
Recorder &nowhere()
{
    static Recorder recorder(
        [](const QString &line) { qCDebug(lcPlatform).noquote() << "not sent:" << line; });
    return recorder;
}

} // namespace

Platform createPlatform()
{
    Platform platform;
    QString note;
    if (createNativePlatform(platform, note)) {
        qCInfo(lcPlatform).noquote() << "input goes through" << note;
        return platform;
    }
    qCWarning(lcPlatform).noquote() << "input goes nowhere:" << note;
    platform.injector = std::make_unique<RecordingInjector>(nowhere());
    platform.pointer = std::make_unique<RecordingPointer>(nowhere());
    platform.appearance = std::make_unique<RecordingAppearance>(nowhere());
    return platform;
}
