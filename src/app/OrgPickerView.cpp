#include "app/OrgPickerView.h"

#include "session/Session.h"
#include "text/VisibleText.h"

namespace palvera {

OrgPickerView::OrgPickerView(Session& session, QObject* parent)
    : RowsModel({{"name", &OrgRow::name}}, parent), m_session(session)
{
    connect(&session, &Session::orgsChanged, this, &OrgPickerView::showRows);
    showRows();
}

void OrgPickerView::choose(int row)
{
    if (row >= 0 && row < m_session.orgs().size())
        m_session.choose(m_session.orgs()[row]);
}

void OrgPickerView::showRows()
{
    QList<OrgRow> wanted;
    for (const auto& org : m_session.orgs())
        wanted.append({.key = org.id, .name = visibleName(org.name, org.id)});
    setRows(wanted);
}

} // namespace palvera
