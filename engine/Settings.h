#pragma once

#include <QSettings>
#include <QString>

#include <functional>

/// The user's settings: the one store that all parts of the program read and write.
///
/// What is set reaches the disk when control returns to the event loop, or with write(). What could not be
/// written is kept and tried again with the next value; the file is as it was then. GUI thread only.
class Settings : public QSettings
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Settings)

public:
    /// The user's store of this system under these names.
    Settings(const QString &organisation, const QString &application);

    /// A store in @p file.
    explicit Settings(const QString &file);

    ~Settings() override; // NOLINT(bugprone-exception-escape): where it is defined

    /// Writes what was set to the disk at once. False when that fails.
    bool write();

    /// Whether all that was set so far has been written, when it was last tried.
    bool isWritten() const { return m_written; }

    /// Whether @p store was last used by a version before @p version, or by none: "ZR.ver" names the version
    /// that last built the device's page. A comparison of texts, deliberately: "1.9" comes after "1.10".
    static bool isOlder(const QSettings &store, const QString &version);
    void setUsedBy(const QString &version);

Q_SIGNALS:
    /// False when values could not be written, true once they are.
    void writtenChanged(bool written);

protected:
    bool event(QEvent *event) override;

private:
    void write(const std::function<void()> &toolkitsWay, bool again = true);
    bool isWritable() const;
    bool isWhole() const;

    // The file alone, without what the system has for all users. Both look at the same values in memory.
    QSettings m_store;
    bool m_written = true;
};
