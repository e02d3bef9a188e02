#pragma once

#include <QApplication>

#include <memory>

/// The application object, and the guard that lets one copy of the program run per user.
///
/// The first start becomes the primary instance. A later one wakes it (its showUp() is emitted) and ends
/// inside the constructor, before any window exists. What the copies share is a block of two
/// bytes and a local socket that only this user may connect to, both named by instanceKey() and kept in the
/// user's runtime directory, or, where such names are machine-wide, with the user's mark at their end.
///
/// A start ends only when it has reached the first copy: the system finds a block by 16 bits of a number, so
/// that it may be somebody else's. Where no guard can work the program runs without one.
class SingleApplication : public QApplication
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SingleApplication)

public:
    /// The application's names must be set. @p allowSecondary admits one further copy that is started with
    /// "--secondary". What @p onRefusal returns is the exit status of a later start that has woken the
    /// first; it is called with the application object there, and may print. @p argc and @p argv must
    /// outlive the object.
    SingleApplication(int &argc, char **argv, bool allowSecondary, int (*onRefusal)() = nullptr);
    ~SingleApplication() override;

    bool isPrimary() const;

    /// What is wrong with the guard, for the log; empty when it works.
    const QString &problem() const;
    bool isSecondary() const { return !isPrimary(); }

    /// The application name and the organisation name, without what is no word character, "-", "." or blank.
    static QString instanceKey(const QString &applicationName, const QString &organisationName);

    /// What names this user's block and socket, by the application's names.
    static QString guardKey();

Q_SIGNALS:
    /// The program was started once more.
    void showUp();

private Q_SLOTS:
    void slotConnectionEstablished();

private:
    struct Private;

    bool mayRun(const QString &key, bool mayBeSecondary);
    bool claim(const QString &key, bool mayBeSecondary);
    void startServer(const QString &key);
    void releaseShare();

    std::unique_ptr<Private> d;
};
