#pragma once

#include <QLoggingCategory>
#include <QMutex>
#include <QMutexLocker>
#include <QString>
#include <QStringList>
#include <QVector>

#include <algorithm>

/// Takes over the log for as long as it lives, so that a test can say which lines it expects. Lines may come
/// from any thread. One at a time.
class LogCapture
{
    Q_DISABLE_COPY_MOVE(LogCapture)

public:
    /// @p rules as in QLoggingCategory::setFilterRules(), for categories whose debug lines are wanted.
    explicit LogCapture(const QString &rules = QString())
        : m_hasRules(!rules.isEmpty())
    {
        if (m_hasRules) {
            QLoggingCategory::setFilterRules(rules);
        }
        s_current = this;
        m_previous = qInstallMessageHandler(&LogCapture::gather);
    }

    ~LogCapture()
    {
        qInstallMessageHandler(m_previous);
        s_current = nullptr;
        if (m_hasRules) {
            QLoggingCategory::setFilterRules(QString());
        }
    }

    /// The texts that nobody has taken yet.
    QStringList lines() const
    {
        return textsIf([](const Line &) { return true; });
    }

    QStringList linesHolding(const QString &part) const { return lines().filter(part); }

    /// Warnings and worse.
    QStringList warnings() const
    {
        return textsIf(
            [](const Line &line) { return line.type == QtWarningMsg || line.type == QtCriticalMsg; });
    }

    /// Takes all lines out, each as "level: text", for example "warning: failed to plugg busy".
    QStringList takeLines()
    {
        static const char *const levels[] = {"debug", "warning", "critical", "fatal", "info"};
        const QMutexLocker locker(&m_mutex);
        QStringList taken;
        for (const Line &line : qAsConst(m_lines)) {
            taken.append(QLatin1String(levels[line.type]) + QLatin1String(": ") + line.text);
        }
        m_lines.clear();
        return taken;
    }

    /// Takes the lines at @p type out.
    QStringList takeAll(QtMsgType type)
    {
        const auto wanted = [type](const Line &line) { return line.type == type; };
        const QStringList taken = textsIf(wanted);
        removeIf(wanted);
        return taken;
    }

    /// Whether a line at @p type with @p part in it was logged; such lines are taken out.
    bool take(QtMsgType type, const QString &part)
    {
        return removeIf([&](const Line &line) { return line.type == type && line.text.contains(part); });
    }

    void clear() { takeLines(); }

private:
    struct Line {
        QtMsgType type;
        QString text;
    };

    static void gather(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
    {
        const QMutexLocker locker(&s_current->m_mutex);
        s_current->m_lines.append({type, text});
    }

    template <typename Wanted>
    QStringList textsIf(Wanted wanted) const
    {
        const QMutexLocker locker(&m_mutex);
        QStringList texts;
        for (const Line &line : m_lines) {
            if (wanted(line)) {
                texts.append(line.text);
            }
        }
        return texts;
    }

    template <typename Unwanted>
    bool removeIf(Unwanted unwanted)
    {
        const QMutexLocker locker(&m_mutex);
        const int before = m_lines.size();
        m_lines.erase(std::remove_if(m_lines.begin(), m_lines.end(), unwanted), m_lines.end());
        return m_lines.size() < before;
    }

    static inline LogCapture *s_current = nullptr;
    mutable QMutex m_mutex;
    QVector<Line> m_lines;
    QtMessageHandler m_previous = nullptr;
    bool m_hasRules;
};
