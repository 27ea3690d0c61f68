#include "screens/deliverables/DeliverableCard.h"

#include "files/Quantities.h"
#include "screens/Wording.h"
#include "text/VisibleText.h"

#include <QObject>
#include <QStringList>

namespace palvera {

namespace {

QString searchTextOf(const Deliverable& deliverable)
{
    auto filename = deliverable.spec ? deliverable.spec->value(QStringLiteral("assetFilename")) : QString();
    return QStringList{deliverable.label, deliverable.contextLine().value_or(QString()), filename, deliverable.kind}
        .join(u' ')
        .toLower();
}

QString detailsOf(const Deliverable& deliverable)
{
    QStringList details;
    if (auto context = deliverable.contextLine())
        details.append(*context);
    if (deliverable.language && !deliverable.language->isEmpty())
        details.append(languageName(*deliverable.language));
    if (auto bytes = deliverable.expectedBytes())
        details.append(byteCountText(*bytes));
    return visibleText(details.join(QStringLiteral(" · ")));
}

} // namespace

QString titleOf(const Deliverable& deliverable)
{
    const auto label = visibleText(deliverable.label);
    return label.trimmed().isEmpty() ? visibleText(humanised(deliverable.kind)) : label;
}

QString noLongerThere(const Deliverable& deliverable)
{
    return QObject::tr("The platform no longer has “%1”. Nothing was sent.").arg(titleOf(deliverable));
}

bool isFiled(const Deliverable& deliverable)
{
    return deliverable.spec && deliverable.spec->contains(QStringLiteral("assetObject"));
}

DeliverableCard::DeliverableCard(Deliverable row)
    : deliverable(std::move(row)),
      searchText(searchTextOf(deliverable)),
      title(titleOf(deliverable)),
      details(detailsOf(deliverable)),
      isFiled(palvera::isFiled(deliverable))
{}

} // namespace palvera
