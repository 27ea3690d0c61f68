#include "service/Organisations.h"
#include "service/JsonReader.h"
#include "support/Json.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

TEST(OrganisationsTest, decodeAndEncodeTheSameMembers)
{
    for (const char* text : {R"({"id":"o","name":"N"})", R"({"id":"o","name":"N","slug":"s"})"})
        EXPECT_EQ(decoded<Org>(text).toJson(), jsonObject(text));
    for (const char* text : {R"({"id":"p","name":"N"})", R"({"id":"p","name":"N","reference":"r","status":"open"})"})
        EXPECT_EQ(decoded<Project>(text).toJson(), jsonObject(text));
    EXPECT_EQ(decoded<Org>(R"({"id":"o","name":"N","slug":null})"), (Org{.id = "o", .name = "N"}));
}

TEST(OrganisationsTest, oneBadRowFailsTheList)
{
    EXPECT_EQ(decoded<Orgs>(R"({"orgs":[{"id":"o","name":"N"}]})").orgs, QList<Org>({{.id = "o", .name = "N"}}));
    EXPECT_THROW(decoded<Orgs>(R"({"orgs":[{"id":"o","name":"N"},{"id":"o"}]})"), DecodingError);
    EXPECT_THROW(decoded<Orgs>(R"({"orgs":[{"id":"o","name":"N","slug":1}]})"), DecodingError);
    EXPECT_THROW(decoded<Projects>(R"({"projects":[{"id":1,"name":"N"}]})"), DecodingError);
    EXPECT_THROW(decoded<Projects>(R"({"projects":null})"), DecodingError);
}

TEST(OrganisationsTest, equalOnesHashAlike)
{
    const Org org{.id = "o", .name = "N"};
    EXPECT_EQ(qHash(org, 1), qHash(Org{org}, 1));
    EXPECT_NE(qHash(org, 1), qHash(Org{.id = "o", .name = "N", .slug = ""}, 1));
    const Project project{.id = "p", .name = "N", .status = "open"};
    EXPECT_EQ(qHash(project, 1), qHash(Project{project}, 1));
    EXPECT_NE(qHash(project, 1), qHash(Project{.id = "p", .name = "N", .reference = "open"}, 1));
}

} // namespace
} // namespace palvera
