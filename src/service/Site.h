#pragma once

#include "service/Addresses.h"

#include <QString>

#include <array>
#include <optional>

namespace palvera {

class Preferences;

/// One of the two sites that the platform runs as.
enum class Site { live, qa };

inline constexpr std::array allSites{Site::live, Site::qa};

/// How the site is stored: "live" or "qa".
QString rawValue(Site site);
/// Its service address, without a final "/".
QString baseURL(Site site);
/// The same, taken apart.
Address baseAddress(Site site);
/// Its name on a badge.
QString label(Site site);
/// What the sign-in screen is headed with.
QString signInTitle(Site site);

/// The site that the user chose last; staging for anybody who never chose the live one.
Site currentSite(const Preferences& preferences);
/// Keeps `site` for the next start.
void storeSite(Preferences& preferences, Site site);

/// How the sign-in screen names the place to which one signs in.
struct SignInLabel {
    std::optional<QString> label;
    QString title;
    bool staging = false; ///< drawn as the staging site is

    bool operator==(const SignInLabel&) const = default;
};

SignInLabel signInLabel(Site site);
/// For a service address that the environment overrides, where no site says what it is: by the name that the platform
/// gives its own environment.
SignInLabel signInLabel(const std::optional<QString>& environment);

} // namespace palvera
