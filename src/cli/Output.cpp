#include "cli/Output.h"

#include "cli/DisplayText.h"
#include "text/VisibleText.h"

#include <QJsonDocument>

#include <algorithm>
#include <limits>

namespace palvera::cli {

namespace {

constexpr auto clearLine = "\x1b[K";
constexpr auto clearBelow = "\x1b[J";

/// Brings the cursor from the end of a block of lines to its start.
QByteArray startOfBlock(int lines)
{
    return (lines > 1 ? "\x1b[" + QByteArray::number(lines - 1) + 'A' : QByteArray()) + '\r';
}

/// JSON itself asks for escapes below U+0020 only.
bool mustBeEscaped(char32_t character)
{
    return (character >= 0x7F && visibleText(QString::fromUcs4(&character, 1)) != QString::fromUcs4(&character, 1));
}

QString jsonEscape(char32_t character)
{
    QString escape;
    for (auto unit : QString::fromUcs4(&character, 1))
        escape += QStringLiteral("\\u%1").arg(int(unit.unicode()), 4, 16, QLatin1Char('0'));
    return escape;
}

QJsonObject progressEvent(const QString& key, const ProgressView& view)
{
    QJsonObject event{{QStringLiteral("event"), QStringLiteral("progress")},
                      {QStringLiteral("key"), key},
                      {QStringLiteral("sent"), view.sent},
                      {QStringLiteral("total"), view.total}};
    if (view.bytesPerSecond)
        event[QStringLiteral("rate")] = *view.bytesPerSecond;
    return event;
}

} // namespace

QByteArray jsonLine(const QJsonObject& record)
{
    QString line;
    for (auto character : QString::fromUtf8(QJsonDocument(record).toJson(QJsonDocument::Compact)).toUcs4())
        line += mustBeEscaped(character) ? jsonEscape(character)
                                         : QString::fromUcs4(reinterpret_cast<const char32_t*>(&character), 1);
    return line.toUtf8() + '\n';
}

void Output::trouble(const QString& key, const Trouble& trouble)
{
    if (m_style == Style::text)
        return remark(troubleText(trouble));
    json({{QStringLiteral("event"), QStringLiteral("trouble")},
          {QStringLiteral("key"), key},
          {QStringLiteral("id"), key},
          {QStringLiteral("reason"), trouble.reason},
          {QStringLiteral("attempt"), std::max(trouble.attempt, 1)}});
}

void Output::show(const Listing& listing)
{
    if (m_style == Style::json) {
        for (const auto& record : listing.records)
            json(record);
    } else if (listing.rows.isEmpty()) {
        line(m_out, listing.whenEmpty);
    } else {
        for (const auto& text : tableLines(listing.columns, listing.rows, m_out.terminalCells()))
            line(m_out, text);
    }
}

void Output::say(const QString& text, const QJsonObject& record)
{
    if (m_style == Style::text && !text.isEmpty())
        line(m_out, text);
    if (m_style == Style::json && !record.isEmpty())
        json(record);
}

void Output::fail(const QString& message, QJsonObject details)
{
    details[QStringLiteral("event")] = QStringLiteral("failed");
    details[QStringLiteral("message")] = message;
    say({}, details);
    remark(QStringLiteral("palvera-cli: ") + message);
}

void Output::interrupted(const QJsonObject& record)
{
    say({}, record);
    remark(QStringLiteral("palvera-cli: Interrupted."));
}

void Output::remark(const QString& text)
{
    if (!text.isEmpty())
        line(m_error, text);
}

void Output::expectProgress(const QString& key)
{
    lineOf(key);
}

void Output::progress(const QString& key, const ProgressView& view)
{
    if (m_style == Style::json) {
        json(progressEvent(key, view));
        return;
    }
    lineOf(key).shown = view;
    drawProgress();
}

void Output::endProgress(const QString& key)
{
    clearProgress();
    std::erase_if(m_progress, [&](const Line& line) { return line.key == key; });
}

Output::Line& Output::lineOf(const QString& key)
{
    auto line = std::ranges::find(m_progress, key, &Line::key);
    return line == m_progress.end() ? m_progress.emplace_back(key) : *line;
}

void Output::line(TextStream& stream, const QString& text)
{
    clearProgress();
    constexpr auto asLongAsItIs = std::numeric_limits<qsizetype>::max(); // a command may hold long paths
    stream.write(visibleText(text, Lines::one, asLongAsItIs).toUtf8() + '\n');
}

void Output::json(const QJsonObject& record)
{
    m_out.write(jsonLine(record));
}

void Output::clearProgress()
{
    if (int lines = std::exchange(m_linesDrawn, 0))
        m_error.write(startOfBlock(lines) + (lines > 1 ? clearBelow : clearLine));
}

void Output::drawProgress()
{
    auto cells = m_error.terminalCells();
    if (!cells)
        return;
    auto drawn = startOfBlock(std::exchange(m_linesDrawn, 0));
    for (const auto& line : m_progress) {
        if (!line.shown)
            continue;
        // The last cell stays free: some terminals wrap as soon as it is written.
        drawn += (m_linesDrawn++ > 0 ? "\n\r" : "") + QByteArray(clearLine);
        drawn += progressLine(*line.shown, *cells - 1).toUtf8();
    }
    m_error.write(drawn);
}

} // namespace palvera::cli
