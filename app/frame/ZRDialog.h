#pragma once

#include <QWidget>

class QPushButton;

/// A small message with one or two buttons. Built hidden; each button hides it and then reports itself.
///
/// Shown, it takes the keys. One that no action of the user called up needs Qt::WA_ShowWithoutActivating: it
/// then has them only once the user has gone to it.
class ZRDialog : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ZRDialog)

public:
    /// Without a second text there is only the first button. With a parent, it lies in the middle of the
    /// parent's window.
    ZRDialog(const QString &message, const QString &button1, const QString &button2,
             QWidget *parent = nullptr);

Q_SIGNALS:
    void onButton1Pressed();
    void onButton2Pressed();

public Q_SLOTS:
    void button1Pressed();
    void button2Pressed();

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    QPushButton *addButton(const QString &text);

    QPushButton *m_button1;
    QPushButton *m_button2 = nullptr;
};
