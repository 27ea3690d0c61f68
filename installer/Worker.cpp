#include "installer/Worker.h"

#include "installer/Refused.h"

#include <cstdio>

#include <sys/stat.h>

namespace palvera::installer {

namespace {

constexpr QByteArrayView trialWord("trial "), triedWord("tried"), refusedWord("refused "), doneWord("done");

void say(QByteArrayView word, const QByteArray& rest = {})
{
    const auto line = word.toByteArray() + rest + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}

void perform(const Task& task, Installer& installer)
{
    switch (task.kind) {
    case Task::Kind::prepare:
        installer.prepare(FileDescriptor(imageNumber), task.target, task.announced, [](pid_t trial) {
            if (trial > 0)
                say(trialWord, QByteArray::number(trial));
            else
                say(triedWord);
        });
        return;
    case Task::Kind::install:
        return installer.install(task.target);
    }
}

} // namespace

WorkerReport readReport(const QByteArray& output)
{
    WorkerReport report;
    for (const auto& line : output.split('\n')) {
        if (line.startsWith(trialWord))
            report.trial = line.sliced(trialWord.size()).toInt();
        else if (line == triedWord)
            report.trial = 0;
        else if (line.startsWith(refusedWord))
            report.refusal = QString::fromUtf8(line.sliced(refusedWord.size()));
        else if (line == doneWord)
            report.isDone = true;
    }
    return report;
}

int runWorker(const Settings& settings)
{
    ::umask(S_IWGRP | S_IWOTH);
    try {
        Installer installer(settings.root, settings.keys);
        perform(*settings.task, installer);
        say(doneWord);
        return 0;
    } catch (const Refused& refused) {
        say(refusedWord, textOf(refused).toUtf8());
        return 1;
    }
}

} // namespace palvera::installer
