#pragma once

#include "installer/Image.h"

#include <functional>

#include <sys/types.h>

namespace palvera::installer {

/// What the feed said of an update.
struct Announced {
    QString version;
    QString build;
};

/// Prepares and installs updates of the copy under one root. One thread, in a process of its own; blocks.
class Installer {
public:
    /// Images are signed by one of `keys`.
    Installer(QString root, QList<PublicKey> keys);

    /// Judges the image and puts its build beside the others, tried and whole. That it is there already is success,
    /// too. `target` is the root of the copy that asks; `onTrial` is told what `tryBuild` tells.
    /// Throws Refused.
    void prepare(const FileDescriptor& image, const QString& target, const Announced& announced,
                 const std::function<void(pid_t)>& onTrial);
    /// Makes the newest build the current one. That it is so already is success, too. Throws Refused.
    void install(const QString& target);

private:
    void requireTarget(const QString& target) const;

    const QString m_root;
    const QList<PublicKey> m_keys;
};

} // namespace palvera::installer
