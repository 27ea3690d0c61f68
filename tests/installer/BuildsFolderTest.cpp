#include "installer/BuildsFolder.h"

#include "tests/installer/Support.h"

#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/file.h>

namespace palvera::installer {
namespace {

class BuildsFolderTest : public testing::Test {
protected:
    BuildsFolderTest()
    {
        ::umask(022);
        ::chmod(QFile::encodeName(m_root).constData(), 0755);
    }

    void makeBuild(qint64 number) { makeFile(manifestOf(number), QByteArray::number(number)); }
    void makeCurrent(const QByteArray& target)
    {
        QFile::remove(m_root + "/current");
        EXPECT_EQ(::symlink(target.constData(), QFile::encodeName(m_root + "/current").constData()), 0);
    }
    QString manifestOf(qint64 number) const { return m_root + "/builds/" + QString::number(number) + "/manifest.json"; }
    QString current() const { return QFile::symLinkTarget(m_root + "/current").remove(m_root + "/builds/"); }

    std::optional<Refusal> opening() const
    {
        return refusalOf([&] { BuildsFolder(m_root).current(); });
    }

    QTemporaryDir m_folder;
    const QString m_root = m_folder.path();
};

TEST_F(BuildsFolderTest, keepsWhatCanBeGoneBackToAndWhatRuns)
{
    using Numbers = std::vector<qint64>;
    const std::tuple<Numbers, qint64, qint64, Numbers, QStringList> cases[]{
        // the builds, the current one and the next, which of them run, and what is kept
        {{57}, 57, 57, {}, {"57"}},
        {{56, 57, 58}, 57, 58, {56}, {"56", "57", "58"}},
        {{9, 57, 58, 100}, 57, 100, {}, {"100", "57"}},
        {{9, 57, 58, 100}, 58, 58, {9}, {"100", "57", "58", "9"}},
        {{1, 2, 3}, 4, 3, {}, {"2", "3"}},
        {{3}, 0, 3, {}, {"3"}}};
    for (const auto& [builds, now, next, running, kept] : cases) {
        QDir(m_root + "/builds").removeRecursively();
        for (const auto number : builds)
            makeBuild(number);
        QFile::remove(m_root + "/current");
        if (now > 0)
            makeCurrent("builds/" + QByteArray::number(now));
        std::vector<FileDescriptor> locks;
        for (const auto number : running) {
            locks.emplace_back(::open(QFile::encodeName(manifestOf(number)).constData(), O_RDONLY));
            ASSERT_EQ(::flock(locks.back().number(), LOCK_SH), 0);
        }
        {
            BuildsFolder folder(m_root);
            if (next != now)
                folder.switchTo(next);
            folder.sweep();
        }
        EXPECT_EQ(namesIn(m_root + "/builds"), kept);
        EXPECT_EQ(current(), QString::number(next));
        EXPECT_EQ(namesIn(m_root + "/.work"), QStringList{"lock"});
    }
}

TEST_F(BuildsFolderTest, takesNoOtherLinkForItsOwn)
{
    makeBuild(57);
    EXPECT_EQ(opening(), std::nullopt) << "a copy without any build yet";
    for (const QByteArray target :
         {"builds/", "builds/057", "builds/57/", "builds/../57", "/opt/palvera/builds/57", "57",
          "builds/57000000000000000000000000000000000000000000000000000000000000000000"}) {
        makeCurrent(target);
        EXPECT_EQ(opening(), Refusal::foreignCopy) << target.constData();
    }
    QFile::remove(m_root + "/current");
    QDir(m_root).mkpath("current");
    EXPECT_EQ(opening(), Refusal::foreignCopy) << "a folder";
}

TEST_F(BuildsFolderTest, worksNowhereThatOthersMayWrite)
{
    for (const auto* name : {"", "/builds", "/.work"}) {
        for (const mode_t mode : {0775, 0757}) {
            const auto path = QFile::encodeName(m_root + name);
            QDir().mkpath(m_root + name);
            ::chmod(path.constData(), mode);
            EXPECT_EQ(opening(), Refusal::notOurs) << name;
            ::chmod(path.constData(), 0755);
        }
    }
    EXPECT_EQ(refusalOf([&] { BuildsFolder folder(m_root + "/missing"); }), Refusal::notOurs);
    QDir(m_root + "/builds").removeRecursively();
    EXPECT_EQ(::symlink("/tmp", QFile::encodeName(m_root + "/builds").constData()), 0);
    EXPECT_EQ(opening(), Refusal::notStored) << "nor where a link leads";
}

TEST_F(BuildsFolderTest, isOneJobsAtATime)
{
    const BuildsFolder folder(m_root);
    EXPECT_EQ(opening(), Refusal::busy);
}

TEST_F(BuildsFolderTest, putsABuildInThePlaceOfOneThatWaits)
{
    makeBuild(58);
    BuildsFolder folder(m_root);
    folder.makeBuild();
    makeFile(m_root + "/.work/new/manifest.json", "another 58");
    folder.adopt(58);
    EXPECT_EQ(folder.manifestOf(58), "another 58");
    EXPECT_EQ(folder.newest(), 58);
    EXPECT_EQ(refusalOf([&] { folder.requireRoom(1LL << 60); }), Refusal::noRoom);
    EXPECT_EQ(folder.manifestOf(59), QByteArray());
}

} // namespace
} // namespace palvera::installer
