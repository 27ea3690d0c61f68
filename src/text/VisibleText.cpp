#include "text/VisibleText.h"

#include <QList>

#include <algorithm>
#include <array>
#include <optional>

namespace palvera {

namespace {

constexpr int mostMarks = 6; // on one letter; more pile up over the lines above and below

bool isOneOf(char32_t c, const auto& list)
{
    return std::ranges::find(list, c) != list.end();
}

char32_t ofBreak(Lines lines)
{
    return lines == Lines::several ? U'\n' : U' ';
}

/// What to show for `c`; nothing where that is nothing.
std::optional<char32_t> shownFor(char32_t c, Lines lines)
{
    static constexpr std::array<char32_t, 2> joiners{0x200C, 0x200D};
    static constexpr std::array<char32_t, 4> blankLetters{0x115F, 0x1160, 0x3164, 0xFFA0};
    switch (QChar::category(c)) {
    case QChar::Other_Control:
        if (c == U'\n')
            return ofBreak(lines);
        return c >= U'\t' && c <= U'\r' ? std::optional(U' ') : std::nullopt;
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return ofBreak(lines);
    case QChar::Other_Format:
        return isOneOf(c, joiners) ? std::optional(c) : std::nullopt;
    default: // of the many categories of Unicode
        return isOneOf(c, blankLetters) ? std::nullopt : std::optional(c);
    }
}

bool isMark(char32_t c)
{
    return QChar::category(c) == QChar::Mark_NonSpacing || QChar::category(c) == QChar::Mark_Enclosing;
}

} // namespace

QString visibleText(const QString& text, Lines lines, qsizetype longest)
{
    QList<char32_t> shown;
    int marks = 0;
    for (const char32_t each : text.toUcs4()) { // halves of surrogate pairs come out as U+FFFD
        const auto c = shownFor(each, lines);
        marks = isMark(each) ? marks + 1 : 0;
        if (!c || marks > mostMarks)
            continue;
        if (shown.size() == longest) {
            shown.back() = U'…';
            break;
        }
        shown.append(*c);
    }
    return QString::fromUcs4(shown.constData(), shown.size());
}

QString visibleName(const QString& name, const QString& other)
{
    auto shown = visibleText(name);
    return shown.trimmed().isEmpty() ? visibleText(other) : shown;
}

} // namespace palvera
