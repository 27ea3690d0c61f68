#include "localplatform/ByteStore.h"

#include <cstring>
#include <map>
#include <vector>

namespace palvera::local {

namespace {

class MemoryObject final : public StoredObject {
public:
    explicit MemoryObject(std::vector<char> bytes) : m_bytes(std::move(bytes)) {}

    qint64 size() const override { return static_cast<qint64>(m_bytes.size()); }
    void read(qint64 offset, std::span<char> into) const override
    {
        std::memcpy(into.data(), m_bytes.data() + offset, into.size());
    }

private:
    std::vector<char> m_bytes;
};

class ZeroObject final : public StoredObject {
public:
    explicit ZeroObject(qint64 size) : m_size(size) {}

    qint64 size() const override { return m_size; }
    void read(qint64, std::span<char> into) const override { std::fill(into.begin(), into.end(), '\0'); }

private:
    qint64 m_size;
};

/// The parts of one upload by their offset.
using PartBytes = std::map<qint64, std::vector<char>>;

class MemoryWriter final : public PartWriter {
public:
    MemoryWriter(std::shared_ptr<PartBytes> parts, const PartSpan& span)
        : m_parts(std::move(parts)), m_offset(span.offset)
    {
        m_bytes.reserve(static_cast<std::size_t>(span.length));
    }

    void write(std::span<const char> bytes) override { m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end()); }
    void keep() override { (*m_parts)[m_offset] = std::move(m_bytes); }

private:
    std::shared_ptr<PartBytes> m_parts;
    qint64 m_offset;
    std::vector<char> m_bytes;
};

class MemoryStore final : public ByteStore {
public:
    std::unique_ptr<PartWriter> openPart(const Staging& staging, const PartSpan& span, Part) override
    {
        auto& parts = m_parts[staging.serial];
        if (!parts)
            parts = std::make_shared<PartBytes>();
        return std::make_unique<MemoryWriter>(parts, span);
    }

    void assemble(const Staging& staging) override
    {
        std::vector<char> whole(static_cast<std::size_t>(staging.byteSize));
        for (const auto& [offset, bytes] : *m_parts.at(staging.serial))
            std::memcpy(whole.data() + offset, bytes.data(), bytes.size());
        m_objects[staging.serial] = std::make_shared<MemoryObject>(std::move(whole));
        m_parts.erase(staging.serial);
    }

    void drop(const Staging& staging) override { m_parts.erase(staging.serial); }
    std::shared_ptr<const StoredObject> object(const Staging& staging) override { return m_objects.at(staging.serial); }

private:
    std::map<qint64, std::shared_ptr<PartBytes>> m_parts;
    std::map<qint64, std::shared_ptr<const StoredObject>> m_objects;
};

class NullStore final : public ByteStore {
public:
    std::unique_ptr<PartWriter> openPart(const Staging&, const PartSpan&, Part) override { return nullptr; }
    void assemble(const Staging&) override {}
    void drop(const Staging&) override {}
    std::shared_ptr<const StoredObject> object(const Staging& staging) override
    {
        return std::make_shared<ZeroObject>(staging.byteSize);
    }
};

/// Eight bytes that depend on their place alone.
quint64 wordAt(quint64 seed, quint64 index)
{
    quint64 mixed = (index + 1) * 0x9e3779b97f4a7c15ULL ^ seed;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9ULL;
    return mixed ^ (mixed >> 27);
}

} // namespace

void PatternObject::read(qint64 offset, std::span<char> into) const
{
    for (std::size_t done = 0; done < into.size();) {
        auto at = static_cast<quint64>(offset) + done;
        quint64 word = wordAt(m_seed, at / 8);
        auto skip = at % 8;
        auto count = std::min<std::size_t>(8 - skip, into.size() - done);
        std::memcpy(into.data() + done, reinterpret_cast<const char*>(&word) + skip, count);
        done += count;
    }
}

std::unique_ptr<ByteStore> makeMemoryStore()
{
    return std::make_unique<MemoryStore>();
}

std::unique_ptr<ByteStore> makeNullStore()
{
    return std::make_unique<NullStore>();
}

} // namespace palvera::local
