#pragma once

#include "MappingFixtures.h"
#include "SessionInFolder.h"

#include <QTest>

/// As somebody writes it by hand: nothing of it may get lost on the way back.
inline const QByteArray byHand =
    "<ZR>\n\n<!-- mine -->\n  <MAPPING software=\"One\"/><MAPPING software='Two' x=\"1\"/>\n"
    "  <MAPPING software=\"Two\"/>  <MAPPING software=\"Three\"/>\n</ZR>\n";

/// A session whose steps write, and what they have left in its files.
class StepsInFolder : protected SessionInFolder
{
protected:
    QByteArray custom() const { return contentOf(path("custom.xml")); }
    QByteArray workingCopy() const { return contentOf(path("current.xml")); }
    QStringList names() const { return SessionInFolder::names(m_session->custom()); }
    void capture(int control, qint32 code)
    {
        m_session->assign(control, Layer::Normal, key(code));
        QVERIFY(m_session->keepWithLastStep());
    }
};
