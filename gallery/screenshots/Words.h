#pragma once

#include <QHash>
#include <QList>
#include <QRegularExpression>
#include <QStringList>

namespace palvera {

/// What the program says in another language in the place of an English text: by it, the screens are driven in every
/// language in the same way.
class Words {
public:
    /// Out of the catalogue for translators of that language, such as "de", in the folder "translations" where the
    /// program was started. Throws `std::runtime_error` when it cannot be read.
    explicit Words(const QString& language);

    /// What may be shown in the place of a text with what has been filled into it, or of a part of one: itself too, as
    /// the platform says it.
    QStringList operator()(const QString& english) const;

private:
    struct Pattern {
        QRegularExpression source; ///< captures what is filled in
        QList<int> places;         ///< the number of each in the order of the source
        QString translation;
        qsizetype letters; ///< of the source, without its places
    };

    QString whole(const QString& english) const;
    void add(const QString& source, const QString& translation);

    QHash<QString, QString> m_whole;
    QList<Pattern> m_patterns; ///< those with most letters first
};

} // namespace palvera
