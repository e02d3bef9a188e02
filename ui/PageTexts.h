#pragma once

#include <QCoreApplication>
#include <QString>

class QLabel;
class QRect;
class QWidget;

/// The device page's texts.
class PageTexts
{
    Q_DECLARE_TR_FUNCTIONS(PageTexts)

public:
    /// White, more or less of it.
    enum class Ink { Bright, Middle, Dim, Faint };

    /// Puts the page's fixed texts on @p page: heading, captions and, in the corner, the MIDI output in use.
    static void addAll(QWidget &page, const QString &midiPortName);

    /// Puts a sentence that is not always there, or nothing, on the page's bottom line.
    static void addNotice(QWidget &page, const QString &notice);

    /// Puts one text on @p page, in the page's font.
    static QLabel *add(QWidget &page, const QString &text, const QRect &place, Ink ink, int pointSize,
                       int weight);
};
