#include "async/Failure.h"

#include "support/QtPrinting.h"

#include <boost/system/system_error.hpp>

#include <stdexcept>
#include <system_error>

namespace palvera {
namespace {

TEST(FailureTest, isDescribedInWordsThatCanBeShown)
{
    const auto said = [](const auto& failure) { return describe(std::make_exception_ptr(failure)); };
    EXPECT_EQ(said(Failure("It is\r\nlate\x1b[0m.\n")), "It is \nlate[0m.");
    EXPECT_EQ(said(std::runtime_error("late")), "late");
    EXPECT_EQ(said(std::bad_alloc()), "There is not enough memory.");
    EXPECT_EQ(said(std::system_error(EAGAIN, std::generic_category())),
              "The system gives the program no more threads.");
    EXPECT_EQ(said(boost::system::system_error(EMFILE, boost::system::generic_category())),
              "The system lets the program open no more files.");
    for (const char* nothing : {"", " \n", "\u200b"})
        EXPECT_EQ(said(Failure(nothing)), "It did not work, and nobody said why.");
    EXPECT_EQ(said(7), "It did not work, and nobody said why.");
    EXPECT_EQ(said(Failure(QString(100'000, 'x'))).size(), 2000);
}

} // namespace
} // namespace palvera
