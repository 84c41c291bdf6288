#pragma once

#include "app/RuntimeError.h"

#include <QString>
#include <QStringList>

namespace quillon::reference {

// Suites are copied from case-blind file systems: the profile may say
// "\TERVA48\GENOTYPE" where the disk holds "Genotype/", and "Detail.cde" may
// lie there as "DETAIL.CDE". Everything that opens a suite file finds it
// through the functions below, which match names without regard to case.

// While one of these lives, folder listings are remembered, so that a load
// that looks up thousands of files lists each folder once. Without one, each
// call lists afresh and sees files created in between.
class ListingCache {
public:
    ListingCache();
    ~ListingCache();
    ListingCache(const ListingCache&) = delete;
    ListingCache& operator=(const ListingCache&) = delete;
};

// The path as it lies on disk, matched component by component without regard
// to case; "\" counts as a separator. Empty when a component is missing.
QString findPath(const QString& path);

// `name` (which may hold separators) under `folder`, as findPath() does.
// Empty when it isn't there or when `folder` is empty.
QString findIn(const QString& folder, const QString& name);

// The names of the files in `folder` that match a wildcard pattern ("*.wth",
// "?" and "*" as wildcards) without regard to case, sorted case-blind. A
// missing folder gives an empty list.
QStringList listMatching(const QString& folder, const QString& pattern);

// A folder and a name joined with the native separator, for messages and
// for names that are looked up afterwards.
QString joinPath(const QString& folder, const QString& name);

// The location text of a profile path: a drive letter in the first column,
// any character and blanks up to the third, so "C: \TERVA48\Weather" and
// "C:  \TERVA48\Weather" both give "C:\TERVA48\Weather"; a single character
// gives the drive alone ("C:"). A POSIX path ("/…") or a relative one is
// kept as it stands.
QString locationText(const QString& path);

// The folder on this machine for a location text. A drive-letter location
// is looked for inside the suite: its part after the suite folder's name,
// under DataFolder ("C:\TERVA48\Weather" gives DataFolder/Weather); failing
// that, the path as written under the drive root (QUILLON_DRIVE_ROOT, "/"
// by default). A POSIX path is taken as it stands, a relative one under
// DataFolder. Matching is case-blind; when nothing matches, the likeliest
// candidate is returned so that callers find no files in it. Empty text
// gives an empty folder.
QString locationFolder(const QString& locationText);

// Reads a whole file into lines (code page 1252, any line ending). Throws
// the platform's failure (file not found, permission denied) as a
// RuntimeError.
QStringList readSuiteLines(const QString& path);

// The failure of opening `path`, in the program's usual error texts.
RuntimeError openFailure(const QString& path);

// The first line of a file, read without reading the rest. Throws as
// readSuiteLines() does.
QString readFirstLine(const QString& path);

} // namespace quillon::reference
