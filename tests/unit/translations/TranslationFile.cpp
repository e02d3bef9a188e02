#include "tests/unit/translations/TranslationFile.h"

#include <QFile>
#include <QTest>
#include <QXmlStreamReader>

QVector<Translation> readTranslations(const QString &language)
{
    QFile file(QStringLiteral(VELTRIX_TRANSLATIONS "/veltrix_%1.ts").arg(language));
    if (!file.open(QIODevice::ReadOnly)) {
        QTest::qFail(qPrintable(file.fileName() + QStringLiteral(": ") + file.errorString()), __FILE__,
                     __LINE__);
        return {};
    }
    QVector<Translation> all;
    QString context;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            all.append({context, xml.readElementText(), {}});
        } else if (xml.name() == QLatin1String("translation")) {
            all.last().text = xml.readElementText();
        }
    }
    if (xml.hasError() || all.isEmpty()) {
        QTest::qFail(qPrintable(file.fileName() + QStringLiteral(": ") + xml.errorString()), __FILE__,
                     __LINE__);
    }
    return all;
}
