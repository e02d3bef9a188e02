#include "mapping/BrokenFile.h"

#include "mapping/MappingFile.h"
#include "mapping/MappingLog.h"

QString BrokenFile::copyName(const QString &path, int number)
{
    return path + QLatin1String(".broken") + (number == 1 ? QString() : QString::number(number));
}

FileResult BrokenFile::copyAside(const QString &path, const QByteArray &bytes)
{
    constexpr int mostCopies = 100;
    for (int number = 1; number <= mostCopies; ++number) {
        const QString copy = copyName(path, number);
        const MappingFile::ReadResult there = MappingFile::read(copy);
        if (there.status == MappingFile::Status::Missing) {
            FileResult result = MappingFile::replace(copy, bytes);
            if (result) {
                qCInfo(lcMapping).noquote() << "A copy of the file" << path << "was left in" << copy;
            }
            return result;
        }
        if (there.status == MappingFile::Status::Read && there.bytes == bytes) {
            return FileResult::done();
        }
    }
    return FileResult::failed(QStringLiteral("it is no mapping file, and there are too many copies of it"));
}
