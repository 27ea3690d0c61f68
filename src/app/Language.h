#pragma once

#include <QStringList>
#include <QTranslator>

#include <memory>
#include <vector>

namespace palvera {

/// The language of all texts that are made while this lives, those of Qt's own dialogs too where its catalogues are
/// installed. Main thread, within the application object.
class Language {
public:
    /// The first of `wanted`, such as "de-AT", that there are texts in; English where there are none.
    explicit Language(const QStringList& wanted);

private:
    bool install(const QString& catalogue, const QString& language, const QString& folder);

    std::vector<std::unique_ptr<QTranslator>> m_catalogues; // each leaves the application when it goes
};

} // namespace palvera
