#include "http/HttpClient.h"

namespace palvera {

QByteArray headerOf(const HttpHeaders& headers, QByteArrayView name)
{
    for (const auto& [key, value] : headers)
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    return {};
}

} // namespace palvera
