#pragma once

#include "screens/RowsModel.h"

#include <QtQml/qqmlregistration.h>

namespace palvera {

/// One setting of a filter.
struct FilterChoice {
    QString key;   ///< the value
    QString label; ///< for the user
    QString code;  ///< shown beside the label, where there is one

    bool operator==(const FilterChoice&) const = default;
};

/// What one filter can be set to. Main thread.
class FilterChoices : public RowsModel<FilterChoice> {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(int revision READ revision NOTIFY revised) ///< another one for each list of values

public:
    /// Makes a value's choice.
    using Describe = FilterChoice (*)(const QString& value);

    explicit FilterChoices(Describe describe, QObject* parent = nullptr);

    void setValues(const QStringList& values);
    int revision() const { return m_revision; }

    /// Where `value` stands; -1 when it is none of them.
    Q_INVOKABLE int indexOf(const QString& value) const;
    /// Empty when there is no such choice.
    Q_INVOKABLE QString valueAt(int index) const;
    /// What `value` is called, whether it is one of them or not.
    Q_INVOKABLE QString labelOf(const QString& value) const;

Q_SIGNALS:
    void revised();

private:
    FilterChoice shown(const QString& value) const;

    const Describe m_describe;
    int m_revision = 0;
};

} // namespace palvera
