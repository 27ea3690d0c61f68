#include "platform/HttpClient.h"

namespace palvera {

QByteArray HttpResponse::header(QByteArrayView name) const
{
    for (const auto& [key, value] : headers)
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    return {};
}

} // namespace palvera
