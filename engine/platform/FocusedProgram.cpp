#include "engine/platform/FocusedProgram.h"

#include <QRegularExpression>

namespace
{

constexpr int longestText = 100;

// Of a name like a web domain read backwards ("org.gnome.Nautilus") the last part.
QString shortened(const QString &name)
{
    static const QRegularExpression reversedDomain(
        QStringLiteral("^[a-z]+\\.[\\w-]+\\.(?:[\\w-]+\\.)*([\\w-]+)$"));
    const QRegularExpressionMatch match = reversedDomain.match(name);
    return match.hasMatch() ? match.captured(1) : name;
}

} // namespace

FocusedProgram::Program FocusedProgram::Program::called(const QString &text)
{
    QString plain;
    const QString start = text.left(longestText);
    for (const QChar c : start) {
        plain += c.isPrint() ? c : QLatin1Char(' ');
    }
    plain = plain.simplified();
    static const QRegularExpression version(QStringLiteral("(?<=\\w)[- ]v?\\d+(?:\\.\\d+)*$"));
    const QString versionless = QString(plain).remove(version);

    Program program;
    program.id = versionless.toLower();
    program.name = shortened(versionless);
    if (!program.name.isEmpty()) {
        program.name[0] = program.name.at(0).toUpper();
    }
    return program;
}
