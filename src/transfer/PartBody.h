#pragma once

#include "files/SourceFile.h"
#include "http/HttpClient.h"
#include "transfer/ByteRange.h"

#include <span>

namespace palvera {

/// The body of one part. Each byte is read from the file once, slice by slice just before it is first sent, and kept
/// for further attempts. Without a buffer it is read anew for each attempt.
class PartBody final : public BodySource {
public:
    /// `buffer` has the length of `range`, or none; both outlive the body.
    PartBody(const SourceFile& file, ByteRange range, std::span<char> buffer);

    qint64 size() const override { return m_range.length; }
    /// Throws SourceChanged when the file ends before the part does.
    std::size_t read(qint64 offset, std::span<char> into) override;

private:
    void fillUpTo(qint64 end);

    const SourceFile& m_file;
    const ByteRange m_range;
    const std::span<char> m_buffer;
    qint64 m_filled = 0;
};

} // namespace palvera
