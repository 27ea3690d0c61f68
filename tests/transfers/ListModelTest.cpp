#include "transfers/TransfersListModel.h"

#include "support/QtPrinting.h"

#include <QDateTime>

#include <gmock/gmock.h>

namespace palvera {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Model = TransfersListModel;

struct ListModelTest : testing::Test {
    Model model;
    std::vector<std::string> rows;                   // what came and went
    std::vector<std::pair<int, QList<int>>> changes; // rows and their roles
    int resets = 0;

    ListModelTest()
    {
        using Abstract = QAbstractItemModel;
        auto note = [this](const char* what) {
            return [this, what](const QModelIndex&, int first, int last) {
                rows.push_back(what + std::to_string(first) + "-" + std::to_string(last));
            };
        };
        QObject::connect(&model, &Abstract::rowsInserted, note("+"));
        QObject::connect(&model, &Abstract::rowsRemoved, note("-"));
        QObject::connect(&model, &Abstract::modelReset, [this] { ++resets; });
        QObject::connect(&model, &Abstract::dataChanged,
                         [this](const QModelIndex& from, const QModelIndex& to, const QList<int>& roles) {
                             EXPECT_EQ(from, to);
                             changes.emplace_back(from.row(), roles);
                         });
    }

    QUuid append(const QString& name)
    {
        Item item{.id = QUuid::createUuid(), .target = TransferTarget::Deliverable{"o", "p", "d"}, .name = name};
        model.append(item);
        return item.id;
    }
    QVariant at(int row, int role) const { return model.data(model.index(row), role); }
    QStringList names() const
    {
        QStringList all;
        for (int row = 0; row < model.rowCount(); ++row)
            all.append(at(row, Model::nameRole).toString());
        return all;
    }
};

TEST_F(ListModelTest, rowsComeAndGoOneByOne)
{
    auto a = append("a");
    auto b = append("b");
    auto c = append("c");
    EXPECT_TRUE(model.remove(b));
    EXPECT_FALSE(model.remove(b));
    EXPECT_EQ(names(), QStringList({"a", "c"}));
    EXPECT_EQ(model.find(b), nullptr);
    EXPECT_EQ(model.find(c)->name, "c") << "it has moved up a row";
    EXPECT_TRUE(model.change(c, [](Item& item) { item.sent = 1; }));
    EXPECT_EQ(changes.back().first, 1);
    EXPECT_TRUE(model.remove(a));
    EXPECT_TRUE(model.remove(c));
    EXPECT_THAT(rows, ElementsAre("+0-0", "+1-1", "+2-2", "-1-1", "-0-0", "-0-0"));
    EXPECT_EQ(resets, 0);
}

TEST_F(ListModelTest, aChangeAnnouncesItsRowAndRolesOnly)
{
    append("a");
    auto b = append("b");
    struct Row {
        const char* what;
        std::function<void(Item&)> change;
        std::vector<int> roles;
    };
    const std::vector<Row> table{
        {"progress", [](Item& item) { item.sent = 5; }, {Model::sentRole}},
        {"total and rate",
         [](Item& item) {
             item.total = 9;
             item.rate = 2.5;
         },
         {Model::totalRole, Model::rateRole}},
        {"a sample", [](Item& item) { item.trace.add(3); }, {Model::samplesRole}},
        {"a retry",
         [](Item& item) {
             item.state = Item::Retrying{"no", Clock::WallTime(std::chrono::seconds(60))};
             item.rate = {};
         },
         {Model::stateRole, Model::messageRole, Model::retryAtRole, Model::inFlightRole, Model::rateRole}},
        {"a later retry",
         [](Item& item) { std::get<Item::Retrying>(item.state).until += std::chrono::seconds(1); },
         {Model::retryAtRole}},
        {"a failure",
         [](Item& item) { item.state = Item::Failed{"no"}; },
         {Model::stateRole, Model::retryAtRole, Model::inFlightRole}},
        {"a name", [](Item& item) { item.name = "c"; }, {Model::nameRole, Qt::DisplayRole}},
    };
    model.change(b, [](Item& item) { item.state = Item::Done{}; });
    for (const auto& [what, change, roles] : table) {
        SCOPED_TRACE(what);
        changes.clear();
        EXPECT_TRUE(model.change(b, change));
        ASSERT_EQ(changes.size(), 1u);
        EXPECT_EQ(changes[0].first, 1);
        EXPECT_THAT(changes[0].second, testing::UnorderedElementsAreArray(roles));
    }
}

TEST_F(ListModelTest, whatDiffersInNothingIsNotAnnounced)
{
    auto a = append("a");
    EXPECT_FALSE(model.change(a, [](Item& item) { item.sent = 0; }));
    EXPECT_FALSE(model.change(QUuid::createUuid(), [](Item& item) { item.sent = 1; }));
    EXPECT_THAT(changes, IsEmpty());
    EXPECT_TRUE(model.change(a, [](Item& item) { item.trace.every = 2; })) << "kept, though no role shows it";
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(ListModelTest, showsAnItem)
{
    Item item{.id = QUuid::createUuid(),
              .kind = Item::Kind::download,
              .target = TransferTarget::Deliverable{"org", "salt", "row"},
              .name = "a.mov",
              .file = "/films/a.mov",
              .label = "Picture",
              .titleName = "Salt",
              .state = Item::Retrying{"no", Clock::WallTime(std::chrono::seconds(60))},
              .sent = 3,
              .total = 6'000'000'000,
              .rate = 1.5};
    item.trace.add(4);
    model.append(item);
    const std::vector<std::pair<int, QVariant>> table{{Model::idRole, item.id},
                                                      {Model::kindRole, "download"},
                                                      {Model::nameRole, "a.mov"},
                                                      {Qt::DisplayRole, "a.mov"},
                                                      {Model::fileRole, "/films/a.mov"},
                                                      {Model::labelRole, "Picture"},
                                                      {Model::titleNameRole, "Salt"},
                                                      {Model::orgIdRole, "org"},
                                                      {Model::projectIdRole, "salt"},
                                                      {Model::deliverableIdRole, "row"},
                                                      {Model::stateRole, "retrying"},
                                                      {Model::messageRole, "no"},
                                                      {Model::sentRole, qint64(3)},
                                                      {Model::totalRole, qint64(6'000'000'000)},
                                                      {Model::rateRole, 1.5},
                                                      {Model::inFlightRole, true}};
    for (const auto& [role, value] : table)
        EXPECT_EQ(at(0, role), value) << role;
    EXPECT_EQ(at(0, Model::retryAtRole).toDateTime().toSecsSinceEpoch(), 60);
    EXPECT_EQ(at(0, Model::samplesRole).value<QList<double>>(), QList<double>{4});
    EXPECT_FALSE(model.data(model.index(1), Model::nameRole).isValid());
    EXPECT_EQ(model.rowCount(model.index(0)), 0) << "a list, not a tree";
}

} // namespace
} // namespace palvera
