#include "text/VisibleText.h"

#include "support/QtPrinting.h"

namespace palvera {
namespace {

using namespace Qt::StringLiterals;

TEST(VisibleTextTest, doesNothingButShow)
{
    const std::tuple<QString, QString, QString> cases[] = {
        // as it came, on one line, on several
        {u"Ævintýri #1?.mov"_s, u"Ævintýri #1?.mov"_s, u"Ævintýri #1?.mov"_s},
        {u"a\nb\tc\rd\u2028e\u2029"_s, u"a b c d e "_s, u"a\nb c d\ne\n"_s},
        {u"\x1b[2J"_s, u"[2J"_s, u"[2J"_s},
        {u"\u009b31m\x7f"_s + QChar(0), u"31m"_s, u"31m"_s},
        {u"gpj.\u202ecod\u2066\ufeff\u200b"_s, u"gpj.cod"_s, u"gpj.cod"_s},
        {u"\u3164\u115f"_s, u""_s, u""_s},
        {QString(QChar(0xD83D)) + u'x', u"�x"_s, u"�x"_s},
        {u"👩\u200d🚀 می\u200cخواهم"_s, u"👩\u200d🚀 می\u200cخواهم"_s, u"👩\u200d🚀 می\u200cخواهم"_s},
        {u"Z"_s + QString(40, QChar(0x0335)) + u"a"_s, u"Z"_s + QString(6, QChar(0x0335)) + u"a"_s,
         u"Z"_s + QString(6, QChar(0x0335)) + u"a"_s},
        {QString(2000, u'x'), QString(2000, u'x'), QString(2000, u'x')},
        {QString(2001, u'x'), QString(1999, u'x') + u'…', QString(1999, u'x') + u'…'},
    };
    for (const auto& [text, line, lines] : cases) {
        EXPECT_EQ(visibleText(text), line);
        EXPECT_EQ(visibleText(text, Lines::several), lines);
    }
}

} // namespace
} // namespace palvera
