#include "transfer/Pace.h"

#include <algorithm>

namespace palvera {

using namespace std::chrono_literals;

void PaceMeter::begin(Clock::Moment now, qint64 bytes)
{
    m_began = now;
    restart(now, bytes);
}

std::optional<PaceMeter::Pace> PaceMeter::pace(Clock::Moment now, qint64 bytes)
{
    if (!m_began)
        return {};
    if (now - m_later.at >= 5s)
        m_earlier = std::exchange(m_later, {.at = now, .bytes = bytes});
    if (now - m_earlier.at < 1s)
        return {};
    return Pace{.bytesPerSecond = double(bytes - m_earlier.bytes) / secondsBetween(m_earlier.at, now),
                .age = secondsBetween(*m_began, now)};
}

std::optional<double> medianPace(std::vector<double> paces)
{
    if (paces.empty())
        return {};
    const auto middle = paces.begin() + std::ptrdiff_t(paces.size() / 2);
    std::ranges::nth_element(paces, middle);
    return *middle > 0 ? std::optional(*middle) : std::nullopt;
}

namespace {

constexpr double tooMany = 3; // pieces

}

bool crawls(qint64 left, const PaceMeter::Pace& pace, qint64 whole, double usual)
{
    return pace.age * usual >= double(whole) && double(left) * usual > tooMany * double(whole) * pace.bytesPerSecond;
}

bool isOverdue(std::chrono::nanoseconds waited, qint64 whole, double usual)
{
    return waited >= 10s && std::chrono::duration<double>(waited).count() * usual > tooMany * double(whole);
}

} // namespace palvera
