#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>
#include <variant>

namespace palvera {

/// Where an upload goes: to one deliverable of a project, or into an organisation's Uploads bin. A plain value.
class TransferTarget {
public:
    struct Deliverable {
        QString orgId;
        QString projectId;
        QString deliverableId;

        bool operator==(const Deliverable&) const = default;
    };
    struct Bin {
        QString orgId;
        std::optional<QString> folder; ///< nothing is the bin's top level

        bool operator==(const Bin&) const = default;
    };

    TransferTarget(Deliverable deliverable) : m_case(std::move(deliverable)) {}
    TransferTarget(Bin bin) : m_case(std::move(bin)) {}

    /// Null when it is the other case.
    const Deliverable* asDeliverable() const { return std::get_if<Deliverable>(&m_case); }
    const Bin* asBin() const { return std::get_if<Bin>(&m_case); }

    const QString& orgId() const;
    /// Empty for the bin.
    QString projectId() const;

    /// The path, relative to the service address and escaped, under which the operations on one upload stand. Only
    /// the bin's uploads have a session; a deliverable has one upload at a time and ignores it.
    QString basePath(const std::optional<QString>& sessionId) const;

    /// One member, "deliverable" or "bin", that holds the fields of the case.
    QJsonObject toJson() const;
    /// Throws DecodingError.
    static TransferTarget fromJson(const QJsonObject& object);

    bool operator==(const TransferTarget&) const = default;
    friend std::size_t qHash(const TransferTarget& target, std::size_t seed) noexcept;

private:
    std::variant<Deliverable, Bin> m_case;
};

/// The path of a deliverable, relative to the service address and escaped.
QString deliverablePath(const TransferTarget::Deliverable& deliverable);

} // namespace palvera
