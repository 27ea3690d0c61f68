#pragma once

#include "cli/Listing.h"
#include "cli/ProgressLine.h"
#include "cli/TextStream.h"

#include <QJsonObject>

namespace palvera::cli {

/// All that the program says: text for people, or one JSON object a line for programs. Main thread.
///
/// Texts from elsewhere never reach a terminal raw. On a terminal one line of the error stream is redrawn with the
/// progress and is cleared before anything else is said; elsewhere nothing is ever redrawn.
class Output {
public:
    enum class Style { text, json };

    Output(Style style, TextStream& out, TextStream& error) : m_style(style), m_out(out), m_error(error) {}

    /// The listing, as a table or one record a line.
    void show(const Listing& listing);
    /// `text` for people, `record` for programs; either may be empty, and then that reader is told nothing.
    void say(const QString& text, const QJsonObject& record);
    /// What went wrong; `details` are what programs learn beside it. People find it on the error stream in either
    /// style.
    void fail(const QString& message, QJsonObject details = {});
    /// The user cut the command off; `record` is for programs.
    void interrupted(const QJsonObject& record);
    /// A remark beside what was asked for, on the error stream in either style.
    void remark(const QString& text);

    /// Redraws the progress of the upload `key`.
    void progress(const QString& key, ProgressView view);

private:
    void line(TextStream& stream, const QString& text);
    void json(const QJsonObject& record);
    void clearProgress();

    const Style m_style;
    TextStream& m_out;
    TextStream& m_error;
    bool m_progressShown = false;
    QString m_progressKey;
    std::optional<double> m_lastRate; // of m_progressKey, shown while the engine measures afresh
};

/// `record` as one line of JSON, in which whatever a terminal could take for a command is escaped.
QByteArray jsonLine(const QJsonObject& record);

} // namespace palvera::cli
