#include "screens/deliverables/FiledFile.h"

#include "files/Quantities.h"
#include "screens/deliverables/DeliverableFilter.h"
#include "text/VisibleText.h"

#include <QObject>

namespace palvera {

namespace {

QString pictureSize(const QMap<QString, QString>& spec)
{
    auto width = spec.value(QStringLiteral("assetWidth"));
    auto height = spec.value(QStringLiteral("assetHeight"));
    return width.isEmpty() || height.isEmpty() ? QString() : width + QStringLiteral(" × ") + height;
}

QString durationOf(const QMap<QString, QString>& spec)
{
    bool isNumber = false;
    auto seconds = spec.value(QStringLiteral("assetDuration")).toDouble(&isNumber);
    return isNumber ? durationText(seconds) : QString();
}

} // namespace

std::optional<FiledFile> filedFile(const Deliverable& deliverable)
{
    if (!isFiled(deliverable))
        return {};
    const auto& spec = *deliverable.spec;
    auto object = spec.value(QStringLiteral("assetObject"));
    auto filename = spec.value(QStringLiteral("assetFilename"));
    auto bytes = deliverable.expectedBytes();
    QStringList details{bytes ? byteCountText(*bytes) : QString(), spec.value(QStringLiteral("assetType")),
                        durationOf(spec), pictureSize(spec)};
    details.removeAll(QString());
    return FiledFile{.object = object,
                     .name = filename.isEmpty() ? QObject::tr("The delivered file") : visibleText(filename),
                     .saveName =
                         filename.isEmpty() ? object.section(u'/', -1, -1, QString::SectionSkipEmpty) : filename,
                     .details = visibleText(details.join(QStringLiteral(" · ")))};
}

} // namespace palvera
