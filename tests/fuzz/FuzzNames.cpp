#include "Require.h"

#include "transfer/DownloadPlace.h"
#include "transfer/Journal.h"
#include "transfer/Partial.h"

#include <algorithm>

// A name from the platform, for a file in the user's folder and as the key of a journal.
void palvera::check(const QByteArray& input)
{
    const auto name = QString::fromUtf8(input);
    const auto safe = safeFileName(name);
    require(!safe.isEmpty() && !safe.contains(u'/') && !safe.contains(QChar(0)), "it is one name");
    require(!safe.startsWith(u'.') && safe == safe.trimmed(), "neither hidden nor with blanks at its ends");
    require(!safe.endsWith(recordPath({}), Qt::CaseInsensitive), "no record's name");
    require(safe.toUtf8().size() + recordPath({}).size() <= 255, "there is room for the record's extension");
    require(std::ranges::none_of(safe, [](QChar c) { return c.category() == QChar::Other_Control; }), "it is seen");
    require(safeFileName(safe) == safe, "it is safe already");

    if (isUsableKey(name)) {
        const auto file = journalFileName(name);
        require(!file.contains(u'/') && file.endsWith(u".json") && file.toUtf8().size() <= 255,
                "it is one file's name");
    }
}
