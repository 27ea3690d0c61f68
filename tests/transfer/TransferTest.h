#pragma once

#include "async/TaskGroup.h"
#include "http/TransportError.h"

#include "support/Files.h"
#include "support/QtPrinting.h"
#include "support/Simulation.h"

#include <QDateTime>
#include <QTemporaryDir>

namespace palvera {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// How something ended: "" when it went well.
inline std::string inWords(const std::exception_ptr& failure)
{
    return !failure ? "" : isCancellation(failure) ? "cancelled" : describe(failure).toStdString();
}

} // namespace palvera
