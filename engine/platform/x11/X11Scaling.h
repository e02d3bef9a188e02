#pragma once

#include <QByteArray>
#include <QVector>

/// How much larger than its design the program's window is shown on each screen of an X server.
namespace X11Scaling
{

struct Screen {
    QByteArray name; ///< of the output, as the toolkit knows it
    int width = 0;   ///< pixels
    int height = 0;
};

/// For each screen on which a window of this size (at 100 %) would not fit with the toolkit's @p factor, the
/// largest factor with which it does: "NAME=FACTOR", separated by ";". Empty when it fits everywhere.
QByteArray cappedFactors(const QVector<Screen> &screens, double factor, int windowWidth, int windowHeight);

/// The factor that the toolkit takes from these dots per inch.
double factorFor(double dotsPerInch);

} // namespace X11Scaling
