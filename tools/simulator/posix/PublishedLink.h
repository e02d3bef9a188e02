#pragma once

#include <QLockFile>
#include <QString>

#include <memory>

namespace simulator
{

/// The symbolic link under which the device is found. From claim() on until it is destroyed the object owns
/// the name, also while nothing is published, so that two simulators never fight over it.
class PublishedLink
{
    Q_DISABLE_COPY_MOVE(PublishedLink)

public:
    explicit PublishedLink(const QString &path);
    ~PublishedLink();

    QString path() const { return m_path; }

    /// Takes the name. Fails, with errorString() set, while another simulator that is alive has it, and when
    /// something else stands there: only a link to a pseudo-terminal, as a simulator that died leaves it
    /// behind, is replaced.
    bool claim();

    /// Lets the link point to @p target, in one step: a reader finds the old or the new target, never
    /// nothing.
    bool publish(const QString &target);

    /// Removes the link if it is still the one that was published.
    void withdraw();

    QString errorString() const { return m_error; }

private:
    bool fail(const QString &error);

    QString m_path;
    QString m_target;
    QString m_error;
    std::unique_ptr<QLockFile> m_lock;
};

} // namespace simulator
