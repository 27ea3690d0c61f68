#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <chrono>

namespace palvera {

/// The cookies of `contents` that are still good at `now`, one line each as libcurl writes and reads them (seven fields
/// parted by tabs). Lines that are no cookies, that have expired, and session cookies are left out, so any bytes do.
QByteArrayList readCookies(const QByteArray& contents, std::chrono::system_clock::time_point now);

/// What readCookies reads back; empty when there is nothing to keep.
QByteArray writeCookies(const QByteArrayList& cookies);

} // namespace palvera
