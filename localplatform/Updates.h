#pragma once

#include "localplatform/ByteStore.h"
#include "localplatform/Wire.h"

namespace palvera::local {

/// What is published of the client itself.
struct PublishedUpdate {
    QString image; ///< path of a file "Palvera-VERSION.dmg"; nothing is published when empty
    QString build;
    QString notes = {};
};

/// The feed of published builds at "/updates/latest.json" of the service, and what it names on storage, which sends on
/// to the image as storage does that is spread over the world. Everybody may read both.
class Updates {
public:
    explicit Updates(PublishedUpdate published) : m_published(std::move(published)) {}

    static bool isFeed(const RequestHead& head);
    static bool isImage(const RequestHead& head);

    /// Throws Refusal where nothing is published.
    Reply feed(const QByteArray& storageAddress) const;
    /// The image, or where it is. Throws Refusal.
    std::shared_ptr<const StoredObject> image(const RequestHead& head, Reply& reply) const;

private:
    QString fileName() const;

    const PublishedUpdate m_published;
};

} // namespace palvera::local
