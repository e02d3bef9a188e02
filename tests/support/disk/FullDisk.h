#pragma once

#include <QtGlobal>

#include <csignal>
#include <sys/resource.h>

/// A full disk, as far as a write can tell: while it lives, no file of this process grows beyond @p bytes.
class FullDisk
{
    Q_DISABLE_COPY_MOVE(FullDisk)

public:
    explicit FullDisk(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    void (*const m_handler)(int);
    rlimit m_before{};
};
