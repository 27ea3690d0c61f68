#include "localplatform/Operation.h"

#include <utility>

namespace palvera::local {

namespace {

constexpr std::pair<Operation, const char*> names[] = {
    {Operation::unknown, "unknown"},
    {Operation::methods, "methods"},
    {Operation::config, "config"},
    {Operation::me, "me"},
    {Operation::password, "password"},
    {Operation::migrate, "migrate"},
    {Operation::login, "login"},
    {Operation::verify, "verify"},
    {Operation::totp, "totp"},
    {Operation::resend, "resend"},
    {Operation::forgot, "forgot"},
    {Operation::passkeyOptions, "passkey-options"},
    {Operation::passkey, "passkey"},
    {Operation::redeem, "redeem"},
    {Operation::logout, "logout"},
    {Operation::webStart, "web-start"},
    {Operation::orgs, "orgs"},
    {Operation::projects, "projects"},
    {Operation::deliverables, "deliverables"},
    {Operation::assets, "assets"},
    {Operation::bin, "bin"},
    {Operation::binDownload, "bin-download"},
    {Operation::assetUrl, "asset-url"},
    {Operation::start, "start"},
    {Operation::binStart, "bin-start"},
    {Operation::parts, "parts"},
    {Operation::complete, "complete"},
    {Operation::abort, "abort"},
    {Operation::asset, "asset"},
    {Operation::progress, "progress"},
    {Operation::put, "put"},
    {Operation::get, "get"},
    {Operation::feed, "feed"},
    {Operation::image, "image"},
};

} // namespace

QByteArray nameOf(Operation operation)
{
    for (const auto& [known, name] : names)
        if (known == operation)
            return name;
    return "unknown";
}

std::optional<Operation> operationNamed(const QString& name)
{
    for (const auto& [known, text] : names)
        if (name == QLatin1String(text))
            return known;
    return std::nullopt;
}

bool changesState(Operation operation)
{
    switch (operation) {
    case Operation::password:
    case Operation::migrate:
    case Operation::login:
    case Operation::verify:
    case Operation::totp:
    case Operation::passkey:
    case Operation::redeem:
    case Operation::logout:
    case Operation::start:
    case Operation::binStart:
    case Operation::complete:
    case Operation::abort:
    case Operation::asset:
        return true;
    case Operation::unknown:
    case Operation::methods:
    case Operation::config:
    case Operation::me:
    case Operation::resend:
    case Operation::forgot:
    case Operation::passkeyOptions:
    case Operation::webStart:
    case Operation::orgs:
    case Operation::projects:
    case Operation::deliverables:
    case Operation::assets:
    case Operation::bin:
    case Operation::binDownload:
    case Operation::assetUrl:
    case Operation::parts:
    case Operation::progress:
    case Operation::put:
    case Operation::get:
    case Operation::feed:
    case Operation::image:
        break;
    }
    return false;
}

} // namespace palvera::local
