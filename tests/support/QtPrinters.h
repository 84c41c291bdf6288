#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <ostream>

// Readable Qt values in test failures.
QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& s, std::ostream* os)
{
    *os << '"' << s.toStdString() << '"';
}
inline void PrintTo(const QStringList& l, std::ostream* os)
{
    *os << '[';
    for (const QString& s : l)
        *os << "\n  \"" << s.toStdString() << '"';
    *os << " ]";
}
inline void PrintTo(const QByteArray& b, std::ostream* os)
{
    *os << '"' << b.toStdString() << '"';
}
inline void PrintTo(const QVariant& v, std::ostream* os)
{
    *os << v.toString().toStdString();
}
QT_END_NAMESPACE
