#pragma once

#include <QColor>
#include <QList>
#include <QPointF>
#include <QSizeF>

namespace palvera {

// The geometry of the speed graph. Samples are bytes per second, oldest first.

/// The largest sample, and always above 0.
double peakOf(const QList<double>& samples);
/// The peak in rounded thousands or millions: "850K", "12M".
QString peakText(const QList<double>& samples);
/// How much of the width is used, from 0.02 to 1.
double usedFraction(double fraction);
/// Where the samples lie in a drawing of that size, of which the graph uses `fraction`; none for fewer than two.
QList<QPointF> tracePoints(const QList<double>& samples, double fraction, const QSizeF& size);
/// The colour of a stretch that ends at `sample`: green where it is fast, red where it is slow.
QColor traceColor(double sample, double peak);

} // namespace palvera
