#include "format/Cp1252.h"

#include <QHash>

namespace quillon::format {

namespace {

// Characters of bytes 0x80 to 0x9F; the undefined ones keep their byte value.
const char16_t high[32] = { 0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6,
    0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D,
    0x2022, 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178 };

const QHash<char16_t, char>& reverse()
{
    static const QHash<char16_t, char> map = [] {
        QHash<char16_t, char> m;
        for (int i = 0; i < 32; ++i)
            m.insert(high[i], char(0x80 + i));
        return m;
    }();
    return map;
}

} // namespace

QString fromCp1252(const QByteArray& bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    QChar* out = text.data();
    for (const char b : bytes) {
        const auto u = static_cast<unsigned char>(b);
        *out++ = (u >= 0x80 && u < 0xA0) ? QChar(high[u - 0x80]) : QChar(u);
    }
    return text;
}

QByteArray toCp1252(const QString& text)
{
    QByteArray bytes(text.size(), Qt::Uninitialized);
    char* out = bytes.data();
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u < 0x80 || (u >= 0xA0 && u < 0x100))
            *out++ = char(u);
        else
            *out++ = reverse().value(u, '?');
    }
    return bytes;
}

} // namespace quillon::format
