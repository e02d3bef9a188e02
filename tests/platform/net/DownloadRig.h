#pragma once

#include "net/QDownloader.h"
#include "tests/platform/net/FileContent.h"
#include "tests/support/http/HttpServer.h"

#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// A download from a server on this machine to a folder of its own.
class DownloadRig
{
protected:
    static constexpr qint64 gigabyte = qint64(1024) * 1024 * 1024;

    void begin()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        m_server = std::make_unique<HttpServer>();
        m_downloader = std::make_unique<QDownloader>();
        m_finished = std::make_unique<QSignalSpy>(m_downloader.get(), &QDownloader::dowloadFinished);
    }
    QString path(const char *name) const { return m_dir->filePath(QString::fromLatin1(name)); }
    void download() { m_downloader->download(m_server->url("/file"), path("file")); }
    /// What the next report of an end says; nothing when there is none.
    QVariant outcome() { return m_finished->wait() ? m_finished->last().first() : QVariant(); }
    static void expectWarning(const char *pattern)
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QString::fromLatin1(pattern)));
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<HttpServer> m_server;
    std::unique_ptr<QDownloader> m_downloader;
    std::unique_ptr<QSignalSpy> m_finished;
};
