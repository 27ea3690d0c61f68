#include "transfer/Trouble.h"

#include <QObject>

namespace palvera {

std::optional<Trouble> troubleOfSilence(std::chrono::nanoseconds silence)
{
    using namespace std::chrono_literals;
    if (silence < 10s)
        return {};
    constexpr qint64 step = 5;
    const auto seconds = std::chrono::floor<std::chrono::seconds>(silence).count() / step * step;
    return Trouble{.reason = QObject::tr("No answer from storage for %1 seconds.").arg(seconds)};
}

} // namespace palvera
