#pragma once

#include <QStringList>

namespace palvera {

// Machine words, and names, as people read them.

/// A code such as a status or a kind: "picture_master" is "Picture master", "qc_report" is "QC report".
QString humanised(const QString& code);
/// Each word with a capital: "artwork stills" is "Artwork Stills".
QString capitalisedWords(const QString& text);
/// What the language with that code ("pt-BR", "de") is called; "Textless" for "zxx", and the code itself where the
/// language is unknown.
QString languageName(const QString& code);
/// "“a.mov”, “b.mov” and “c.mov”", "“a.mov”, “b.mov”, “c.mov” and 3 more".
QString namesText(const QStringList& names);
/// What a family of deliverables is called; `otherwise` where it is a strange one.
QString familyName(const QString& family, const QString& otherwise);
/// The symbol of a family of deliverables, see controls/symbols.txt.
QString familySymbol(const QString& family);
/// The name of its tint: "blue", "purple", "orange", "pink", "teal", "indigo" or "gray".
QString familyTint(const QString& family);

} // namespace palvera
