#pragma once

#include <QString>

namespace palvera {

// What shows the user's files beside this program. Main thread; each returns at once and asks in the background.

/// Has the desktop's file manager show the folder of the file at `path`, with the file chosen. Where no file manager
/// answers, opens the folder with whatever opens folders. `busAddress` is the session bus unless given.
void showInFolder(const QString& path, const QString& busAddress = {});
/// Opens the file at `path` with whatever opens files of its kind.
void openFile(const QString& path);

} // namespace palvera
