#include "cli/Sending.h"

#include "cli/DisplayText.h"
#include "cli/Quantities.h"
#include "platform/TaskGroup.h"

#include <boost/asio/post.hpp>

#include <QFileInfo>

namespace palvera::cli {

namespace {

/// An upload as it is spoken of.
struct Subject {
    QString key;
    QString name;
    QString path;
    qint64 bytes = 0;
    TransferTarget target;
};

QJsonObject eventOf(const QString& event, const Subject& subject)
{
    return {{QStringLiteral("event"), event}, {QStringLiteral("key"), subject.key}};
}

void sayDone(const Subject& subject, double seconds, Output& output)
{
    auto event = recordOf(subject.target);
    event[QStringLiteral("event")] = QStringLiteral("done");
    event[QStringLiteral("key")] = subject.key;
    event[QStringLiteral("file")] = subject.path;
    event[QStringLiteral("bytes")] = subject.bytes;
    event[QStringLiteral("seconds")] = seconds;
    auto verb = subject.target.asDeliverable() ? QStringLiteral("Filed on") : QStringLiteral("Added to");
    output.say(QStringLiteral("%1 %2: “%3”, %4 in %5")
                   .arg(verb, placeText(subject.target), subject.name, bytesText(subject.bytes), durationText(seconds)),
               event);
}

/// The command that answers the platform's question.
QString confirmingCommand(const Subject& subject)
{
    const auto* row = subject.target.asDeliverable();
    if (!row)
        return {};
    QStringList words{QStringLiteral("palvera-cli"), QStringLiteral("upload")};
    for (const auto& word : {row->orgId, row->projectId, row->deliverableId, subject.path})
        words.append(shellWord(word));
    return words.join(u' ') + QStringLiteral(" --confirmed");
}

void sayWhatNext(const Subject& subject, ExitCode code, const Workbench& bench)
{
    if (code == ExitCode::confirmationNeeded) {
        bench.output.remark(QStringLiteral("To send it all the same: ") + confirmingCommand(subject));
        return;
    }
    if (auto advice = adviceFor(code); !advice.isEmpty())
        bench.output.remark(advice);
    if (bench.journals.loadJournal(subject.key))
        bench.output.remark(QStringLiteral("What has arrived is kept. Go on with: palvera-cli resume ") +
                            shellWord(subject.key));
}

ExitCode sayEnd(const Subject& subject, const std::exception_ptr& failure, double seconds, const Workbench& bench)
{
    auto code = exitCodeFor(failure);
    if (code == ExitCode::done) {
        sayDone(subject, seconds, bench.output);
        return code;
    }
    if (code == ExitCode::interrupted)
        bench.output.interrupted(eventOf(QStringLiteral("interrupted"), subject));
    else
        bench.output.fail(describe(failure), {{QStringLiteral("key"), subject.key}});
    sayWhatNext(subject, code, bench);
    return code;
}

} // namespace

QString objectionTo(const QString& path)
{
    QFileInfo file(path);
    if (!file.exists())
        return QStringLiteral("There is no file “%1”.").arg(path);
    if (file.isDir())
        return QStringLiteral("“%1” is a folder. Only files can be sent.").arg(path);
    return file.isFile() ? QString() : QStringLiteral("“%1” is not an ordinary file.").arg(path);
}

Task<ExitCode> sendFile(UploadRequest request, Workbench& bench)
{
    QFileInfo file(request.file);
    Subject subject{.key = request.key,
                    .name = file.fileName(),
                    .path = request.file,
                    .bytes = file.size(),
                    .target = request.target};
    bench.output.say(QStringLiteral("Sending “%1”, %2, to %3")
                         .arg(subject.name, bytesText(subject.bytes), placeText(subject.target)),
                     {});
    request.flag = bench.stop;
    request.onProgress = [main = bench.mainThread, &output = bench.output, key = subject.key,
                          name = subject.name](const UploadProgress& progress) {
        boost::asio::post(main, [&output, key, name, progress] {
            output.progress(key, {.name = name,
                                  .sent = progress.sent,
                                  .total = progress.total,
                                  .bytesPerSecond = progress.bytesPerSecond});
        });
    };
    auto began = bench.clock.now();
    auto outcome = co_await outcomeOf(bench.uploader.upload(std::move(request)));
    co_return sayEnd(subject, outcome.failure, secondsBetween(began, bench.clock.now()), bench);
}

} // namespace palvera::cli
