#pragma once

#include <QString>

namespace palvera {

/// The MIME type that the system knows for the extension of `filename`, whatever the file holds;
/// "application/octet-stream" when it knows none. Any thread.
QString mimeTypeForName(const QString& filename);

} // namespace palvera
