#pragma once

#include "support/ScriptedUserInterface.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quillon::test {

// A test with a fresh program folder and an empty working database built in
// it, and the scripted user interface installed. The state's folders point
// into the temporary folder; date text is month/day/year.
class WorkDbTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    QString path(const QString& name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
    ScriptedUserInterface m_ui;
};

// The rows of a query as text, one "a|b|c" line per row.
QStringList rowsOf(const QString& sql);

// The bytes of a file, or its first `count` bytes; empty when it can't be read.
QByteArray bytesOf(const QString& path, qint64 count = -1);

} // namespace quillon::test
