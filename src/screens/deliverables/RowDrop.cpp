#include "screens/deliverables/RowDrop.h"

#include "screens/Wording.h"
#include "screens/deliverables/DeliverableCard.h"
#include "screens/deliverables/FiledFile.h"

#include <QFileInfo>

namespace palvera {

namespace {

constexpr qsizetype longestInTitle = 80; // characters

} // namespace

RowDrop::RowDrop(const DeliverablesView& list, FileSender& sender, QObject* parent)
    : QObject(parent), m_list(list), m_sender(sender)
{
    connect(&list, &DeliverablesView::loaded, this, &RowDrop::update);
}

void RowDrop::drop(const QString& deliverableId, const QList<QUrl>& files)
{
    m_sender.dismissNotice();
    if (const auto* deliverable = m_list.find(deliverableId))
        ask(m_sender.take(files, {.org = m_list.org(), .project = m_list.project(), .deliverable = *deliverable}));
}

void RowDrop::confirm()
{
    const auto confirmed = std::exchange(m_asked, {});
    Q_EMIT questionChanged();
    if (!confirmed)
        return;
    const auto& deliverable = confirmed->upload.deliverable;
    if (m_list.find(deliverable.id))
        m_sender.send(*confirmed);
    else
        m_sender.refuse(noLongerThere(deliverable));
}

QString RowDrop::title() const
{
    if (!m_asked)
        return {};
    const auto name = QFileInfo(m_asked->upload.file).fileName();
    return tr("Send “%1” to %2?")
        .arg(visibleText(name, Lines::one, longestInTitle),
             visibleText(titleOf(m_asked->upload.deliverable), Lines::one, longestInTitle));
}

QString RowDrop::message() const
{
    if (!m_asked)
        return {};
    const auto& [upload, leftOut] = *m_asked;
    const auto filed = filedFile(upload.deliverable);
    QStringList lines{visibleText(upload.deliverable.contextLine().value_or(QString())),
                      filed ? tr("It replaces “%1”.").arg(filed->name) : QString(),
                      leftOut.isEmpty() ? QString() : tr("One file goes to it. Left out: %1.").arg(namesText(leftOut))};
    lines.removeAll(QString());
    return lines.join(u'\n');
}

void RowDrop::ask(std::optional<Intended> intended)
{
    if (!m_asked && !intended)
        return;
    m_asked = std::move(intended);
    Q_EMIT questionChanged();
}

/// What is filed there may have changed.
void RowDrop::update()
{
    if (!m_asked)
        return;
    if (const auto* deliverable = m_list.find(m_asked->upload.deliverable.id))
        m_asked->upload.deliverable = *deliverable;
    Q_EMIT questionChanged();
}

} // namespace palvera
