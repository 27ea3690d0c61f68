#include "screens/Wording.h"

#include <QCoreApplication>
#include <QLocale>
#include <QObject>
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
    const char* name = nullptr;
};

const QHash<QString, Family> families{
    {QStringLiteral("video"),
     {QStringLiteral("film.fill"), QStringLiteral("blue"), QT_TRANSLATE_NOOP("QObject", "Video")}},
    {QStringLiteral("audio"),
     {QStringLiteral("waveform"), QStringLiteral("purple"), QT_TRANSLATE_NOOP("QObject", "Audio")}},
    {QStringLiteral("subtitles"),
     {QStringLiteral("captions.bubble.fill"), QStringLiteral("orange"), QT_TRANSLATE_NOOP("QObject", "Subtitles")}},
    {QStringLiteral("artwork"),
     {QStringLiteral("photo.fill"), QStringLiteral("pink"), QT_TRANSLATE_NOOP("QObject", "Artwork")}},
    {QStringLiteral("documents"),
     {QStringLiteral("doc.text.fill"), QStringLiteral("teal"), QT_TRANSLATE_NOOP("QObject", "Documents")}},
    {QStringLiteral("metadata"),
     {QStringLiteral("tablecells.fill"), QStringLiteral("indigo"), QT_TRANSLATE_NOOP("QObject", "Metadata")}}};
const Family otherFamily{QStringLiteral("shippingbox.fill"), QStringLiteral("gray")};

/// Those languages that have names in ours: Qt has them in English and in their own.
constexpr const char* languages[] = {
    QT_TRANSLATE_NOOP("Language", "Arabic"),     QT_TRANSLATE_NOOP("Language", "Basque"),
    QT_TRANSLATE_NOOP("Language", "Bengali"),    QT_TRANSLATE_NOOP("Language", "Bulgarian"),
    QT_TRANSLATE_NOOP("Language", "Cantonese"),  QT_TRANSLATE_NOOP("Language", "Catalan"),
    QT_TRANSLATE_NOOP("Language", "Chinese"),    QT_TRANSLATE_NOOP("Language", "Croatian"),
    QT_TRANSLATE_NOOP("Language", "Czech"),      QT_TRANSLATE_NOOP("Language", "Danish"),
    QT_TRANSLATE_NOOP("Language", "Dutch"),      QT_TRANSLATE_NOOP("Language", "English"),
    QT_TRANSLATE_NOOP("Language", "Estonian"),   QT_TRANSLATE_NOOP("Language", "Filipino"),
    QT_TRANSLATE_NOOP("Language", "Finnish"),    QT_TRANSLATE_NOOP("Language", "French"),
    QT_TRANSLATE_NOOP("Language", "Galician"),   QT_TRANSLATE_NOOP("Language", "German"),
    QT_TRANSLATE_NOOP("Language", "Greek"),      QT_TRANSLATE_NOOP("Language", "Hebrew"),
    QT_TRANSLATE_NOOP("Language", "Hindi"),      QT_TRANSLATE_NOOP("Language", "Hungarian"),
    QT_TRANSLATE_NOOP("Language", "Icelandic"),  QT_TRANSLATE_NOOP("Language", "Indonesian"),
    QT_TRANSLATE_NOOP("Language", "Irish"),      QT_TRANSLATE_NOOP("Language", "Italian"),
    QT_TRANSLATE_NOOP("Language", "Japanese"),   QT_TRANSLATE_NOOP("Language", "Korean"),
    QT_TRANSLATE_NOOP("Language", "Latvian"),    QT_TRANSLATE_NOOP("Language", "Lithuanian"),
    QT_TRANSLATE_NOOP("Language", "Malay"),      QT_TRANSLATE_NOOP("Language", "Norwegian Bokmal"),
    QT_TRANSLATE_NOOP("Language", "Persian"),    QT_TRANSLATE_NOOP("Language", "Polish"),
    QT_TRANSLATE_NOOP("Language", "Portuguese"), QT_TRANSLATE_NOOP("Language", "Romanian"),
    QT_TRANSLATE_NOOP("Language", "Russian"),    QT_TRANSLATE_NOOP("Language", "Serbian"),
    QT_TRANSLATE_NOOP("Language", "Slovak"),     QT_TRANSLATE_NOOP("Language", "Slovenian"),
    QT_TRANSLATE_NOOP("Language", "Spanish"),    QT_TRANSLATE_NOOP("Language", "Swedish"),
    QT_TRANSLATE_NOOP("Language", "Tamil"),      QT_TRANSLATE_NOOP("Language", "Telugu"),
    QT_TRANSLATE_NOOP("Language", "Thai"),       QT_TRANSLATE_NOOP("Language", "Turkish"),
    QT_TRANSLATE_NOOP("Language", "Ukrainian"),  QT_TRANSLATE_NOOP("Language", "Urdu"),
    QT_TRANSLATE_NOOP("Language", "Vietnamese"), QT_TRANSLATE_NOOP("Language", "Welsh"),
};

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
        return QObject::tr("Textless");
    auto end = std::ranges::find_if(code, [](QChar c) { return c == u'-' || c == u'_'; });
    auto language = QLocale::codeToLanguage(code.left(end - code.begin()).toLower());
    if (language == QLocale::AnyLanguage || language == QLocale::C)
        return code;
    const auto name = QLocale::languageToString(language);
    const auto known = std::ranges::find(languages, name, [](const char* each) { return QString::fromLatin1(each); });
    if (known != std::end(languages))
        return QCoreApplication::translate("Language", *known);
    return name.left(1).toUpper() + name.mid(1);
}

QString namesText(const QStringList& names)
{
    constexpr qsizetype most = 3;
    QStringList said;
    for (const auto& name : names.first(std::min(most, names.size())))
        said.append(QObject::tr("“%1”").arg(name));
    if (names.size() > most)
        said.append(QObject::tr("%n more", nullptr, int(names.size() - most)));
    const auto last = said.takeLast();
    return said.isEmpty() ? last : QObject::tr("%1 and %2").arg(said.join(QStringLiteral(", ")), last);
}

QString familyName(const QString& family, const QString& otherwise)
{
    const auto name = families.value(family.toLower()).name;
    return name ? QObject::tr(name) : otherwise;
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
