#pragma once

#include <QByteArray>
#include <QString>

namespace quillon::format {

// Experiment and suite files are single-byte text in code page 1252. Every
// byte maps to one character and back, so a file read and written again
// keeps its bytes, also the five bytes the code page leaves undefined.
QString fromCp1252(const QByteArray& bytes);
QByteArray toCp1252(const QString& text);

} // namespace quillon::format
