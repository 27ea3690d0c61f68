#pragma once

#include <QByteArray>

#include <optional>

namespace palvera::cli {

/// Where the program's lines go: one of its two standard streams. Main thread.
class TextStream {
public:
    virtual ~TextStream() = default;

    virtual void write(const QByteArray& bytes) = 0;
    /// The width of a terminal that understands being drawn on, in cells; nothing for anything else.
    virtual std::optional<int> terminalCells() const = 0;
};

/// A stream of the process. A reader that has gone is no failure: what is written from then on is thrown away, and the
/// command goes on to its end.
class StandardStream final : public TextStream {
public:
    enum class Number { output = 1, error = 2 };

    explicit StandardStream(Number number) : m_number(int(number)) {}

    void write(const QByteArray& bytes) override;
    std::optional<int> terminalCells() const override;

    /// Whether bytes were lost for another reason, such as a full disk.
    bool hasFailed() const { return m_failure != 0; }
    /// That reason, an errno.
    int failure() const { return m_failure; }

private:
    const int m_number;
    bool m_open = true;
    int m_failure = 0;
};

} // namespace palvera::cli
