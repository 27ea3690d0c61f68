#include "Require.h"

#include "cli/DisplayText.h"
#include "cli/Output.h"
#include "cli/TestStream.h"
#include "text/VisibleText.h"

#include <algorithm>

namespace palvera {
namespace {

bool isObeyed(QChar c)
{
    return c.category() == QChar::Other_Control ||
           (c.category() == QChar::Other_Format && c != u'\u200C' && c != u'\u200D');
}

void checkShown(const QString& text, Lines lines)
{
    const auto shown = visibleText(text, lines, 50);
    require(shown.toUcs4().size() <= 50, "it has an end");
    require(
        std::ranges::none_of(shown, [&](QChar c) { return isObeyed(c) && !(lines == Lines::several && c == u'\n'); }),
        "a terminal obeys nothing of it");
    require(visibleText(shown, lines, 50) == shown, "it is visible already");
}

} // namespace
} // namespace palvera

// What the platform says, a name or a message, on a screen and on a terminal.
void palvera::check(const QByteArray& input)
{
    const auto text = QString::fromUtf8(input);
    checkShown(text, Lines::one);
    checkShown(text, Lines::several);
    const auto name = visibleText(text);
    for (int cells : {1, 7, 40}) {
        require(cli::cellsOf(cli::shortened(name, cells)) <= cells, "it fits");
        require(cli::cellsOf(cli::padded(cli::shortened(name, cells), cells)) == cells, "and is filled up");
    }

    cli::TestStream out, error;
    out.cells = error.cells = 40;
    cli::Output people(cli::Output::Style::text, out, error);
    people.say(text, {});
    people.fail(text);
    require(out.written.count('\n') <= 1 && error.written.count('\n') <= 1, "a line each");
    require(!(out.written + error.written).contains('\x1b'), "with no command");
}
