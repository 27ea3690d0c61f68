#pragma once

#include "update/Updater.h"

namespace palvera {

// What the updater decides and what it says, as plain functions. Texts of a release are shown as plain text only.

/// The release that a feed's record names; nothing for what is none.
std::optional<Updater::Release> decodeRelease(const QByteArray& body);
/// Whether the build `offered` is above the one that runs, by their numbers. An offer that is no number never is; a
/// running build that is none counts as 0.
bool isNewer(const QString& offered, const QString& running);
/// The number of a build as an image spells it: without a sign or zeros before it.
QString plainNumber(const QString& build);
/// Whether both are one number.
bool isSameBuild(const QString& one, const QString& other);
/// Such as "1.4 (57)"; "0" for what is missing.
QString versionText(const QString& version, const QString& build);
/// The feed of a platform that is not one of the two sites, at the origin of its service.
QByteArray feedBeside(const QByteArray& origin);
/// Whether the program may read `url`, which the feed at `feed` or a redirect names: what is encrypted, and this
/// machine where the feed is on it too.
bool isAllowedAddress(const QByteArray& url, const QByteArray& feed);
/// What the downloaded image is called, whatever the version holds.
QString imageName(const QString& version);

/// How the pill shows a phase.
struct PillLook {
    QString symbol; ///< empty for none
    QString text;
    std::optional<int> percent; ///< in the place of the text
    QString tooltip;
    bool isBusy = false;

    bool operator==(const PillLook&) const = default;
};
PillLook pillFor(const Updater::Release& release, const Updater::Phase& phase);
/// What is asked before a restart while that many transfers, at least one, move.
QString restartQuestion(int moving);

/// When the feed was last read, in the user's own words for dates, and whether it has been silent since.
QString lastCheckText(const std::optional<Clock::WallTime>& lastChecked, bool isFeedSilent);
/// Such as "26 Nov 2026 14:02: The update is damaged."
QString failureText(const Updater::Note& failure);

/// What to tell a user who asked by hand, where there is nothing else to be seen.
Updater::Alert alertAfter(bool isRead, const QString& versionText);

} // namespace palvera
