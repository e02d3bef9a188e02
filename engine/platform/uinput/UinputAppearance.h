#pragma once

#include "engine/platform/PlatformLog.h"
#include "engine/platform/PointerAppearance.h"

/// The pointer of a session in which no program may hide it over others' windows. Says so once, at the first
/// attempt.
class UinputAppearance final : public PointerAppearance
{
    Q_DISABLE_COPY_MOVE(UinputAppearance)

public:
    UinputAppearance() = default;

    void setHidden(bool hidden) override
    {
        if (hidden && !m_said) {
            m_said = true;
            qCInfo(lcPlatform, "the pointer stays visible: this session lets no program hide it");
        }
    }
    void restore() override {}

private:
    bool m_said = false;
};
