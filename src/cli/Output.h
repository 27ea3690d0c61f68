#pragma once

#include "cli/Listing.h"
#include "cli/ProgressLine.h"
#include "cli/TextStream.h"
#include "transfers/Item.h"

#include <QJsonObject>

namespace palvera::cli {

/// All that the program says: text for people, or one JSON object a line for programs. Main thread.
///
/// Texts from elsewhere never reach a terminal raw. On a terminal the last lines of the error stream, one for each
/// transfer, are redrawn with the progress and cleared before anything else is said; elsewhere nothing is ever redrawn.
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
    /// A remark beside what was asked for, on the error stream in either style. Nothing for an empty text.
    void remark(const QString& text);

    /// Why the transfer `key` does not move: an event for programs, a remark for people.
    void trouble(const QString& key, const Trouble& trouble);

    /// Keeps the next place among the lines of progress for the transfer `key`.
    void expectProgress(const QString& key);
    /// Shows the progress of the transfer `key`, below that of those that were expected or shown before it.
    void progress(const QString& key, const ProgressView& view);
    void endProgress(const QString& key);

private:
    void line(TextStream& stream, const QString& text);
    void json(const QJsonObject& record);
    void clearProgress();
    void drawProgress();

    const Style m_style;
    TextStream& m_out;
    TextStream& m_error;
    struct Line {
        QString key;
        std::optional<ProgressView> shown = {}; // its rate is the last known one
    };
    Line& lineOf(const QString& key);

    std::vector<Line> m_progress;
    int m_linesDrawn = 0; // of progress, on the terminal
};

/// `record` as one line of JSON, in which whatever a terminal could take for a command is escaped.
QByteArray jsonLine(const QJsonObject& record);

} // namespace palvera::cli
