#pragma once

#include "support/WorkDbFixture.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace quillon::test {

// A working database beside a small suite written into the program's
// temporary folder, which is also DataFolder. The profile's locations use
// the drive-letter form of an installed suite ("C: \TERVA48\Weather").
class SuiteTest : public WorkDbTest {
protected:
    // Writes a file under the suite folder, making its folders; lines are
    // joined with CR LF.
    void write(const QString& relativePath, const QStringList& lines);
    void writeBytes(const QString& relativePath, const QByteArray& bytes);

    // A profile with WED, CRD and SLD rows and any further lines.
    void writeProfile(const QStringList& more = {});
    // Profile, code files, one weather file, one soil file and one
    // cultivar file: a suite that loads without a message.
    void writeSmallSuite();
};

// A soil header line: identifier in columns 2-11, depth in 32-36 and the
// description from column 38.
QString soilHeader(const QString& code, const QString& depth, const QString& description);
// A layer line with its numbers in their columns; an empty bulk density is
// left blank.
QString soilLayer(
    const QString& base, const QString& lower, const QString& upper, const QString& density);
// A whole profile: header, the five site and heading lines, the layers.
QStringList soilProfile(const QString& code, const QString& description, const QStringList& layers);

} // namespace quillon::test
