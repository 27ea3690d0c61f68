#include "app/signin/BrowserView.h"

#include <QClipboard>
#include <QGuiApplication>

namespace palvera {

using namespace std::chrono_literals;

BrowserView::BrowserView(BrowserSignIn& signIn, Clock& clock, TaskScope& tasks, QObject* parent)
    : QObject(parent), m_signIn(signIn), m_clock(clock), m_tasks(tasks)
{
    QObject::connect(&signIn, &BrowserSignIn::waitingChanged, this, &BrowserView::follow);
}

void BrowserView::openAgain()
{
    m_signIn.showAgain();
}

void BrowserView::copyAddress() const
{
    QGuiApplication::clipboard()->setText(QString::fromUtf8(m_signIn.address()));
}

void BrowserView::cancel()
{
    m_signIn.cancel();
}

void BrowserView::follow()
{
    m_wasUsed = m_wasUsed || isWaiting();
    m_isUserBack = false;
    ++m_trips;
    Q_EMIT changed();
}

void BrowserView::becomeActive()
{
    if (isWaiting())
        m_tasks.start(wonder(m_trips));
}

/// Whoever has finished there may not have let the browser open the program.
Task<void> BrowserView::wonder(int trip)
{
    co_await m_clock.sleep(2s);
    if (trip != m_trips || !isWaiting())
        co_return;
    m_isUserBack = true;
    Q_EMIT changed();
}

} // namespace palvera
