#pragma once

#include <QByteArray>
#include <QObject>

#include <memory>

namespace simulator
{

/// Reads lines from a descriptor without ever waiting for one.
class LineInput : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LineInput)

public:
    /// @p descriptor stays the caller's. On Windows it is the process' standard input, whatever is given.
    explicit LineInput(int descriptor, QObject *parent = nullptr);
    ~LineInput() override;

    /// Whether somebody types there.
    bool isTerminal() const;

Q_SIGNALS:
    /// One line, without its end. @p number counts from 1.
    void line(const QByteArray &text, int number);

    /// The other side has closed; a last line without an end has been told before.
    void ended();

private:
    /// How the system is asked for input.
    class Source;

    void take(const QByteArray &bytes);
    void end();

    int m_number = 0;
    QByteArray m_buffer;
    std::unique_ptr<Source> m_source;
};

} // namespace simulator
