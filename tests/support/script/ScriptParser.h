#pragma once

#include "tests/support/script/Script.h"

#include <QString>

/// Reads text scripts (`tests/scripts/*.t`); the form is told in tests/scripts/README.md.
struct ParsedScript {
    Script script;
    QString mistake; ///< "line 3: ..." for the first mistake; empty when there is none

    bool isValid() const { return mistake.isEmpty(); }
};

ParsedScript parseScript(const QString &text);

/// A file that cannot be read is a mistake, too.
ParsedScript readScript(const QString &path);
