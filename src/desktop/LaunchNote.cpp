#include "desktop/LaunchNote.h"

#include <QFile>

#include <utility>

namespace palvera {

namespace {

QByteArray takeVariable(const char* name)
{
    auto value = qgetenv(name);
    qunsetenv(name);
    return value;
}

/// Each ends in a zero byte.
QByteArrayList takeAddresses()
{
    constexpr qint64 longest = 1 << 20;
    bool isNumber = false;
    const int number = takeVariable(addressesVariable).toInt(&isNumber);
    QFile file;
    if (!isNumber || number <= 2 || !file.open(number, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return {};
    auto addresses = file.read(longest).split('\0');
    addresses.removeLast();
    return addresses;
}

} // namespace

LaunchNote LaunchNote::take()
{
    LaunchNote note;
    note.m_addresses = takeAddresses();
    if (const auto failed = takeVariable(fellBackVariable); failed.toLongLong() > 0)
        note.m_fellBackFrom = QByteArray::number(failed.toLongLong());
    note.m_isCounted = qEnvironmentVariableIsSet(recordBeforeVariable);
    note.m_before = StartRecord::parse(takeVariable(recordBeforeVariable).toStdString());
    return note;
}

void LaunchNote::forget() const
{
    if (m_isCounted)
        StartRecord::write(StartRecord::path(), m_before);
}

void LaunchNote::setWorking(long long build) const
{
    if (!m_isCounted)
        return;
    const auto last = StartRecord::read(StartRecord::path());
    if (!last || last->build == build) // not of a newer one that was started meanwhile, as the one to follow
        StartRecord::write(StartRecord::path(), StartRecord{.build = build});
}

} // namespace palvera
