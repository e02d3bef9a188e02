#include "mapping/FileResult.h"

#include <QCoreApplication>

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
    QT_TRANSLATE_NOOP("FileResult", "by its name it is no version of custom.xml or current.xml"),
    QT_TRANSLATE_NOOP("FileResult", "it holds no mapping"),
};

} // namespace

QString FileResult::inWords() const
{
    return QCoreApplication::translate("FileResult", m_reason.toUtf8().constData());
}
