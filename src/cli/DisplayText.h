#pragma once

#include <QString>
#include <QStringView>

namespace palvera::cli {

// Texts of any origin on the lines of a terminal.

/// How many cells of a terminal `text` takes, which must be visible text: two for a wide East Asian character or an
/// emoji, none for a mark that joins the character before it.
int cellsOf(QStringView text);

/// `text` when it fits into `cells`, else as much of its start as fits with "…" behind it.
QString shortened(const QString& text, int cells);

/// `text` with as many spaces behind it (or before it) as fill `cells`.
QString padded(const QString& text, int cells);
QString paddedBefore(const QString& text, int cells);

/// `words` as a POSIX shell must be given them, behind the options of a command, to take each as one word and none as
/// an option.
QString shellWords(const QStringList& words);

} // namespace palvera::cli
