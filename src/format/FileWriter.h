#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

class QIODevice;

namespace quillon::format {

// Writes the text of an experiment file: lines ended by CR LF, characters in
// code page 1252. The text is collected in memory; save() puts it on disk
// in one go through a temporary file, so that a failure never leaves the
// user's file half-written.
class FileWriter {
public:
    // One line and its CR LF.
    void line(const QString& text = QString());
    // Text as it stands, with no line end added (the comment blocks carry
    // their own CR LF pairs).
    void text(const QString& text);

    // The comment block behind a section: nothing for an empty buffer or one
    // whose first character is CR; otherwise "!" + the buffer with "!" put
    // behind every LF and every "!!" turned into "!", ended by CR LF.
    void comments(const QString& buffer);
    // The same test-free form used for the simulation comments at the end.
    void commentsUnchecked(const QString& buffer);

    // A whole section: a blank line, the `head` lines (title and column
    // header), the `body` lines, then the comment block of `buffer`.
    void section(const QStringList& head, const QStringList& body, const QString& buffer);

    const QByteArray& bytes() const { return m_bytes; }

    // Writes the collected bytes to a device. False if the device refused
    // any of them.
    bool writeTo(QIODevice& device) const;
    // Replaces the file at `path` with the collected bytes, atomically.
    // On failure the old file stays and `error` says why.
    bool save(const QString& path, QString* error = nullptr) const;

private:
    QByteArray m_bytes;
};

} // namespace quillon::format
