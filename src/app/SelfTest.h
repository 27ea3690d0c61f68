#pragma once

#include <QStringList>

namespace palvera {

/// What keeps this build from showing its screens on this machine, such as a module of Qt that is missing, or a library
/// that a display needs; empty when nothing does. Compiles every screen, and shows none. Within a QGuiApplication.
QStringList faultsOfBuild();

} // namespace palvera
