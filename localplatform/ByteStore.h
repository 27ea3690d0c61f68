#pragma once

#include <QString>

#include <memory>
#include <span>

namespace palvera::local {

/// The bytes of one object in storage. Any thread.
class StoredObject {
public:
    virtual ~StoredObject() = default;

    virtual qint64 size() const = 0;
    /// Fills `into` from `offset`; both lie within the object.
    virtual void read(qint64 offset, std::span<char> into) const = 0;
    /// Where the bytes lie on disk; empty when they do not.
    virtual QString path() const { return {}; }
};

/// Bytes made up from a number, the same at every read.
class PatternObject final : public StoredObject {
public:
    PatternObject(quint64 seed, qint64 size) : m_seed(seed), m_size(size) {}

    qint64 size() const override { return m_size; }
    void read(qint64 offset, std::span<char> into) const override;

private:
    quint64 m_seed;
    qint64 m_size;
};

/// One part while it arrives. One thread at a time. Dropped without `keep`, it was never there.
class PartWriter {
public:
    virtual ~PartWriter() = default;

    virtual void write(std::span<const char> bytes) = 0;
    /// The whole part has arrived.
    virtual void keep() = 0;
};

/// Where a part's bytes belong in the whole.
struct PartSpan {
    qint64 offset = 0;
    qint64 length = 0;
};

/// What a store must know of an upload.
struct Staging {
    qint64 serial = 0;
    qint64 byteSize = 0;
    QString filename;
};

/// Keeps the parts of uploads and the objects made of them. One thread at a time; the writers it gives run beside it.
class ByteStore {
public:
    /// Whether a part's bytes are already there, or on their way, so that another copy must not disturb them.
    enum class Part { fresh, again };

    virtual ~ByteStore() = default;

    /// Null when the store throws bytes away.
    virtual std::unique_ptr<PartWriter> openPart(const Staging& staging, const PartSpan& span, Part part) = 0;
    /// Makes the object of parts that are all there.
    virtual void assemble(const Staging& staging) = 0;
    /// Gives up what there is of an upload.
    virtual void drop(const Staging& staging) = 0;
    /// An object that was assembled, by this run or an earlier one.
    virtual std::shared_ptr<const StoredObject> object(const Staging& staging) = 0;
};

/// Objects in memory.
std::unique_ptr<ByteStore> makeMemoryStore();
/// Objects of the right size that read as zeros.
std::unique_ptr<ByteStore> makeNullStore();

} // namespace palvera::local
