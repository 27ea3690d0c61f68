#include "async/Failure.h"

#include "text/VisibleText.h"

#include <boost/asio/error.hpp>
#include <boost/system/system_error.hpp>

#include <new>

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
    QString text;
    try {
        std::rethrow_exception(failure);
    } catch (const Failure& known) {
        text = visibleText(known.text(), Lines::several).trimmed();
    } catch (const std::bad_alloc&) {
        text = QStringLiteral("There is not enough memory.");
    } catch (const std::exception& other) {
        text = visibleText(QString::fromUtf8(other.what()), Lines::several);
    } catch (...) { // NOLINT(bugprone-empty-catch)
    }
    return text.isEmpty() ? QStringLiteral("It did not work, and nobody said why.") : text;
}

} // namespace palvera
