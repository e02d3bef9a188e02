#pragma once

#include <QMap>
#include <QString>

/// Every virtual-key code that X knows a key for, with its symbol (as X names it) on the layouts us, de and
/// fr: what each backend has to type.
QMap<quint16, QString> expectedSymbols(const QString &layout);
