#include "print/FileView.h"

#include "app/AppState.h"
#include "app/ExpIdentity.h"
#include "format/Cp1252.h"

#include <QFile>

namespace quillon::print {

bool& ViewOpen()
{
    static bool open = false;
    return open;
}

QString ViewFilePath()
{
    QString folder = state().AppFolder;
    if (!folder.endsWith(QLatin1Char('/')) && !folder.endsWith(QLatin1Char('\\')))
        folder += QLatin1Char('/');
    return folder + QStringLiteral("Temp.txt");
}

void removeViewFile(const QString& path)
{
    QFile::remove(path);
}

QString writeViewText(const Writer& writer, const QString& path)
{
    removeViewFile(path);
    if (writer)
        writer(path);
    return readViewText(path);
}

QString readViewText(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    QString text = format::fromCp1252(file.readAll());
    // The file's last line is its end mark; it isn't text to show or print.
    if (text.endsWith(QLatin1String("\x1a\r\n")))
        text.chop(3);
    else if (text.endsWith(QLatin1Char('\x1a')))
        text.chop(1);
    if (text.endsWith(QLatin1String("\r\n")))
        text.chop(2);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    return text;
}

QString padLeft(const QString& text, int width)
{
    return text.size() >= width ? text : QString(width - text.size(), QLatin1Char(' ')) + text;
}

void storeViewIdentity(ExperimentDetails& details, const QString& cropCode)
{
    details.EXPTNO = padLeft(details.EXPTNO, 4);
    details.INSTE = padLeft(details.INSTE, 2);
    details.SITEE = padLeft(details.SITEE, 2);
    const FileType type = fileTypeOf(state());
    details.CODE = type == FileType::Experimental ? cropCode : fileTypeCode(type);
    storeExperimentDetails(details);
}

} // namespace quillon::print
