#include "async/Process.h"
#include "cli/Program.h"
#include "files/SourcePath.h"

#include <QCoreApplication>

#include <clocale>
#include <cstring>

#include <langinfo.h>

using namespace palvera::cli;

namespace {

/// Qt reads file names and arguments as UTF-8 and says so on the error stream where the locale is another.
void useUtf8()
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(::nl_langinfo(CODESET), "UTF-8") != 0)
        qputenv("LC_ALL", "C.UTF-8");
}

int answer(const TextAnswer& answer, StandardStream& out, StandardStream& error)
{
    (answer.isError ? error : out).write(answer.text.toUtf8());
    return int(answer.isError ? ExitCode::usage : ExitCode::done);
}

} // namespace

int main(int argc, char** argv)
{
    useUtf8();
    palvera::prepareProcess();
    QCoreApplication application(argc, argv);
    QStringList words;
    for (int word = 1; word < argc; ++word)
        words.append(palvera::pathFromBytes(argv[word]));

    StandardStream out(StandardStream::Number::output), error(StandardStream::Number::error);
    auto asked = readArguments(words, QStringLiteral(PALVERA_VERSION));
    if (const auto* text = std::get_if<TextAnswer>(&asked))
        return answer(*text, out, error);
    const auto& invocation = std::get<Invocation>(asked);
    Output output(invocation.json ? Output::Style::json : Output::Style::text, out, error);
    auto code = ExitCode::failed;
    try {
        code = Program(invocation, output).run();
    } catch (...) { // no thread or no descriptor to begin with
        output.fail(palvera::describe(std::current_exception()));
    }
    if (code == ExitCode::done && out.hasFailed()) {
        output.remark(QStringLiteral("palvera-cli: The output could not be written: ") +
                      QString::fromLocal8Bit(std::strerror(out.failure())));
        code = out.failure() == ENOSPC ? ExitCode::diskFull : ExitCode::failed;
    }
    return int(code);
}
