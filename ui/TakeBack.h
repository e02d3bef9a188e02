#pragma once

#include "mapping/MappingSession.h"
#include "ui/MapNotices.h"

#include <QObject>

/// The way back on the page: Ctrl+Z, Ctrl+Shift+Z and the line's "Undo", and what the line says of each step.
class TakeBack : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TakeBack)

public:
    /// @p page owns this object. The keys work while it is shown. Both references must outlive it.
    TakeBack(MappingSession &session, MapNotices &notices, QWidget *page);

private:
    void takeBack();
    void redo();
    void showFailure(const FileResult &result);
    void say(const MappingStep &step, MappingSession::Way way);
    void sayDone(const MappingStep &step);
    MapNotices::Words words(const MappingStep &step, MappingSession::Way way) const;
    bool isListed(const QString &name) const;

    MappingSession &m_session;
    MapNotices &m_notices;
};
