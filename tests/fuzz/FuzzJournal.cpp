#include "Require.h"

#include "transfer/Journal.h"

// A journal from anywhere: it decodes or is refused, and what decodes is safe to go on from and survives being written.
void palvera::check(const QByteArray& input)
{
    const auto journal = decodeJournal(input);
    require(isUsableKey(journal.key), "the key can name a file");
    require(coversExactly(journal.partSize, journal.partCount, journal.byteSize), "the parts cover the file");
    const auto queue = partsToSend(journal.partCount, journal.done);
    require(queue.size() + journal.done.size() == std::size_t(journal.partCount), "each part is to send or done");
    require(decodeJournal(encodeJournal(journal)) == journal, "it survives being written");
}
