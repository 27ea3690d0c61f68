#include "service/Site.h"

#include "files/Preferences.h"

#include <QObject>

namespace palvera {

namespace {

QString siteKey()
{
    return QStringLiteral("pv.site");
}

} // namespace

QString rawValue(Site site)
{
    return site == Site::live ? QStringLiteral("live") : QStringLiteral("qa");
}

Address baseAddress(Site site)
{
    return {.origin = site == Site::live ? "https://" PALVERA_LIVE_HOST : "https://" PALVERA_QA_HOST,
            .path = "/api",
            .query = {}};
}

QString baseURL(Site site)
{
    const Address address = baseAddress(site);
    return QString::fromLatin1(address.origin + address.path);
}

QString label(Site site)
{
    return site == Site::live ? QStringLiteral("Live") : QStringLiteral("QA");
}

QString signInTitle(Site site)
{
    return site == Site::live ? QObject::tr("Sign in to Live") : QObject::tr("Sign in to Staging");
}

Site currentSite(const Preferences& preferences)
{
    return preferences.string(siteKey()) == rawValue(Site::live) ? Site::live : Site::qa;
}

void storeSite(Preferences& preferences, Site site)
{
    preferences.setString(siteKey(), rawValue(site));
}

SignInLabel signInLabel(Site site)
{
    return {.label = label(site), .title = signInTitle(site), .staging = site == Site::qa};
}

SignInLabel signInLabel(const std::optional<QString>& environment)
{
    if (environment == u"qa")
        return signInLabel(Site::qa);
    SignInLabel plain{.label = {}, .title = QObject::tr("Sign in")};
    if (environment == u"local")
        plain.label = QStringLiteral("Local");
    else if (environment == u"prod")
        plain.label = QStringLiteral("Prod");
    return plain;
}

} // namespace palvera
