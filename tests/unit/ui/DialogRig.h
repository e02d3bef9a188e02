#pragma once

#include "app/frame/AppFonts.h"
#include "app/frame/ZRBaseWindow.h"

#include <QGraphicsEffect>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QTest>

/// The main window as the dialogs see it: a page inside a frameless window in the middle of the screen.
struct PageWindow : QWidget {
    PageWindow()
        : QWidget(nullptr, Qt::FramelessWindowHint)
        , page(new ZRBaseWindow(nullptr, this))
    {
        const QSize screen = QGuiApplication::primaryScreen()->geometry().size();
        setFixedSize(900, 650);
        page->setGeometry(rect());
        move((screen.width() - 900) / 2, (screen.height() - 650) / 2);
        show();
    }
    bool isDimmed() const { return page->graphicsEffect() && page->graphicsEffect()->isEnabled(); }

    ZRBaseWindow *page;
};

/// A widget as a table describes it.
struct Looks {
    QRect place;
    QString style;
    QString family;
    int pointSize = 0;
    int weight = 0;
};

inline QWidget *panelOf(const QWidget &dialog)
{
    return dialog.findChild<QWidget *>(QStringLiteral("panel"));
}

/// The label or check box with a text; null when there is none.
template <typename Widget>
Widget *withText(const QWidget &dialog, const QString &text)
{
    for (Widget *widget : dialog.findChildren<Widget *>()) {
        if (widget->text() == text) {
            return widget;
        }
    }
    return nullptr;
}

/// The picture button with a picture of the buttons folder at rest or pressed; null when there is none.
inline QLabel *withPicture(const QWidget &dialog, const QString &picture)
{
    for (QLabel *label : dialog.findChildren<QLabel *>()) {
        if (label->styleSheet() == QStringLiteral("background-image: url(:/buttons/%1.png);").arg(picture)) {
            return label;
        }
    }
    return nullptr;
}

inline void compareLook(const QWidget *widget, const Looks &look)
{
    QVERIFY(widget);
    QCOMPARE(widget->geometry(), look.place);
    QCOMPARE(widget->styleSheet(), look.style);
    QCOMPARE(widget->font().family(), look.family);
    QCOMPARE(widget->font().pointSize(), look.pointSize);
    QCOMPARE(widget->font().weight(), look.weight);
}
