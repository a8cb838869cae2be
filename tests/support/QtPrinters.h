#pragma once

// Lets GoogleTest print Qt strings in its failure messages. Included into every
// test source by the build.

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <ostream>

inline std::ostream& operator<<(std::ostream& out, const QString& text)
{
    return out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << text;
}

inline void PrintTo(const QStringList& list, std::ostream* out)
{
    *out << '{';
    for (qsizetype i = 0; i < list.size(); ++i)
        *out << (i ? ", " : "") << list.at(i);
    *out << '}';
}

inline void PrintTo(const QByteArray& bytes, std::ostream* out)
{
    *out << '"' << bytes.toStdString() << '"';
}
