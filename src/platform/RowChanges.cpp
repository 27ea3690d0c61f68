#include "platform/RowChanges.h"

#include <QHash>

#include <algorithm>

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

/// One removal and one insertion between what both begin with and what both end with.
std::vector<RowChange> replacement(const QStringList& from, const QStringList& to)
{
    auto [fromDiffers, toDiffers] = std::ranges::mismatch(from, to);
    auto begin = int(fromDiffers - from.begin());
    auto shorter = int(std::min(from.size(), to.size()));
    int alike = 0; // at the end
    while (alike < shorter - begin && from[from.size() - 1 - alike] == to[to.size() - 1 - alike])
        ++alike;
    std::vector<RowChange> changes{
        {.kind = RowChange::Kind::remove, .first = begin, .count = int(from.size()) - alike - begin},
        {.kind = RowChange::Kind::insert, .first = begin, .count = int(to.size()) - alike - begin}};
    std::erase_if(changes, [](const RowChange& change) { return change.count == 0; });
    return changes;
}

constexpr std::size_t mostRuns = 64;

} // namespace

std::vector<RowChange> rowChanges(const QStringList& from, const QStringList& to)
{
    QHash<QString, std::vector<int>> places; // in `to`, the last one first
    for (int i = int(to.size()) - 1; i >= 0; --i)
        places[to[i]].push_back(i);

    Runs removed, inserted;
    int next = 0; // the first of `to` that no row stands for
    for (int i = 0; i < from.size(); ++i) {
        auto& found = places[from[i]];
        while (!found.empty() && found.back() < next)
            found.pop_back();
        if (found.empty()) {
            removed.add(i);
            continue;
        }
        for (; next < found.back(); ++next)
            inserted.add(next);
        ++next;
    }
    for (; next < to.size(); ++next)
        inserted.add(next);

    if (removed.runs().size() + inserted.runs().size() > mostRuns)
        return replacement(from, to);
    std::vector<RowChange> changes;
    for (auto run = removed.runs().rbegin(); run != removed.runs().rend(); ++run)
        changes.push_back({.kind = RowChange::Kind::remove, .first = run->first, .count = run->count});
    changes.insert(changes.end(), inserted.runs().begin(), inserted.runs().end());
    return changes;
}

} // namespace palvera
