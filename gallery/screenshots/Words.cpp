#include "gallery/screenshots/Words.h"

#include <QFile>
#include <QXmlStreamReader>

#include <stdexcept>

namespace palvera {
namespace {

const QRegularExpression& place()
{
    static const QRegularExpression pattern(QStringLiteral("%(\\d|n)"));
    return pattern;
}

constexpr int shortestPart = 6; // of a text that is looked for by it alone

int numberOf(const QString& place)
{
    return place == QStringLiteral("n") ? 0 : place.toInt();
}

QString longestPiece(const QString& text)
{
    const auto pieces = text.split(place());
    return *std::ranges::max_element(pieces, {}, &QString::size);
}

} // namespace

Words::Words(const QString& language)
{
    QFile file(QStringLiteral("translations/palvera_%1.ts").arg(language));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + file.fileName().toStdString());
    QXmlStreamReader reader(&file);
    QString source;
    bool isCounted = false;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (reader.name() == QStringLiteral("message"))
            isCounted = reader.attributes().hasAttribute(QStringLiteral("numerus"));
        else if (reader.name() == QStringLiteral("source"))
            source = reader.readElementText();
        else if (reader.name() == QStringLiteral("numerusform"))
            add(source, reader.readElementText()); // the last is that for many
        else if (reader.name() == QStringLiteral("translation") && !isCounted)
            add(source, reader.readElementText());
    }
    std::ranges::sort(m_patterns, std::greater(), &Pattern::letters);
}

void Words::add(const QString& source, const QString& translation)
{
    QString pattern;
    QList<int> places;
    qsizetype end = 0;
    for (auto match = place().globalMatch(source); match.hasNext();) {
        const auto found = match.next();
        pattern += QRegularExpression::escape(source.mid(end, found.capturedStart() - end)) + QStringLiteral("(.+)");
        places.append(numberOf(found.captured(1)));
        end = found.capturedEnd();
    }
    if (places.isEmpty()) {
        m_whole.insert(source, translation);
        return;
    }
    pattern += QRegularExpression::escape(source.mid(end));
    m_patterns.append({.source = QRegularExpression(QRegularExpression::anchoredPattern(pattern)),
                       .places = places,
                       .translation = translation,
                       .letters = source.size() - 2 * places.size()});
}

QStringList Words::operator()(const QString& english) const
{
    QStringList texts{english, whole(english)};
    if (english.size() < shortestPart)
        return texts;
    for (auto each = m_whole.cbegin(); each != m_whole.cend(); ++each)
        if (each.key().contains(english))
            texts.append(each.value());
    for (const auto& pattern : m_patterns)
        if (pattern.source.pattern().contains(QRegularExpression::escape(english)))
            texts.append(longestPiece(pattern.translation));
    return texts;
}

QString Words::whole(const QString& english) const
{
    if (const auto text = m_whole.constFind(english); text != m_whole.cend())
        return *text;
    for (const auto& pattern : m_patterns) {
        const auto match = pattern.source.match(english);
        if (!match.hasMatch())
            continue;
        QString text;
        qsizetype end = 0;
        for (auto places = place().globalMatch(pattern.translation); places.hasNext();) {
            const auto found = places.next();
            const auto index = pattern.places.indexOf(numberOf(found.captured(1)));
            text += pattern.translation.mid(end, found.capturedStart() - end);
            text += whole(match.captured(static_cast<int>(index) + 1));
            end = found.capturedEnd();
        }
        return text + pattern.translation.mid(end);
    }
    return english;
}

} // namespace palvera
