#include "app/frame/AppFonts.h"
#include "tools/lint/LibraryLint.h"

#include <QGuiApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // fonts are measured, nothing is shown
    const QGuiApplication application(argc, argv);
    const QStringList files = QCoreApplication::arguments().mid(1);
    if (files.isEmpty() || files.first().startsWith(QLatin1Char('-'))) {
        std::fputs("Looks for what is wrong with libraries of mappings.\nUsage: veltrix-lint FILE...\n",
                   stderr);
        return 2;
    }
    AppFonts::load();
    int status = 0;
    for (const QString &file : files) {
        const QStringList faults = LibraryLint::faults(file);
        for (const QString &fault : faults) {
            std::fputs(QStringLiteral("%1: %2\n").arg(file, fault).toLocal8Bit().constData(), stderr);
            status = 1;
        }
    }
    return status;
}
