#pragma once

#include "support/ScriptedUserInterface.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quillon::test {

// A copy of the sample suite in a scratch folder, which is also DataFolder,
// and a program folder beside it holding the five .def files of the suite's
// tools folder. No working database exists yet: the first Open or New
// builds it from the copy. Skips when the sample suite isn't there.
class SampleSuiteTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // A path in the copied suite ("Maize/QLNV2101.MZX").
    QString suitePath(const QString& relative) const;
    // The sample maize experiment in the copy.
    QString maizeFile() const { return suitePath(QStringLiteral("Maize/QLNV2101.MZX")); }

    QTemporaryDir m_dir;
    ScriptedUserInterface m_ui;
};

// Copies a folder with everything in it. Returns false when a file could not
// be copied.
bool copyFolder(const QString& from, const QString& to);

} // namespace quillon::test
