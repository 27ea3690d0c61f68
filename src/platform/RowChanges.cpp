#include "platform/RowChanges.h"

#include <QHash>

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

    std::vector<RowChange> changes;
    for (auto run = removed.runs().rbegin(); run != removed.runs().rend(); ++run)
        changes.push_back({.kind = RowChange::Kind::remove, .first = run->first, .count = run->count});
    changes.insert(changes.end(), inserted.runs().begin(), inserted.runs().end());
    return changes;
}

} // namespace palvera
