#include "format/FileWriter.h"

#include "format/Cp1252.h"

#include <QSaveFile>

namespace quillon::format {

void FileWriter::line(const QString& text)
{
    m_bytes += toCp1252(text);
    m_bytes += "\r\n";
}

void FileWriter::text(const QString& text) { m_bytes += toCp1252(text); }

void FileWriter::comments(const QString& buffer)
{
    if (buffer.isEmpty() || buffer.startsWith(QLatin1Char('\r')))
        return;
    commentsUnchecked(buffer);
}

void FileWriter::section(const QStringList& head, const QStringList& body, const QString& buffer)
{
    line();
    for (const QString& text : head + body)
        line(text);
    comments(buffer);
}

void FileWriter::commentsUnchecked(const QString& buffer)
{
    QString block = QLatin1Char('!') + buffer;
    block.replace(QLatin1Char('\n'), QStringLiteral("\n!"));
    block.replace(QStringLiteral("!!"), QStringLiteral("!"));
    line(block);
}

bool FileWriter::writeTo(QIODevice& device) const
{
    return device.write(m_bytes) == m_bytes.size();
}

bool FileWriter::save(const QString& path, QString* error) const
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    if (!writeTo(file)) {
        if (error)
            *error = file.errorString();
        file.cancelWriting();
        return false;
    }
    if (!file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

} // namespace quillon::format
