#pragma once

#include "installer/Settings.h"

#include <QByteArray>

#include <sys/types.h>

namespace palvera::installer {

/// The descriptor on which a worker finds the image.
constexpr int imageNumber = 3;

/// How a worker's job went, as it says on its standard output: "trial N" when the process group N is on trial, "tried"
/// when it is not any more, "refused TEXT" or "done".
struct WorkerReport {
    pid_t trial = 0; // 0 when none is under way
    QString refusal;
    bool isDone = false;
};
WorkerReport readReport(const QByteArray& output);

/// Does the task of `settings` and reports on standard output. Gives the status that the process ends with.
int runWorker(const Settings& settings);

} // namespace palvera::installer
