#include "update/UpdateRules.h"

#include "files/Quantities.h"
#include "http/HttpAddress.h"
#include "service/JsonReader.h"
#include "text/VisibleText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>
#include <QObject>

namespace palvera {

namespace {

constexpr qsizetype longestVersion = 50;
constexpr qsizetype longestNotes = 1'000;

template <class... F>
struct Cases : F... {
    using F::operator()...;
};

QString shown(const QString& fromFeed)
{
    return visibleText(fromFeed, Lines::one, longestVersion);
}

QString momentText(Clock::WallTime moment)
{
    return QLocale().toString(QDateTime::fromSecsSinceEpoch(Clock::WallTime::clock::to_time_t(moment)),
                              QLocale::ShortFormat);
}

QString offer(const Updater::Release& release)
{
    const auto text =
        QObject::tr("Palvera %1, build %2, is available.").arg(shown(release.version), shown(release.build));
    const auto notes = visibleText(release.notes.value_or(QString()), Lines::several, longestNotes);
    return notes.isEmpty() ? text : text + QStringLiteral("\n\n") + notes;
}

} // namespace

std::optional<Updater::Release> decodeRelease(const QByteArray& body)
{
    try {
        const auto object = json::parseObject(body);
        const JsonReader reader(object);
        return Updater::Release{.version = reader.required<QString>(QStringLiteral("version")),
                                .build = reader.required<QString>(QStringLiteral("build")),
                                .url = reader.required<QString>(QStringLiteral("url")),
                                .notes = reader.optional<QString>(QStringLiteral("notes"))};
    } catch (const DecodingError&) {
        return {};
    }
}

bool isNewer(const QString& offered, const QString& running)
{
    const auto number = json::parseInteger(offered);
    return number && *number > json::parseInteger(running).value_or(0);
}

QString plainNumber(const QString& build)
{
    return QString::number(json::parseInteger(build).value_or(0));
}

bool isSameBuild(const QString& one, const QString& other)
{
    const auto number = json::parseInteger(one);
    return number && number == json::parseInteger(other);
}

QString versionText(const QString& version, const QString& build)
{
    const auto orZero = [](const QString& text) { return text.isEmpty() ? QStringLiteral("0") : text; };
    return QStringLiteral("%1 (%2)").arg(orZero(version), orZero(build));
}

QByteArray feedBeside(const QByteArray& origin)
{
    return origin + "/updates/latest.json";
}

bool isAllowedAddress(const QByteArray& url, const QByteArray& feed)
{
    const auto address = parseHttpAddress(url);
    const auto isHere = [](const std::optional<HttpAddress>& where) { return where && where->loopback; };
    return address && (address->encrypted || (address->loopback && isHere(parseHttpAddress(feed))));
}

QString imageName(const QString& version)
{
    return QStringLiteral("Palvera-%1.dmg").arg(shown(version).replace(u'/', u'_'));
}

PillLook pillFor(const Updater::Release& release, const Updater::Phase& phase)
{
    const auto install = [&] {
        return PillLook{
            .symbol = QStringLiteral("arrow.down.circle"), .text = QObject::tr("Install"), .tooltip = offer(release)};
    };
    const auto spinner = [&](const char* text) {
        return PillLook{.text = QObject::tr(text), .tooltip = offer(release), .isBusy = true};
    };
    return std::visit(
        Cases{[&](const Updater::Idle&) { return install(); }, [&](const Updater::Available&) { return install(); },
              [&](const Updater::Downloading& it) {
                  const int percent = int(it.fraction * 100);
                  return PillLook{.text = percentText(percent), .percent = percent, .tooltip = offer(release)};
              },
              [&](const Updater::Preparing&) { return spinner(QT_TRANSLATE_NOOP("QObject", "Checking")); },
              [&](const Updater::Ready&) {
                  return PillLook{.symbol = QStringLiteral("arrow.clockwise"),
                                  .text = QObject::tr("Restart"),
                                  .tooltip = QObject::tr("Palvera %1 is ready. Restart to use it; you stay signed in.")
                                                 .arg(shown(release.version))};
              },
              [&](const Updater::Restarting&) { return spinner(QT_TRANSLATE_NOOP("QObject", "Restarting")); },
              [&](const Updater::Failed& it) {
                  return PillLook{.symbol = QStringLiteral("exclamationmark.triangle.fill"),
                                  .text = QObject::tr("Retry update"),
                                  .tooltip = it.message};
              }},
        phase);
}

QString restartQuestion(int moving)
{
    return moving == 1 ? QObject::tr("A transfer is still moving. Uploads stop and wait under Interrupted, and pick up "
                                     "from the part they reached.")
                       : QObject::tr("%n transfers are still moving. Uploads stop and wait under Interrupted, and pick "
                                     "up from the part they reached.",
                                     nullptr, moving);
}

QString lastCheckText(const std::optional<Clock::WallTime>& lastChecked, bool isFeedSilent)
{
    if (!lastChecked)
        return isFeedSilent ? QObject::tr("None yet: the update feed does not answer.") : QObject::tr("None yet");
    return isFeedSilent ? QObject::tr("%1; the update feed does not answer.").arg(momentText(*lastChecked))
                        : momentText(*lastChecked);
}

QString failureText(const Updater::Note& failure)
{
    return QStringLiteral("%1: %2").arg(momentText(failure.when), failure.text);
}

Updater::Alert alertAfter(bool isRead, const QString& versionText)
{
    if (isRead)
        return {.kind = Updater::Alert::Kind::upToDate,
                .title = QObject::tr("Palvera is up to date"),
                .detail = QObject::tr("You have %1.").arg(versionText)};
    return {.kind = Updater::Alert::Kind::unknown,
            .title = QObject::tr("Could not check for updates"),
            .detail = QObject::tr("The update feed did not answer. Check your connection and try again.")};
}

} // namespace palvera
