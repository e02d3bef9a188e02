#pragma once

#include "ui/OverlayDialog.h"

#include <functional>
#include <utility>

class ClickableLabel;
class QLineEdit;

/// Asks for the name under which the page's mapping is to be saved, and says what a name leads to that is
/// empty or taken.
class SaveDialog : public OverlayDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SaveDialog)

public:
    explicit SaveDialog(QWidget *parent);

    /// Says which names are listed already; without it, none is.
    using Listed = std::function<bool(const QString &name)>;
    void setListed(Listed listed) { m_listed = std::move(listed); }

Q_SIGNALS:
    /// The user has confirmed @p name, as it stands, also an empty one. Whoever saves and fails calls
    /// showFailure() before he returns.
    void saveCurrentMap(QString name);

public Q_SLOTS:
    void show();

    /// Says what stood in the way, in the user's words, and leaves the dialog open for another try.
    void showFailure(const QString &words);

protected:
    void showEvent(QShowEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void accept();
    void cancel();
    void restoreButtons();
    void showConsequence(const QString &name);
    void showLine(const QString &text, const QString &style);

    ClickableLabel *m_ok;
    ClickableLabel *m_cancel;
    QLineEdit *m_name;
    QLabel *m_line = nullptr; // below the name
    bool m_failed = false;    // that is what the line says
    Listed m_listed;
};
