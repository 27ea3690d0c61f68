#include "files/VisibleText.h"

#include <QList>

#include <algorithm>
#include <array>

namespace palvera {

namespace {

bool isInvisible(char32_t c)
{
    static constexpr std::array<char32_t, 2> joiners{0x200C, 0x200D};
    static constexpr std::array<char32_t, 4> blankLetters{0x115F, 0x1160, 0x3164, 0xFFA0};
    auto isOneOf = [c](const auto& list) { return std::ranges::find(list, c) != list.end(); };
    switch (QChar::category(c)) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    case QChar::Other_Format:
        return !isOneOf(joiners);
    default:
        return isOneOf(blankLetters);
    }
}

} // namespace

QString visibleText(const QString& text)
{
    auto letters = text.toUcs4();
    letters.removeIf(isInvisible);
    return QString::fromUcs4(reinterpret_cast<const char32_t*>(letters.constData()), letters.size());
}

} // namespace palvera
