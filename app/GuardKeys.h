#pragma once

#include <QFile>
#include <QString>

#include <memory>
#include <vector>

/// The numbers by which the system finds the guard's block and the lock of that block.
///
/// The toolkit makes each number of a file's inode, of which 16 bits count, and all users share them. So a
/// number can lead to a block that is another user's, by chance or on purpose. A new file has another inode.
class GuardKeys
{
    Q_DISABLE_COPY_MOVE(GuardKeys)

public:
    /// @p key names the block. The temporary directory must stay the same as long as this object lives.
    explicit GuardKeys(const QString &key);

    /// Whether block or lock are another user's, even if he lets everybody use them.
    bool areAnothers() const;

    /// Whether the lock can be taken and given back within half a second. One that cannot is not ours: our
    /// own processes hold it for microseconds, and the system gives it back for one that ended.
    bool lockWorks() const;

    /// Gives block and lock new numbers. Processes that use the old ones keep them. False where the folder
    /// takes no new files.
    bool renew();

private:
    bool renewFile(const QString &path);

    QString m_key;
    QString m_blockFile;
    QString m_lockFile;
    std::vector<std::unique_ptr<QFile>> m_used; // open, so that no new file gets their inodes
};
