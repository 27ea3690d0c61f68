#include "async/MainThread.h"

#include <QCoreApplication>
#include <QEvent>

namespace palvera {

namespace {

QEvent::Type wakeType()
{
    static const auto type = QEvent::Type(QEvent::registerEventType());
    return type;
}

} // namespace

MainThread::MainThread(boost::asio::execution_context& reactor) : m_queue(std::make_shared<Queue>(reactor, *this)) {}

MainThread::~MainThread()
{
    m_queue->close();
}

bool MainThread::event(QEvent* event)
{
    if (!m_queue->isWake(*event))
        return QObject::event(event);
    // What these post in turn comes with an event of its own, so that painting and input get their turn between.
    auto batch = m_queue->takeAll();
    for (auto& work : batch)
        std::exchange(work, nullptr)->run();
    return true;
}

void MainThread::Queue::push(std::unique_ptr<Work> work)
{
    std::lock_guard guard(m_lock);
    if (!m_owner)
        return;
    if (m_waiting.empty())
        QCoreApplication::postEvent(m_owner, new QEvent(wakeType())); // under the lock, so that the owner stays
    m_waiting.push_back(std::move(work));
}

bool MainThread::Queue::isWake(const QEvent& event)
{
    std::lock_guard guard(m_lock); // orders this after the push: TSan does not see Qt's own lock
    return event.type() == wakeType();
}

std::vector<std::unique_ptr<MainThread::Work>> MainThread::Queue::takeAll()
{
    std::lock_guard guard(m_lock);
    return std::exchange(m_waiting, {});
}

void MainThread::Queue::close()
{
    std::vector<std::unique_ptr<Work>> dropped; // destroyed without the lock: a dying coroutine may post again
    std::lock_guard guard(m_lock);
    m_owner = nullptr;
    dropped.swap(m_waiting);
}

} // namespace palvera
