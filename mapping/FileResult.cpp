#include "mapping/FileResult.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace
{

// What may stand in a file's way as a user meets it: of this folder's own, and of the system's and the
// toolkit's, which are left in English for the log.
[[maybe_unused]] constexpr const char *reasons[] = {
    QT_TRANSLATE_NOOP("FileResult", "No space left on device"),
    QT_TRANSLATE_NOOP("FileResult", "Permission denied"),
    QT_TRANSLATE_NOOP("FileResult", "Existing file is not writable"),
    QT_TRANSLATE_NOOP("FileResult", "Input/output error"),
    QT_TRANSLATE_NOOP("FileResult", "File too large"),
    QT_TRANSLATE_NOOP("FileResult", "Disk quota exceeded"),
    QT_TRANSLATE_NOOP("FileResult", "Read-only file system"),
    QT_TRANSLATE_NOOP("FileResult", "not a regular file"),
    QT_TRANSLATE_NOOP("FileResult", "larger than 64 MiB"),
    QT_TRANSLATE_NOOP("FileResult", "too many symbolic links"),
    QT_TRANSLATE_NOOP("FileResult", "there is none"),
    QT_TRANSLATE_NOOP("FileResult", "it has no place for a mapping"),
    QT_TRANSLATE_NOOP("FileResult", "it is no mapping file; a copy of it lies beside it"),
    QT_TRANSLATE_NOOP("FileResult", "it has been changed since"),
    QT_TRANSLATE_NOOP("FileResult",
                      "by its name it is no version of custom.xml, current.xml or programs.xml"),
    QT_TRANSLATE_NOOP("FileResult", "it does not give each mapping a program of its own"),
    QT_TRANSLATE_NOOP("FileResult", "it holds no mapping"),
    QT_TRANSLATE_NOOP("FileResult", "unexpected end of file"),
    QT_TRANSLATE_NOOP("FileResult", "its encoding is not known"),
    QT_TRANSLATE_NOOP("FileResult", "it carries document type declarations"),
    QT_TRANSLATE_NOOP("FileResult", "it changed while it was read"),
};

// Of those that tell a number or a name; what is told may be a reason itself. The more special come first.
constexpr const char *patterns[] = {
    QT_TRANSLATE_NOOP("FileResult", "line %1: %2 (column %3)"),
    QT_TRANSLATE_NOOP("FileResult", "<%1> is no mapping file's"),
    QT_TRANSLATE_NOOP("FileResult", "more than %1 tags and attributes"),
    QT_TRANSLATE_NOOP("FileResult", "more than %1 tags"),
    QT_TRANSLATE_NOOP("FileResult", "a tag of more than %1 attributes"),
    QT_TRANSLATE_NOOP("FileResult", "nested deeper than %1 levels"),
    QT_TRANSLATE_NOOP("FileResult", "it is not encoded in %1"),
    QT_TRANSLATE_NOOP("FileResult", "it holds the character U+%1"),
    QT_TRANSLATE_NOOP("FileResult", "the folder %1 cannot be made"),
};

QString translated(const char *text)
{
    return QCoreApplication::translate("FileResult", text);
}

QString inUsersWords(const QString &reason)
{
    QString whole = translated(reason.toUtf8().constData());
    if (whole != reason) {
        return whole;
    }
    for (const char *pattern : patterns) {
        QString form = QRegularExpression::escape(QLatin1String(pattern));
        form.replace(QRegularExpression(QStringLiteral("\\\\%[1-9]")), QStringLiteral("(.+)"));
        const QRegularExpressionMatch match =
            QRegularExpression(QRegularExpression::anchoredPattern(form),
                               QRegularExpression::DotMatchesEverythingOption)
                .match(reason);
        if (match.hasMatch()) {
            const auto told = [&match](int i) { return inUsersWords(match.captured(i)); };
            const QString text = translated(pattern);
            return match.lastCapturedIndex() == 1 ? text.arg(told(1)) : text.arg(told(1), told(2), told(3));
        }
    }
    return reason;
}

} // namespace

QString FileResult::inWords() const
{
    return inUsersWords(m_reason);
}
