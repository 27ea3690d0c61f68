#include "screens/Wording.h"

#include <QLocale>
#include <QRegularExpression>
#include <QSet>

namespace palvera {

namespace {

const QSet<QString> abbreviations{QStringLiteral("qc"),  QStringLiteral("hdr"), QStringLiteral("sdr"),
                                  QStringLiteral("uhd"), QStringLiteral("hd"),  QStringLiteral("sd"),
                                  QStringLiteral("ad"),  QStringLiteral("sdh"), QStringLiteral("cc"),
                                  QStringLiteral("im"),  QStringLiteral("ocr")};

struct Family {
    QString symbol;
    QString tint;
};

const QHash<QString, Family> families{
    {QStringLiteral("video"), {QStringLiteral("film.fill"), QStringLiteral("blue")}},
    {QStringLiteral("audio"), {QStringLiteral("waveform"), QStringLiteral("purple")}},
    {QStringLiteral("subtitles"), {QStringLiteral("captions.bubble.fill"), QStringLiteral("orange")}},
    {QStringLiteral("artwork"), {QStringLiteral("photo.fill"), QStringLiteral("pink")}},
    {QStringLiteral("documents"), {QStringLiteral("doc.text.fill"), QStringLiteral("teal")}},
    {QStringLiteral("metadata"), {QStringLiteral("tablecells.fill"), QStringLiteral("indigo")}}};
const Family otherFamily{QStringLiteral("shippingbox.fill"), QStringLiteral("gray")};

QString withCapital(const QString& word)
{
    return word.left(1).toUpper() + word.mid(1).toLower();
}

} // namespace

QString humanised(const QString& code)
{
    static const QRegularExpression separators(QStringLiteral("[_\\- ]+"));
    auto pieces = code.split(separators, Qt::SkipEmptyParts);
    if (pieces.isEmpty())
        return code;
    for (int i = 0; i < pieces.size(); ++i) {
        auto lower = pieces[i].toLower();
        if (abbreviations.contains(lower))
            pieces[i] = pieces[i].toUpper();
        else
            pieces[i] = i == 0 ? withCapital(pieces[i]) : lower;
    }
    return pieces.join(u' ');
}

QString capitalisedWords(const QString& text)
{
    QString capitalised;
    bool isWithinWord = false;
    for (auto letter : text) {
        capitalised.append(isWithinWord ? letter.toLower() : letter.toUpper());
        isWithinWord = letter.isLetterOrNumber() || letter == u'\'' || letter == u'’';
    }
    return capitalised;
}

QString languageName(const QString& code)
{
    if (code.toLower() == QStringLiteral("zxx"))
        return QStringLiteral("Textless");
    auto end = std::ranges::find_if(code, [](QChar c) { return c == u'-' || c == u'_'; });
    auto language = QLocale::codeToLanguage(code.left(end - code.begin()).toLower());
    if (language == QLocale::AnyLanguage || language == QLocale::C)
        return code;
    auto name = QLocale::languageToString(language);
    return name.left(1).toUpper() + name.mid(1);
}

QString namesText(const QStringList& names)
{
    constexpr qsizetype most = 3;
    QStringList said;
    for (const auto& name : names.first(std::min(most, names.size())))
        said.append(QStringLiteral("“%1”").arg(name));
    if (names.size() > most)
        said.append(QStringLiteral("%1 more").arg(names.size() - most));
    const auto last = said.takeLast();
    return said.isEmpty() ? last : QStringLiteral("%1 and %2").arg(said.join(QStringLiteral(", ")), last);
}

QString familySymbol(const QString& family)
{
    return families.value(family, otherFamily).symbol;
}

QString familyTint(const QString& family)
{
    return families.value(family, otherFamily).tint;
}

} // namespace palvera
