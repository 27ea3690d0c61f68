#include "screens/deliverables/FileSender.h"

#include "async/RunOn.h"
#include "files/Quantities.h"
#include "files/SourcePath.h"
#include "screens/LocalPath.h"
#include "screens/Wording.h"
#include "screens/deliverables/DeliverableCard.h"
#include "text/VisibleText.h"
#include "transfer/UploadFailures.h"
#include "transfers/Transfers.h"

#include <boost/asio/strand.hpp>

#include <QFileInfo>

namespace palvera {

namespace {

struct Inspection {
    QString objection; ///< why it cannot be sent; empty when it can
    qint64 bytes = 0;
};

/// Blocks on the disk.
Inspection inspect(const QString& path)
{
    const auto there = statusOf(path).value_or(PathStatus{});
    const auto name = QFileInfo(path).fileName();
    return {
        .objection =
            there.isFolder
                ? QObject::tr("“%1” is a folder. Drop the file itself.").arg(visibleText(name.isEmpty() ? path : name))
                : objectionToSource(path),
        .bytes = there.size};
}

QString nameOf(const QString& path)
{
    return visibleText(QFileInfo(path).fileName());
}

/// `said`, and what was left out besides.
QString withLeftOut(const QString& said, const QStringList& leftOut)
{
    return leftOut.isEmpty() ? said : QObject::tr("%1 Left out: %2.").arg(said, namesText(leftOut));
}

} // namespace

FileSender::FileSender(const Executor& main, const Executor& background, Transfers& transfers, QObject* parent)
    : QObject(parent), m_disk(boost::asio::make_strand(background)), m_transfers(transfers), m_tasks(main)
{}

std::optional<Intended> FileSender::take(const QList<QUrl>& files, const Destination& to)
{
    const auto& [org, project, deliverable] = to;
    if (files.isEmpty()) { // a program that is busy hands them over too late
        refuse(tr("The file did not arrive from the other program. Drop it again, or choose it here."));
        return {};
    }
    const auto path = localPath(files.first());
    if (path.isEmpty()) {
        refuse(tr("That is not a file on this computer. Save it here first, then drop it."));
        return {};
    }
    if (auto objection = objectionTo(deliverable.id); !objection.isEmpty()) {
        refuse(objection);
        return {};
    }
    Intended taken{.upload = {.file = path,
                              .orgId = org.id,
                              .projectId = project.id,
                              .deliverable = deliverable,
                              .client = org.name},
                   .leftOut = {}};
    for (const auto& other : files.mid(1))
        taken.leftOut.append(visibleText(other.fileName()));
    return taken;
}

void FileSender::send(Intended intended)
{
    m_tasks.start(check(std::move(intended), m_page));
}

Task<void> FileSender::check(Intended intended, int page)
{
    const auto& file = intended.upload.file;
    const auto& deliverable = intended.upload.deliverable;
    Inspection found;
    co_await callOn(m_disk, [&] { found = inspect(file); });
    const bool isDoubtful = deliverable.kind == QStringLiteral("textless_elements") && found.bytes > mostForTextless;
    if (found.objection.isEmpty() && !isDoubtful)
        begin(intended);
    else if (page != m_page) // nobody looks at that deliverable any more, and could answer
        say(tr("“%1” was not sent to “%2”. %3")
                .arg(nameOf(file), titleOf(deliverable),
                     isDoubtful ? tr("It looks too long for that: it is %1.").arg(byteCountText(found.bytes))
                                : found.objection),
            false);
    else if (isDoubtful)
        setDoubtful(Doubtful{.intended = intended, .bytes = found.bytes});
    else
        refuse(withLeftOut(found.objection, intended.leftOut));
}

void FileSender::begin(const Intended& intended)
{
    const auto& [upload, leftOut] = intended;
    if (auto objection = objectionTo(upload.deliverable.id); !objection.isEmpty())
        return refuse(objection);
    say(leftOut.isEmpty() ? QString() : withLeftOut(tr("Only “%1” was taken.").arg(nameOf(upload.file)), leftOut),
        false);
    m_transfers.addUpload(upload);
}

QString FileSender::objectionTo(const QString& deliverableId) const
{
    const auto item = m_transfers.activeItem(deliverableId);
    if (!item || item->kind != Item::Kind::upload)
        return {};
    return tr("“%1” is on its way already. Stop it before you send another file.").arg(visibleText(item->name));
}

void FileSender::refuse(const QString& why)
{
    say(why, true);
}

void FileSender::turnPage()
{
    ++m_page;
    say({}, false);
    setDoubtful({});
}

QString FileSender::doubtfulMessage() const
{
    if (!m_doubtful)
        return {};
    const auto name = nameOf(m_doubtful->intended.upload.file);
    return tr("%1 is %2. Textless elements are usually a few minutes long. "
              "The picture master row is probably the right place.")
        .arg(name.isEmpty() ? tr("This file") : name, byteCountText(m_doubtful->bytes));
}

void FileSender::confirmDoubtful()
{
    const auto confirmed = m_doubtful;
    setDoubtful({});
    if (confirmed)
        begin(confirmed->intended);
}

void FileSender::dismissDoubtful()
{
    setDoubtful({});
}

void FileSender::say(const QString& notice, bool isRefusal)
{
    if (notice == m_notice && isRefusal == m_isRefusal)
        return;
    m_notice = notice;
    m_isRefusal = isRefusal;
    Q_EMIT noticeChanged();
}

void FileSender::setDoubtful(std::optional<Doubtful> doubtful)
{
    if (!m_doubtful && !doubtful)
        return;
    m_doubtful = std::move(doubtful);
    Q_EMIT doubtfulChanged();
}

} // namespace palvera
