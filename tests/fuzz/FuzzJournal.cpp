#include "Require.h"

#include "service/JsonReader.h"
#include "transfer/Journal.h"

// A journal from anywhere: it decodes or is refused, and what decodes is safe to go on from and survives being written.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace palvera;
    try {
        auto journal = decodeJournal(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
        require(isPlainFileName(journal.key), "the key is a plain file name");
        require(coversExactly(journal.partSize, journal.partCount, journal.byteSize), "the parts cover the file");
        auto queue = partsToSend(journal.partCount, journal.done);
        require(queue.size() + journal.done.size() == std::size_t(journal.partCount), "each part is to send or done");
        require(decodeJournal(encodeJournal(journal)) == journal, "it survives being written");
    } catch (const DecodingError&) { // NOLINT(bugprone-empty-catch)
    }
    return 0;
}
