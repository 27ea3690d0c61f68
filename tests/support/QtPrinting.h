#pragma once

#include <QByteArray>
#include <QString>

#include <gmock/gmock.h>

// GoogleTest finds these beside the types and shows a text where it would list characters.

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QByteArray& bytes, std::ostream* out)
{
    *out << '"' << bytes.toStdString() << '"';
}
