#pragma once

#include "tests/support/xserver/XServer.h"

#include <QApplication>
#include <QTest>

/// The main function of a test whose windows are on an X server of its own. The test is made with that
/// server.
template <typename Test>
int runOnServer(int argc, char **argv, const XServer::Options &options = {})
{
    XServer server(options);
    if (!server.isRunning()) {
        qCritical("%s", qPrintable(server.error()));
        return 1;
    }
    server.exportDisplay();
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Test test(server);
    return QTest::qExec(&test, argc, argv);
}
