#include "async/Failure.h"

#include <boost/asio/error.hpp>
#include <boost/system/system_error.hpp>

namespace palvera {

void throwCancelled()
{
    throw boost::system::system_error(boost::asio::error::operation_aborted);
}

bool isCancellation(const std::exception_ptr& failure)
{
    auto error = failureAs<boost::system::system_error>(failure);
    return error && error->code() == boost::asio::error::operation_aborted;
}

QString describe(const std::exception_ptr& failure)
{
    if (auto known = failureAs<Failure>(failure))
        return known->text();
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& other) {
        return QString::fromUtf8(other.what());
    } catch (...) {
        return QStringLiteral("An unknown failure.");
    }
}

} // namespace palvera
