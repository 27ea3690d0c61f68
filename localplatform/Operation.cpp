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

} // namespace palvera::local
