#pragma once

#include <QString>

#include <utility>

/// Whether something could be done with a file, and if not, why.
class FileResult
{
public:
    static FileResult done() { return FileResult(true, QString()); }

    /// @p reason is plain English, for the log.
    static FileResult failed(QString reason) { return FileResult(false, std::move(reason)); }

    explicit operator bool() const { return m_done; }

    /// What stood in the way; empty when nothing did.
    const QString &reason() const { return m_reason; }

    /// The same in the user's language, where it has words for it.
    QString inWords() const;

private:
    FileResult(bool done, QString reason)
        : m_done(done)
        , m_reason(std::move(reason))
    {
    }

    bool m_done;
    QString m_reason;
};
