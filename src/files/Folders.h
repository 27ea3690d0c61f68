#pragma once

#include <QString>

namespace palvera {

/// Where things are kept. Absolute paths without a final "/"; none is created here.
struct Folders {
    QString applicationSupport; ///< what must survive: the upload journals
    QString library;            ///< what may be lost: the logs
    QString caches;             ///< ours alone; may be emptied at any time
    QString config;             ///< the user's preferences

    /// The user's own folders, as the environment sets them: `XDG_DATA_HOME`, `XDG_STATE_HOME`, `Palvera` in
    /// `XDG_CACHE_HOME`, and `XDG_CONFIG_HOME`. One that is unset or not absolute stands for its default in the home
    /// folder.
    static Folders ofUser();

    QString cookies() const { return applicationSupport + QStringLiteral("/Palvera/cookies"); }
    QString preferences() const { return config + QStringLiteral("/Palvera/palvera.conf"); }
};

/// The user's own folder for downloads, or their home where there is none.
QString proposedDownloadsFolder();

/// Makes the folder at `path`, and those above it that are missing, for their owner alone (0700), and closes one that
/// is there to others. A failure shows when something is to be kept there. Gives `path`.
QString makePrivateFolder(const QString& path);

} // namespace palvera
