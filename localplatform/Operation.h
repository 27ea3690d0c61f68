#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace palvera::local {

/// What a request asks for. Fault rules and counts go by its name.
enum class Operation {
    unknown,
    methods,
    config,
    me,
    password,
    migrate,
    login,
    verify,
    totp,
    resend,
    forgot,
    passkeyOptions,
    passkey,
    redeem,
    logout,
    webStart,
    orgs,
    projects,
    deliverables,
    assets,
    bin,
    binDownload,
    assetUrl,
    start,
    binStart,
    parts,
    complete,
    abort,
    asset,
    progress,
    put,
    get,
    feed,
    image,
};

/// The name that fault files use, such as "bin-start".
QByteArray nameOf(Operation operation);
std::optional<Operation> operationNamed(const QString& name);
/// Whether it leaves something that must survive a restart of the platform.
bool changesState(Operation operation);

} // namespace palvera::local
