#include "transfers/Trace.h"

namespace palvera {

namespace {

/// The means of neighbours; an unpaired last sample stays as it is.
QList<double> halved(const QList<double>& samples)
{
    QList<double> merged;
    merged.reserve((samples.size() + 1) / 2);
    qsizetype i = 0;
    for (; i + 1 < samples.size(); i += 2)
        merged.append((samples[i] + samples[i + 1]) * 0.5);
    if (i < samples.size())
        merged.append(samples[i]);
    return merged;
}

} // namespace

void Trace::add(double rate)
{
    carry += rate;
    ++carried;
    if (carried < every)
        return;
    samples.append(carry / double(carried));
    carry = 0;
    carried = 0;
    if (samples.size() <= cap)
        return;
    samples = halved(samples);
    every *= 2;
}

} // namespace palvera
