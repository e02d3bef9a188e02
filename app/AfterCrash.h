#pragma once

#include "engine/platform/PlatformFactory.h"
#include "midi/OwedMessages.h"

/// What is left to do when the program was killed, besides releasing held input: noted by the program, in
/// memory that it shares with the release process, and done by that process.
struct AfterCrash {
    OwedMessages messages;

    static CrashTask task();

    /// The object in PlatformFactory::crashMemory(); one that nobody shares where that is null.
    static AfterCrash &in(void *memory);
};
