#include "mapping/ListInWords.h"

#include <QCoreApplication>

namespace
{

QString joined(const QStringList &all, const QString &separator)
{
    const int more = all.size() - ListInWords::most;
    if (more <= 0) {
        return all.join(separator);
    }
    //: the end of a list of names or lines
    const QString rest = QCoreApplication::translate("ListInWords", "\u2026 and %1 more").arg(more);
    return (all.mid(0, ListInWords::most) << rest).join(separator);
}

QString shortened(const QString &name)
{
    QString line = name.left(2 * ListInWords::longestName).simplified();
    if (line.size() <= ListInWords::longestName) {
        return line;
    }
    // No surrogate pair is cut in two.
    const int cut =
        ListInWords::longestName - (line.at(ListInWords::longestName - 1).isHighSurrogate() ? 1 : 0);
    return line.left(cut) + QChar(0x2026);
}

} // namespace

QString ListInWords::names(const QStringList &names)
{
    QStringList some;
    for (const QString &name : names) {
        some.append(some.size() < most ? shortened(name) : name); // the others are only counted
    }
    return joined(some, QStringLiteral(", "));
}

QString ListInWords::lines(const QStringList &lines)
{
    return joined(lines, QStringLiteral("\n"));
}
