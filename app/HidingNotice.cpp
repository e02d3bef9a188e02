#include "app/HidingNotice.h"

#include "engine/Settings.h"

void HidingNotice::giveOnce(Settings &settings,
                            const std::function<void(const QString &, const QString &)> &show)
{
    const QString given = QStringLiteral("Extra.HidingExplained");
    if (settings.value(given).toBool()) {
        return;
    }
    settings.setValue(given, true);
    show(tr("Veltrix goes on"),
         tr("This desktop has no tray. Start Veltrix once more to bring its window back."));
}
