#pragma once

#include <QDesktopServices>
#include <QList>
#include <QObject>
#include <QUrl>

/// Takes the pages that are opened while it lives, instead of the user's browser.
class Browser : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Browser)

public:
    explicit Browser(const QString &scheme)
        : m_scheme(scheme)
    {
        QDesktopServices::setUrlHandler(m_scheme, this, "open");
    }
    ~Browser() override { QDesktopServices::unsetUrlHandler(m_scheme); }

    QList<QUrl> opened;

public Q_SLOTS:
    void open(const QUrl &page) { opened.append(page); }

private:
    const QString m_scheme;
};
