#include "installer/Jobs.h"

#include "installer/Built.h"
#include "installer/Refused.h"

#include <QProcessEnvironment>

#include <csignal>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace palvera::installer {

namespace {

constexpr rlim_t mostMemory = 1UL << 30; // bytes of address space
constexpr int cannotStart = 126;

/// In the child, where only calls to the system are allowed.
void becomeWorker(pid_t service, int image)
{
    // The lock goes with the worker; none outlives its service.
    bool isReady = ::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && ::getppid() == service;
    // A number that is given to itself keeps its mark to be closed.
    if (image == imageNumber)
        isReady = isReady && ::fcntl(imageNumber, F_SETFD, 0) == 0;
    else if (image >= 0)
        isReady = isReady && ::dup2(image, imageNumber) == imageNumber;
    rlimit memory;
    isReady = isReady && ::getrlimit(RLIMIT_AS, &memory) == 0;
    if (!isSanitized) {
        memory.rlim_cur = std::min(mostMemory, memory.rlim_max); // which the program on trial may go beyond
        isReady = isReady && ::setrlimit(RLIMIT_AS, &memory) == 0;
    }
    if (!isReady)
        ::_exit(cannotStart);
}

/// Nothing of the service's own, by which it could be steered.
QProcessEnvironment workerEnvironment()
{
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin"));
    environment.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
    return environment;
}

} // namespace

Jobs::Jobs(const Settings& settings) : m_forWorker(settings.forWorker)
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(settings.patience);
    connect(&m_limit, &QTimer::timeout, this, [this] {
        m_isLate = true;
        endTrial(); // while the worker holds its number
        m_worker->kill();
    });
}

Jobs::~Jobs()
{
    if (!m_worker)
        return;
    m_worker->disconnect(this);
    endTrial();
    m_worker->kill();
    m_worker->waitForFinished(); // of a process that is being killed
}

void Jobs::add(Job job)
{
    m_waiting.push_back(std::move(job));
    if (!m_worker)
        startNext();
}

void Jobs::startNext()
{
    m_output.clear();
    m_isLate = false;
    m_worker = new QProcess(this);
    connect(m_worker, &QProcess::readyReadStandardOutput, this,
            [this] { m_output += m_worker->readAllStandardOutput(); });
    connect(m_worker, &QProcess::finished, this, [this](int status, QProcess::ExitStatus exit) {
        m_output += m_worker->readAllStandardOutput();
        endTrial();
        finish(errorOf(status, exit));
    });
    connect(m_worker, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) // which is not followed by an end
            finish(textOf({Refusal::notUnpacked}));
    });
    start(*m_worker);
}

void Jobs::start(QProcess& worker)
{
    const auto& job = m_waiting.front();
    worker.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    worker.setProcessEnvironment(workerEnvironment());
    worker.setChildProcessModifier([service = ::getpid(), image = job.image.isValid()
                                                                      ? job.image.fileDescriptor()
                                                                      : -1] { becomeWorker(service, image); });
    m_limit.start();
    worker.start(QStringLiteral("/proc/self/exe"), wordsOf(job.task) + m_forWorker);
}

void Jobs::finish(const QString& error)
{
    m_limit.stop();
    m_worker->deleteLater();
    m_worker = nullptr;
    const auto job = std::move(m_waiting.front());
    m_waiting.pop_front();
    if (!m_waiting.empty())
        startNext();
    job.done(error);
}

/// A program on trial is killed with the worker, but what it has started is not.
void Jobs::endTrial() const
{
    if (const auto trial = readReport(m_output).trial; trial > 1)
        ::kill(-trial, SIGKILL);
}

QString Jobs::errorOf(int status, QProcess::ExitStatus exit) const
{
    const auto report = readReport(m_output);
    if (m_isLate)
        return textOf({Refusal::tooSlow});
    if (exit == QProcess::NormalExit && status == 0 && report.isDone)
        return {};
    return report.refusal.isEmpty() ? textOf({Refusal::notUnpacked}) : report.refusal;
}

} // namespace palvera::installer
