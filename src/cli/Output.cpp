#include "cli/Output.h"

#include "cli/DisplayText.h"

#include <QJsonDocument>

namespace palvera::cli {

namespace {

constexpr auto clearLine = "\r\x1b[K";

/// JSON itself asks for escapes below U+0020 only.
bool mustBeEscaped(char32_t character)
{
    return (character >= 0x7F && printable(QString::fromUcs4(&character, 1)) != QString::fromUcs4(&character, 1));
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
    line(m_error, text);
}

void Output::progress(const QString& key, ProgressView view)
{
    if (m_style == Style::json) {
        json(progressEvent(key, view));
        return;
    }
    auto cells = m_error.terminalCells();
    if (!cells)
        return;
    if (std::exchange(m_progressKey, key) != key)
        m_lastRate.reset();
    if (view.bytesPerSecond)
        m_lastRate = view.bytesPerSecond;
    view.bytesPerSecond = m_lastRate;
    // The last cell stays free: some terminals wrap as soon as it is written.
    m_error.write(clearLine + progressLine(view, *cells - 1).toUtf8());
    m_progressShown = true;
}

void Output::line(TextStream& stream, const QString& text)
{
    clearProgress();
    stream.write(printable(text).toUtf8() + '\n');
}

void Output::json(const QJsonObject& record)
{
    m_out.write(jsonLine(record));
}

void Output::clearProgress()
{
    if (std::exchange(m_progressShown, false))
        m_error.write(clearLine);
}

} // namespace palvera::cli
