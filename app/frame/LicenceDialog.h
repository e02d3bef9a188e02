#pragma once

#include <QDialog>

/// The licences of the program and of what it is built on, to be read. Deletes itself when it is closed.
class LicenceDialog : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LicenceDialog)

public:
    explicit LicenceDialog(QWidget *parent);

    /// All of it, as the program brings it along.
    static QString text();

protected:
    void showEvent(QShowEvent *event) override;
};
