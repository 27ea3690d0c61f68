#include "app/RootView.h"

#include "files/Preferences.h"
#include "session/PasskeySignIn.h"
#include "session/Session.h"
#include "tests/support/FakeInstaller.h"
#include "tests/support/FakePasskeyService.h"
#include "tests/transfers/TransfersHarness.h"

namespace palvera {
namespace {

using Page = RootView::Page;

/// Somebody is signed in who has two organisations, both with the same project.
struct RootViewTest : TransfersTest {
    Preferences preferences{disk.filePath("preferences.conf")};
    API service{{.client = client, .executor = world.executor(), .clearCookies = [] {}}};
    Session session{{world.executor(), world.executor(), world.clock, service, preferences, network}};
    BrowserSignIn web{{.clock = world.clock, .show = [](const QByteArray&) { return false; }}};
    FakePasskeyService keys;
    PasskeySignIn passkey{service, keys};
    FakeWorkspace workspace;
    Updater updater{{.main = world.executor(),
                     .disk = world.executor(),
                     .clock = world.clock,
                     .http = client,
                     .workspace = workspace}};
    RootView root{{.signIn = {.main = world.executor(),
                              .clock = world.clock,
                              .session = session,
                              .network = network,
                              .doors = {.api = service, .web = web, .passkey = passkey}},
                   .background = world.executor(),
                   .transfers = *model,
                   .preferences = preferences,
                   .isDoorAsked = [] { return false; },
                   .updater = updater,
                   .startRemark = "It is an older build."}};

    RootViewTest()
    {
        client.handler = [](const HttpRequest&) {
            return HttpResponse{.status = 200, .body = R"({"user":{"id":"u1","email":"ada@northlight.example"},
                "orgs":[{"id":"north","name":"North"},{"id":"south","name":"South"}],
                "projects":[{"id":"salt","name":"Salt"}], "deliverables":[{"id":"row-1","label":"Picture"}]})"};
        };
        world.run(session.start());
        open("North");
    }
    ~RootViewTest() override
    {
        world.run(root.close());
        world.run(model->suspend());
    }

    void open(const QString& name)
    {
        session.choose({.id = name.toLower(), .name = name});
        world.settle();
    }
    void goToDeliverable()
    {
        root.openProject(1);
        world.settle();
        root.openDeliverable(0);
        EXPECT_EQ(root.page(), Page::Deliverable);
    }
    /// How often the deliverables were asked for while that time passed.
    int loadsDuring(std::chrono::seconds time)
    {
        auto before = client.requests().size();
        world.pass(time);
        return int(std::count_if(client.requests().begin() + std::ptrdiff_t(before), client.requests().end(),
                                 [](const HttpRequest& request) { return request.url.endsWith("/deliverables"); }));
    }
};

TEST_F(RootViewTest, anotherOrganisationOpensAtItsProjectsHoweverTheLastOneWasLeft)
{
    const std::function<void()> ways[] = {
        [&] { open("South"); },
        [&] {
            root.chooseAnotherClient();
            EXPECT_EQ(root.key(), "orgs");
            open("North");
        },
        [&] {
            root.signOut();
            world.settle();
            EXPECT_EQ(root.key(), "login");
            world.run(session.refresh());
            open("South");
        },
    };
    for (const auto& leave : ways) {
        goToDeliverable();
        EXPECT_EQ(loadsDuring(31s), 1) << "the list is kept up to date";
        leave();
        EXPECT_EQ(root.page(), Page::Projects);
        EXPECT_EQ(root.windowTitle(), session.org()->name + " – Palvera");
        EXPECT_EQ(root.projects()->orgName(), session.org()->name);
        EXPECT_EQ(loadsDuring(100s), 0) << "what is left is asked for no more";
    }
}

TEST_F(RootViewTest, aSignInThatHasExpiredLeadsBackToThePage)
{
    const auto known = client.handler;
    const std::function<void()> pages[] = {[] {}, [&] { root.openProject(0); }, [&] { goToDeliverable(); }};
    for (const auto& go : pages) {
        go();
        world.settle();
        const auto page = root.page();
        root.login()->setEmail("ada@northlight.example"); // of an earlier sign-in
        root.login()->setPassword("reel-one");
        client.handler = [](const HttpRequest&) { return HttpResponse{.status = 401}; };
        root.projects()->load();
        world.settle();
        EXPECT_EQ(root.key(), "login");
        EXPECT_EQ(root.login()->notice(), "Your sign-in has expired. Sign in again.");
        EXPECT_EQ(root.login()->email() + root.login()->password(), "") << "it begins afresh";
        EXPECT_EQ(root.windowTitle(), "Palvera");
        root.login()->setPassword("reel-one");
        client.handler = known;
        const auto before = client.requests().size();
        world.run(session.refresh());
        world.settle();
        EXPECT_EQ(root.key(), "org:north");
        EXPECT_EQ(root.page(), page);
        EXPECT_EQ(root.login()->password(), "") << "nor does it stay when the screen is left";
        EXPECT_EQ(root.projects()->error(), "");
        EXPECT_GT(client.requests().size(), before + 2) << "the page is brought up to date";
    }
    root.signOut();
    world.settle();
    EXPECT_EQ(root.login()->notice(), "");
    EXPECT_EQ(root.page(), Page::Projects);
}

TEST_F(RootViewTest, comingBackToTheProgramRefreshesWhatIsOpen)
{
    goToDeliverable();
    for (int loads : {1, 1, 0, 0}) { // the deliverable, its list, the projects, the organisations
        root.becomeActive();
        EXPECT_EQ(loadsDuring(1s), loads);
        root.back();
    }
    EXPECT_EQ(root.key(), "orgs");
}

TEST_F(RootViewTest, whatHasBeenReadOrFailedForOneOrganisationIsNotSaidOfTheNext)
{
    EXPECT_EQ(root.remark(), "It is an older build.");
    root.dismissRemark();
    EXPECT_EQ(root.remark(), "");
    client.answer(500);
    root.projects()->load();
    world.settle();
    EXPECT_NE(root.projects()->error(), "");
    EXPECT_EQ(root.projects()->rowCount(), 2) << "a failure leaves what is there";
    client.latency = 1s;
    open("South");
    EXPECT_TRUE(root.projects()->isLoading());
    EXPECT_EQ(root.projects()->error(), "");
    EXPECT_EQ(root.projects()->rowCount(), 1) << "the assets alone";
}

} // namespace
} // namespace palvera
