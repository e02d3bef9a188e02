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

    /// Puts a label for a sentence that is not always there above the page's bottom line, hidden.
    static QLabel *addNotice(QWidget &page);

    /// Shows @p sentence on such a label, in the place of the one before; nothing happens for an empty one.
    static void showNotice(QLabel &notice, const QString &sentence, const char *objectName);

    /// Puts one text on @p page, in the page's font.
    static QLabel *add(QWidget &page, const QString &text, const QRect &place, Ink ink, int pointSize,
                       int weight);
};
