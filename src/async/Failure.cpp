#include "async/Failure.h"

#include "text/VisibleText.h"

#include <QObject>

#include <boost/asio/error.hpp>
#include <boost/system/system_error.hpp>

#include <new>
#include <system_error>

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

namespace {

/// What the system refuses for want of something, in a sentence; else its own words.
QString wordsFor(const std::error_code& code, const char* what)
{
    if (code == std::errc::resource_unavailable_try_again)
        return QObject::tr("The system gives the program no more threads.");
    if (code == std::errc::too_many_files_open || code == std::errc::too_many_files_open_in_system)
        return QObject::tr("The system lets the program open no more files.");
    if (code == std::errc::not_enough_memory)
        return QObject::tr("There is not enough memory.");
    return visibleText(QString::fromUtf8(what), Lines::several);
}

} // namespace

QString describe(const std::exception_ptr& failure)
{
    QString text;
    try {
        std::rethrow_exception(failure);
    } catch (const Failure& known) {
        text = visibleText(known.text(), Lines::several).trimmed();
    } catch (const std::bad_alloc&) {
        text = QObject::tr("There is not enough memory.");
    } catch (const std::system_error& refusal) {
        text = wordsFor(refusal.code(), refusal.what());
    } catch (const boost::system::system_error& refusal) {
        text = wordsFor(refusal.code(), refusal.what());
    } catch (const std::exception& other) {
        text = visibleText(QString::fromUtf8(other.what()), Lines::several);
    } catch (...) { // NOLINT(bugprone-empty-catch)
    }
    return text.isEmpty() ? QObject::tr("It did not work, and nobody said why.") : text;
}

} // namespace palvera
