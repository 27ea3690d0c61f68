#pragma once

#include "cli/TextStream.h"

namespace palvera::cli {

/// A stream that keeps what is written.
class TestStream final : public TextStream {
public:
    void write(const QByteArray& bytes) override { written += bytes; }
    std::optional<int> terminalCells() const override { return cells; }

    QByteArray written;
    std::optional<int> cells; ///< set to be a terminal
};

} // namespace palvera::cli
