#include "screens/RowChanges.h"

#include <QHash>

#include <algorithm>
#include <optional>

namespace palvera {

namespace {

/// Makes runs of indexes that are given in rising order.
class Runs {
public:
    void add(int index)
    {
        if (!m_runs.empty() && m_runs.back().first + m_runs.back().count == index)
            ++m_runs.back().count;
        else
            m_runs.push_back({.kind = RowChange::Kind::insert, .first = index, .count = 1});
    }
    const std::vector<RowChange>& runs() const { return m_runs; }

private:
    std::vector<RowChange> m_runs;
};

/// Replaces what lies between what both begin with and what both end with.
std::vector<RowChange> replacement(const QStringList& from, const QStringList& to)
{
    auto [fromDiffers, toDiffers] = std::ranges::mismatch(from, to);
    auto begin = int(fromDiffers - from.begin());
    auto shorter = int(std::min(from.size(), to.size()));
    int alike = 0; // at the end
    while (alike < shorter - begin && from[from.size() - 1 - alike] == to[to.size() - 1 - alike])
        ++alike;
    auto common = shorter - alike - begin;
    auto surplus = int(from.size() - to.size());
    std::vector<RowChange> changes;
    if (common > 0)
        changes.push_back({.kind = RowChange::Kind::replace, .first = begin, .count = common});
    if (surplus > 0)
        changes.push_back({.kind = RowChange::Kind::remove, .first = begin + common, .count = surplus});
    if (surplus < 0)
        changes.push_back({.kind = RowChange::Kind::insert, .first = begin + common, .count = -surplus});
    return changes;
}

/// The runs of `more` without which it is `fewer`; nothing where no runs do that.
std::optional<Runs> runsWithout(const QStringList& more, const QStringList& fewer)
{
    Runs runs;
    int next = 0;
    for (int i = 0; i < more.size(); ++i) {
        if (next < fewer.size() && more[i] == fewer[next])
            ++next;
        else
            runs.add(i);
    }
    return next == fewer.size() ? std::optional(runs) : std::nullopt;
}

struct Difference {
    Runs removed;
    Runs inserted;
};

Difference difference(const QStringList& from, const QStringList& to)
{
    // A search that narrows or widens comes this way, key by key.
    if (auto removed = runsWithout(from, to))
        return {.removed = *std::move(removed), .inserted = {}};
    if (auto inserted = runsWithout(to, from))
        return {.removed = {}, .inserted = *std::move(inserted)};

    QHash<QString, std::vector<int>> places; // in `to`, the last one first
    for (int i = int(to.size()) - 1; i >= 0; --i)
        places[to[i]].push_back(i);
    Difference found;
    int next = 0; // the first of `to` that no row stands for
    for (int i = 0; i < from.size(); ++i) {
        auto& candidates = places[from[i]];
        while (!candidates.empty() && candidates.back() < next)
            candidates.pop_back();
        if (candidates.empty()) {
            found.removed.add(i);
            continue;
        }
        for (; next < candidates.back(); ++next)
            found.inserted.add(next);
        ++next;
    }
    for (; next < to.size(); ++next)
        found.inserted.add(next);
    return found;
}

constexpr std::size_t mostRuns = 64;

} // namespace

std::vector<RowChange> rowChanges(const QStringList& from, const QStringList& to)
{
    auto [removed, inserted] = difference(from, to);
    if (removed.runs().size() + inserted.runs().size() > mostRuns)
        return replacement(from, to);
    std::vector<RowChange> changes;
    for (auto run = removed.runs().rbegin(); run != removed.runs().rend(); ++run)
        changes.push_back({.kind = RowChange::Kind::remove, .first = run->first, .count = run->count});
    changes.insert(changes.end(), inserted.runs().begin(), inserted.runs().end());
    return changes;
}

} // namespace palvera
