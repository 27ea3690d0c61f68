#include "app/Language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

namespace palvera {

Language::Language(const QStringList& wanted)
{
    const auto folderOfQt = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    for (const auto& language : wanted) {
        if (QLocale(language).language() == QLocale::English) // the sources are
            return;
        if (!install(QStringLiteral("palvera"), language, QStringLiteral(":/palvera/translations")))
            continue;
        install(QStringLiteral("qtbase"), language, folderOfQt);
        install(QStringLiteral("qtdeclarative"), language, folderOfQt);
        return;
    }
}

bool Language::install(const QString& catalogue, const QString& language, const QString& folder)
{
    auto translator = std::make_unique<QTranslator>();
    // Without a file for "de-AT", that for "de".
    if (!translator->load(catalogue + u'_' + language, folder, QStringLiteral("_-")))
        return false;
    QCoreApplication::installTranslator(translator.get());
    m_catalogues.push_back(std::move(translator));
    return true;
}

} // namespace palvera
