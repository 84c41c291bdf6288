#pragma once

#include <QString>

namespace quillon::format {

// The identity of an experiment as the reader takes it from the file's name
// and the title from its *EXP line; ExpDetailsRead stores it.
struct ExperimentIdentity {
    QString INSTE;
    QString Sitee;
    QString Exptno;
    QString code;
    QString Ename;
};

// Works out the identity from the file's path and the *EXP line. Warns
// ("Name of the file … has wrong format.") when the name without its dot
// isn't 11 characters long; the reading goes on.
ExperimentIdentity experimentIdentity(const QString& path, const QString& expLine);

// Stores the identity as the row of ExpDetails.
void ExpDetailsRead(const ExperimentIdentity& identity);

// Reads an experiment file into the working database, which must have been
// emptied first. Loads the simulation defaults, takes in the lines and hands
// each section to its reader; comment lines go to the comment buffers.
// A file that can't be opened shows "Cannot open file <path>." and ends the
// program. One bad line costs that line, not the file. The whole read is one
// transaction.
void ReadFile(const QString& path);

// The same on lines already in memory (the path gives the identity).
void readExperimentLines(const QString& path, const QStringList& rawLines);

} // namespace quillon::format
