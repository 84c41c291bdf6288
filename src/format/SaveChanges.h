#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace quillon::format {

// How a difference between the file on disk and the text Save would write
// matters to the values the file holds.
enum class ChangeKind {
    // The same values in another form: "-99" for "-99.0" or for a blank,
    // "0.8" for ".8", "13.0" for "13", blanks, line ends, a comment moved,
    // a line or column of missing values left out.
    Layout,
    // Another value: a number rounded, a text cut or re-cased, a value where
    // there was none, or a cell that now stands against the one before it so
    // that a reader of fixed columns can't tell them apart.
    Value,
    // A value, line, group, section or comment of the file that the written
    // text no longer has.
    Dropped,
};

struct SaveChange {
    ChangeKind kind = ChangeKind::Layout;
    QString section; // the section line's title, "" outside every section
    QString group; // the group header's key ("@A SABL"), "" under no header
    QString level; // the line's level, "" for a line without one
    QString column; // the column's name; "comment"; "" for a whole line
    QString oldText; // trimmed
    QString newText;
    int oldLine = 0; // line number in the file on disk; 0: not there
    int newLine = 0; // line number in the written text; 0: not there
    QString note; // what more there is to say ("now touches SAKE")
    // What the file has is not in the written text at all: a column, line,
    // group, section or comment.
    bool gone = false;
};

// Compares the bytes of an experiment file with the text Save would write
// for it. Both are taken apart into sections, groups and lines as the format
// reads them; lines are matched by group and level (and within a level by
// their first value, then in order), and compared cell by cell by the
// columns of their headers. Comments are compared as a set. Any bytes give
// a result. The changes come in the order of the file on disk, those of
// lines it doesn't have last.
std::vector<SaveChange> compareForSave(const QByteArray& onDisk, const QByteArray& written);

// Whether a change alters or drops a value: anything but layout.
inline bool altersValue(const SaveChange& change)
{
    return change.kind != ChangeKind::Layout;
}

} // namespace quillon::format
