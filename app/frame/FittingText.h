#pragma once

#include <QString>
#include <Qt>

class QAbstractButton;
class QLabel;
class QWidget;

/// Texts on widgets whose places are fixed, while their widths depend on language and fonts.
///
/// A text that is too wide is drawn narrower; one that is too wide even so loses an end, and is then in the
/// tool tip as a whole, above @p help, which otherwise is all of the tool tip. The accessible name is the
/// whole text. What looks like markup is shown as it is. Font, style sheet and geometry of the widget have to
/// be set before.
namespace FittingText
{

void show(QLabel *label, const QString &text, const QString &help = {},
          Qt::TextElideMode mode = Qt::ElideRight);
void show(QAbstractButton *button, const QString &text, const QString &help = {});

/// The same for a label that has just been made: it has all of @p text until it is shown, and is measured
/// then. To measure a text its font is looked up and loaded, which for what nobody sees yet is time lost at
/// the start.
void showUnmeasured(QLabel *label, const QString &text);

/// @p text as a tool tip that shows it as it is.
QString toolTip(const QString &text);

/// For a text that is only part of what the widget shows: returns what of @p text fits into @p width, with
/// all else done as above.
QString fit(QWidget *widget, const QString &text, int width, const QString &help = {},
            Qt::TextElideMode mode = Qt::ElideRight);

} // namespace FittingText
