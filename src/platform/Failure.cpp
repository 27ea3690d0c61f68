#include "platform/Failure.h"

#include <boost/asio/error.hpp>
#include <boost/system/system_error.hpp>

namespace palvera {

void throwCancelled()
{
    throw boost::system::system_error(boost::asio::error::operation_aborted);
}

bool isCancellation(const std::exception_ptr& failure)
{
    if (!failure)
        return false;
    try {
        std::rethrow_exception(failure);
    } catch (const boost::system::system_error& error) {
        return error.code() == boost::asio::error::operation_aborted;
    } catch (...) {
        return false;
    }
}

QString describe(const std::exception_ptr& failure)
{
    try {
        std::rethrow_exception(failure);
    } catch (const Failure& known) {
        return known.text();
    } catch (const std::exception& other) {
        return QString::fromUtf8(other.what());
    } catch (...) {
        return QStringLiteral("An unknown failure.");
    }
}

} // namespace palvera
