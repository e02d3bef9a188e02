#include "tests/support/script/ExpectedStreams.h"

#include <QRegularExpression>
#include <QSet>

QStringList expectedOnDesktop(const Script &script)
{
    QStringList seen;
    QSet<QString> down; // "key 65", "left"
    QString lastMove;
    for (const QString &line : script.expected) {
        if (line.startsWith(QLatin1String("move "))) {
            if (line != lastMove) {
                seen.append(line);
            }
            lastMove = line;
        } else if (line.startsWith(QLatin1String("key ")) || line.startsWith(QLatin1String("left "))) {
            const QString what = line.section(QLatin1Char(' '), 0, -2);
            if (line.endsWith(QLatin1String(" down"))) {
                down.insert(what);
                seen.append(line);
            } else if (down.remove(what)) {
                seen.append(line);
            }
        }
    }
    return seen;
}

QStringList expectedMidi(const Script &script)
{
    return script.expected.filter(QRegularExpression(QStringLiteral("^midi ")));
}
