#include "cli/ExitCode.h"

#include "files/FileError.h"
#include "http/TransportError.h"
#include "service/APIError.h"
#include "service/JsonReader.h"

#include <gmock/gmock.h>

namespace palvera::cli {

namespace {

template <class Error>
std::exception_ptr failure(Error error)
{
    return std::make_exception_ptr(std::move(error));
}

std::exception_ptr cancellation()
{
    try {
        throwCancelled();
    } catch (...) {
        return std::current_exception();
    }
}

TEST(ExitCode, tellsFailuresApart)
{
    const auto text = QStringLiteral("no");
    EXPECT_EQ(exitCodeFor(nullptr), ExitCode::done);
    EXPECT_EQ(exitCodeFor(cancellation()), ExitCode::interrupted);
    EXPECT_EQ(exitCodeFor(failure(APIError(401, text))), ExitCode::notSignedIn);
    EXPECT_EQ(exitCodeFor(failure(APIError(403, text))), ExitCode::failed);
    EXPECT_EQ(exitCodeFor(failure(APIError(0, text))), ExitCode::failed);
    EXPECT_EQ(exitCodeFor(failure(APIError(409, text, QStringLiteral("delivery_doubt")))),
              ExitCode::confirmationNeeded);
    EXPECT_EQ(exitCodeFor(failure(APIError(409, text, QStringLiteral("delivery")))), ExitCode::failed);
    EXPECT_EQ(exitCodeFor(failure(TransportError(TransportError::Kind::connect, text))), ExitCode::unreachable);
    EXPECT_EQ(exitCodeFor(failure(FileError(text))), ExitCode::failed);
    EXPECT_EQ(exitCodeFor(failure(DecodingError({}, text))), ExitCode::failed);
    EXPECT_EQ(exitCodeFor(failure(std::runtime_error("no"))), ExitCode::failed);
}

TEST(ExitCode, ofSeveralFilesIsTheWorst)
{
    EXPECT_EQ(worse(ExitCode::done, ExitCode::done), ExitCode::done);
    EXPECT_EQ(worse(ExitCode::done, ExitCode::confirmationNeeded), ExitCode::confirmationNeeded);
    EXPECT_EQ(worse(ExitCode::failed, ExitCode::confirmationNeeded), ExitCode::failed);
    EXPECT_EQ(worse(ExitCode::failed, ExitCode::notSignedIn), ExitCode::notSignedIn);
    EXPECT_EQ(worse(ExitCode::unreachable, ExitCode::notSignedIn), ExitCode::unreachable);
    EXPECT_EQ(worse(ExitCode::interrupted, ExitCode::unreachable), ExitCode::interrupted);
}

TEST(ExitCode, bringsAdviceWhereTheFailureItselfHasNone)
{
    EXPECT_TRUE(adviceFor(ExitCode::notSignedIn).contains(u"sign-in"));
    EXPECT_TRUE(adviceFor(ExitCode::failed).isEmpty());
}

} // namespace

} // namespace palvera::cli
