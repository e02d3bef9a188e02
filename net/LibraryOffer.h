#pragma once

#include <QByteArray>
#include <QString>

/// What the web service says of the library of mappings. All texts are empty if it said nothing of them.
struct LibraryOffer {
    QString version;
    QString address;
    QString signature;

    /// Whether this is a newer library than the one of version @p local. A comparison of texts, deliberately:
    /// "9" is newer than "10", and anything is newer than nothing.
    bool isNewerThan(const QString &local) const
    {
        return QString::compare(version, local, Qt::CaseInsensitive) > 0;
    }
};

/// Reads the answer @p body. What is no answer offers nothing.
LibraryOffer readLibraryAnswer(const QByteArray &body);
