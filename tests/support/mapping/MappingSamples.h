#pragma once

#include "mapping/ShortCut.h"

#include <QByteArray>
#include <QString>

/// One key, with a label.
inline shortCut key(qint32 code, const char *label)
{
    return shortCut{code, -1, -1, QString::fromLatin1(label)};
}

/// One key, labelled with its code.
inline shortCut key(qint32 code)
{
    return shortCut{code, -1, -1, QString::number(code)};
}

/// What a file holds of a mapping whose control 3 presses a key.
inline QByteArray mapping(const char *name, int code, const char *attributes = "")
{
    return QByteArray("<MAPPING software=\"") + name + "\" " + attributes +
           "><BUTTON id=\"3\"><NORMAL label=\"key\"><KEY1 type=\"int\">" + QByteArray::number(code) +
           "</KEY1></NORMAL></BUTTON></MAPPING>";
}

/// The file around such.
inline QByteArray document(const QByteArray &mappings)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?><ZR>" + mappings + "</ZR>";
}
