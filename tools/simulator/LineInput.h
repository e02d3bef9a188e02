#pragma once

#include <QByteArray>
#include <QObject>

#include <memory>

class QSocketNotifier;

namespace simulator
{

/// Reads lines from a descriptor without ever waiting for one.
class LineInput : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LineInput)

public:
    /// @p descriptor stays the caller's.
    explicit LineInput(int descriptor, QObject *parent = nullptr);
    ~LineInput() override;

Q_SIGNALS:
    /// One line, without its end. @p number counts from 1.
    void line(const QByteArray &text, int number);

    /// The other side has closed; a last line without an end has been told before.
    void ended();

private:
    void read();
    void tell(const QByteArray &text);

    int m_descriptor;
    int m_number = 0;
    QByteArray m_buffer;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace simulator
