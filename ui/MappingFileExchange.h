#pragma once

#include "ui/ComboMenuStyle.h"

#include <QMenu>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QStringList>

#include <memory>
#include <optional>

class MappingSession;
class QAction;
class QTemporaryDir;
class QWidget;
class ZRButtonMap;
class ZRDialog;

/// The way of mappings between the page and files: the one in use is dragged out of a widget, or exported and
/// others imported by the entries of that widget's context menu.
///
/// What goes out is what the page shows, also where that is not saved. What went wrong is said in a message.
class MappingFileExchange : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MappingFileExchange)

public:
    /// What a mapping is called in a file that has no name here; stored, so the same in every language.
    static constexpr char nameForNone[] = "Untitled";

    /// Messages lie over @p page, which owns this object. @p mappings must outlive it.
    MappingFileExchange(MappingSession &mappings, QWidget *page);
    ~MappingFileExchange() override;

    /// Adds the entries to the context menu of @p widget, which has the mouse's right button, the menu key
    /// and Shift+F10.
    void addMenuTo(QWidget *widget);

    /// Lets the mapping be dragged out of @p widget, which must not use the left button for anything else.
    void addDragTo(QWidget *widget);

    /// Writes the mapping in use to the file @p path, which is replaced.
    void exportTo(const QString &path);

    /// Imports @p files, and says what became of them, of many only the first few, those that failed before.
    /// Of a single one that went well the page says so itself, while it is to be seen.
    void import(const QStringList &files);

    /// Writes the mapping in use to a file that only this user can read, and that goes with the program.
    /// Empty when that is not possible, which is said.
    QString fileForDrag();

Q_SIGNALS:
    /// The context menu, or a dialog that it has opened, is open: what the user chooses is for the mapping
    /// that he sees. Or no longer.
    void choosing(bool begins);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QString name() const;
    std::unique_ptr<ZRButtonMap> inUse() const;
    bool write(const ZRButtonMap &map, const QString &path);
    void setAsking(bool asking);
    void tellChoosing();
    void askAndExport();
    void askAndImport();
    void drag(QWidget *from);
    void say(const QString &message);

    MappingSession &m_mappings;
    QWidget *m_page;
    ComboMenuStyle m_style; // of the menu, which it outlives
    QMenu m_menu;
    QAction *m_export;
    QAction *m_import;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::optional<QPoint> m_pressed; // where a drag may begin
    QPointer<ZRDialog> m_message;    // a child of the page
    bool m_asking = false;           // a dialog is open
};
