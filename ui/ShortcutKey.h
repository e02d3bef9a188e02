#pragma once

#include "ui/OverlayDialog.h"

#include <QSet>
#include <QVector>

/// The dialog in which the user types the keyboard shortcut of one control in one layer.
///
/// Every key is recorded, Tab and Escape too, in the order of the first press. Keys that the system keeps for
/// itself have buttons. A key without a virtual-key code is not recorded, and the display says so; neither is
/// one that was down already when the dialog opened, until it is pressed again. What has been typed survives
/// Cancel, although the text starts anew.
class ShortcutKey : public OverlayDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ShortcutKey)

public:
    /// Without a desktop, keys have the toolkit's codes.
    explicit ShortcutKey(QWidget *parent);

Q_SIGNALS:
    /// The user has confirmed the shortcut of layer @p type: up to three virtual-key codes, -1 for none, and
    /// the text that shows all keys that were typed.
    void newShorcut(int type, int key1, int key2, int key3, QString shortcut);

public Q_SLOTS:
    /// Shows the dialog for a layer: 0 Normal, 1 Shift 1, 2 Shift 2.
    void show(int type);

protected:
    void showEvent(QShowEvent *event) override;
    bool event(QEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    struct Button {
        QLabel *label = nullptr;
        QString picture;
    };

    struct Release {
        quint32 scanCode = 0;
        ulong time = 0;
    };

    void addButtons();
    void showAtRest();
    bool isRepeat(const QKeyEvent &event) const;
    void typeKey(int code);
    void refuseKey();
    void display(const QString &text, const QString &shown);
    void confirm();

    Button m_ok;
    Button m_clear;
    Button m_cancel;
    Button m_win;
    Button m_alt;
    Button m_ctrl;
    QLabel *m_display;
    QVector<int> m_keys;         // pressed, in order, no repeats
    Release m_released;          // the last one
    QSet<quint32> m_pressedHere; // by native code; a key that was down before is not among them
    int m_type = 0;
    QString m_text; // what the display says, in full and untranslated: it is stored
};
