#include "cli/DisplayText.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <array>

namespace palvera::cli {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

/// Characters that terminals draw two cells wide: Hangul, CJK, Kana, full-width forms and emoji.
constexpr std::array wideRanges{
    Range{0x1100, 0x115F},   Range{0x2E80, 0x303E},   Range{0x3041, 0x4DBF},   Range{0x4E00, 0xA4CF},
    Range{0xA960, 0xA97F},   Range{0xAC00, 0xD7A3},   Range{0xF900, 0xFAFF},   Range{0xFE30, 0xFE6F},
    Range{0xFF00, 0xFF60},   Range{0xFFE0, 0xFFE6},   Range{0x1F300, 0x1F64F}, Range{0x1F680, 0x1F6FF},
    Range{0x1F900, 0x1F9FF}, Range{0x20000, 0x3FFFD},
};

bool isWide(char32_t character)
{
    return std::any_of(wideRanges.begin(), wideRanges.end(),
                       [=](Range range) { return range.first <= character && character <= range.last; });
}

int cellsOf(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
        return 0;
    default:
        return isWide(character) ? 2 : 1;
    }
}

QString spaces(int count)
{
    return QString(std::max(count, 0), u' ');
}

QString shellWord(const QString& word)
{
    constexpr QStringView plain = u"@%+=:,./-_";
    bool isPlain = !word.isEmpty() && std::all_of(word.begin(), word.end(), [&](QChar character) {
        return character.isLetterOrNumber() || plain.contains(character);
    });
    if (isPlain)
        return word;
    return u'\'' + QString(word).replace(u'\'', QStringLiteral("'\\''")) + u'\'';
}

} // namespace

int cellsOf(QStringView text)
{
    int cells = 0;
    for (auto character : text.toUcs4())
        cells += cellsOf(char32_t(character));
    return cells;
}

QString shortened(const QString& text, int cells)
{
    if (cellsOf(text) <= cells)
        return text;
    QTextBoundaryFinder graphemes(QTextBoundaryFinder::Grapheme, text);
    qsizetype end = 0;
    for (auto next = graphemes.toNextBoundary(); next >= 0; next = graphemes.toNextBoundary()) {
        if (cellsOf(QStringView(text).first(next)) > cells - 1)
            break;
        end = next;
    }
    return cells < 1 ? QString() : text.first(end) + u'…';
}

QString padded(const QString& text, int cells)
{
    return text + spaces(cells - cellsOf(text));
}

QString paddedBefore(const QString& text, int cells)
{
    return spaces(cells - cellsOf(text)) + text;
}

QString shellWords(const QStringList& words)
{
    QStringList quoted;
    for (const auto& word : words) {
        if (word.startsWith(u'-') && !quoted.startsWith(QStringLiteral("--")))
            quoted.prepend(QStringLiteral("--"));
        quoted.append(shellWord(word));
    }
    return quoted.join(u' ');
}

} // namespace palvera::cli
