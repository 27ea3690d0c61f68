#pragma once

#include "files/SourceFile.h"
#include "http/HttpClient.h"
#include "transfer/ByteRange.h"

namespace palvera {

/// The body of one part, read from the file just before it is sent, anew for each attempt: what stands in the page
/// cache is not copied into memory of our own as well. Whoever sends it checks after each part that the file is still
/// as it was.
class PartBody final : public BodySource {
public:
    /// `file` outlives the body.
    PartBody(const SourceFile& file, ByteRange range) : m_file(file), m_range(range) {}

    qint64 size() const override { return m_range.length; }
    /// Throws SourceChanged when the file ends before the part does.
    std::size_t read(qint64 offset, std::span<char> into) override;

private:
    const SourceFile& m_file;
    const ByteRange m_range;
};

} // namespace palvera
