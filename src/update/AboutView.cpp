#include "update/AboutView.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace palvera {

AboutView::AboutView(Updater& updater, QObject* parent) : QObject(parent), m_updater(updater)
{
    connect(&updater, &Updater::changed, this, &AboutView::changed);
}

void AboutView::setOpen(bool open)
{
    if (std::exchange(m_open, open) != open)
        Q_EMIT openChanged();
}

QString AboutView::lastCheckText() const
{
    return m_updater.isInUse() ? palvera::lastCheckText(m_updater.lastChecked(), m_updater.isFeedSilent()) : QString();
}

QString AboutView::failureText() const
{
    return m_updater.lastFailure() ? palvera::failureText(*m_updater.lastFailure()) : QString();
}

QString AboutView::licences() const
{
    const QDir programs(QCoreApplication::applicationDirPath());
    for (const char* folder : {"../share/doc/licences", "../share/doc/palvera"})
        if (QFileInfo(programs.filePath(QString::fromLatin1(folder))).isDir())
            return QUrl::fromLocalFile(QDir::cleanPath(programs.filePath(QString::fromLatin1(folder))))
                .toString(QUrl::FullyEncoded);
    return {};
}

QString AboutView::alertTitle() const
{
    return m_updater.alert() ? m_updater.alert()->title : QString();
}

QString AboutView::alertDetail() const
{
    return m_updater.alert() ? m_updater.alert()->detail : QString();
}

void AboutView::checkForUpdates()
{
    setOpen(false); // the answer is shown in a dialog of its own
    m_updater.checkNow();
}

bool AboutView::isAlert(Updater::Alert::Kind kind) const
{
    return m_updater.alert() && m_updater.alert()->kind == kind;
}

} // namespace palvera
