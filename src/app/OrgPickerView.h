#pragma once

#include "screens/RowsModel.h"
#include "service/Organisations.h"

#include <QtQml/qqmlregistration.h>

namespace palvera {

class Session;

/// The rows of the organisation picker: an organisation's id and name.
struct OrgRow {
    QString key;
    QString name;

    bool operator==(const OrgRow&) const = default;
};

/// The organisations that the user can open, as a list. Lives on the main thread; follows the session.
class OrgPickerView : public RowsModel<OrgRow> {
    Q_OBJECT
    QML_NAMED_ELEMENT(OrgPickerModel)
    QML_UNCREATABLE("the program makes it")

public:
    explicit OrgPickerView(Session& session, QObject* parent = nullptr);

    /// Opens the organisation of that row.
    Q_INVOKABLE void choose(int row);

private:
    void showRows();

    Session& m_session;
};

} // namespace palvera
