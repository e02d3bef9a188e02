#include "app/Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

namespace
{

/// Qt's texts, but for what it says of files and connections: the program shows none of that, it goes into
/// the log, which is English.
class ToolkitTranslator : public QTranslator
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ToolkitTranslator)

public:
    using QTranslator::QTranslator;

    QString translate(const char *context, const char *sourceText, const char *disambiguation,
                      int n) const override
    {
        using namespace std::string_view_literals;
        constexpr std::array logged{
            "QAbstractSocket"sv,
            "QFile"sv,
            "QHostInfo"sv,
            "QHostInfoAgent"sv,
            "QHttp"sv,
            "QIODevice"sv,
            "QLocalServer"sv,
            "QLocalSocket"sv,
            "QNativeSocketEngine"sv,
            "QNetworkAccessFileBackend"sv,
            "QNetworkReply"sv,
            "QNetworkReplyHttpImpl"sv,
            "QSaveFile"sv,
            "QSslSocket"sv,
        };
        if (context && std::find(logged.begin(), logged.end(), context) != logged.end()) {
            return {};
        }
        return QTranslator::translate(context, sourceText, disambiguation, n);
    }
};

bool installProgramTexts(const QLocale &language)
{
    auto texts = std::make_unique<QTranslator>();
    if (!texts->load(language, QStringLiteral("veltrix"), QStringLiteral("_"),
                     QStringLiteral(":/translations"))) {
        return false;
    }
    texts->setParent(QCoreApplication::instance());
    return QCoreApplication::installTranslator(texts.release());
}

void installToolkitTexts(const QLocale &language)
{
    auto texts = std::make_unique<ToolkitTranslator>();
    // Where Qt is installed; a package brings the file along beside the program.
    for (const QString &folder : {QLibraryInfo::location(QLibraryInfo::TranslationsPath),
                                  QCoreApplication::applicationDirPath() + QStringLiteral("/translations")}) {
        if (texts->load(language, QStringLiteral("qtbase"), QStringLiteral("_"), folder)) {
            texts->setParent(QCoreApplication::instance());
            QCoreApplication::installTranslator(texts.release());
            return;
        }
    }
}

} // namespace

void Translations::install(const QLocale &locale)
{
    const QStringList languages = locale.uiLanguages();
    for (const QString &name : languages) {
        const QLocale language(name);
        if (language.language() == QLocale::English || language.language() == QLocale::C) {
            return;
        }
        if (installProgramTexts(language)) {
            installToolkitTexts(language);
            if (QLocale().language() != language.language()) {
                QLocale::setDefault(language); // by which resources find the pictures with words on them
            }
            return;
        }
    }
}

#include "Translations.moc"
