#include "Require.h"

#include "transfer/Partial.h"
#include "transfer/UploadNote.h"

// The record beside a download and the note in a lock, from anywhere: each is refused, or survives being
// written.
void palvera::check(const QByteArray& input)
{
    if (const auto partial = decodePartial(input))
        require(decodePartial(encodePartial(*partial)) == partial, "the record survives being written");
    if (const auto note = decodeNote(input))
        require(decodeNote(encodeNote(*note)) == note, "the note survives being written");
}
