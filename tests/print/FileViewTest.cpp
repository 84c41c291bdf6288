#include "print/FileView.h"
#include "app/AppState.h"
#include "app/ExpIdentity.h"
#include "database/Sql.h"
#include "support/QtPrinters.h"
#include "support/WorkDbFixture.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace quillon;

namespace {

bool writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// A writer standing in for the experiment writer: the first line as a
// scratch file gets it, from what ExpDetails holds.
bool fakeWriter(const QString& path)
{
    QSqlQuery q = database::select(
        QStringLiteral("SELECT INSTE, SITEE, EXPTNO, CODE, ENAME FROM ExpDetails"));
    QByteArray line = "*EXP.DETAILS: ";
    if (q.next()) {
        line += (q.value(0).toString() + q.value(1).toString() + q.value(2).toString()
            + q.value(3).toString())
                    .toLatin1();
        line += ' ' + q.value(4).toString().toLatin1();
    }
    return writeBytes(path, line + "\r\n\r\n*TREATMENTS\r\n\x1a\r\n");
}

class FileViewTest : public test::WorkDbTest { };

} // namespace

TEST_F(FileViewTest, ScratchFileLiesInTheProgramFolderAndIsRewrittenEachTime)
{
    const QString scratch = print::ViewFilePath();
    EXPECT_EQ(scratch, state().AppFolder + QStringLiteral("Temp.txt"));

    int runs = 0;
    QString writtenTo;
    const print::Writer writer = [&](const QString& path) {
        ++runs;
        writtenTo = path;
        // The old file is gone before the writer runs.
        EXPECT_FALSE(QFile::exists(path));
        return writeBytes(path, "run " + QByteArray::number(runs) + "\r\nsecond line\r\n\x1a\r\n");
    };
    EXPECT_EQ(print::writeViewText(writer, scratch), QStringLiteral("run 1\nsecond line"));
    EXPECT_EQ(writtenTo, scratch);
    EXPECT_EQ(print::writeViewText(writer, scratch), QStringLiteral("run 2\nsecond line"));

    // Single-byte text comes back byte for byte; a file without an end mark
    // is shown whole.
    ASSERT_TRUE(writeBytes(scratch, "caf\xe9 \x80\r\nlast"));
    EXPECT_EQ(print::readViewText(scratch), QStringLiteral("caf\u00e9 \u20ac\nlast"));

    print::removeViewFile(scratch);
    EXPECT_FALSE(QFile::exists(scratch));
    print::removeViewFile(scratch); // nothing there: no complaint
    EXPECT_TRUE(m_ui.messages.empty());

    // A writer that fails shows what it has to say itself; the view shows
    // what the file holds.
    const print::Writer failing = [](const QString&) { return false; };
    EXPECT_EQ(print::writeViewText(failing, scratch), QString());
}

TEST_F(FileViewTest, PreviewPadsTheIdentificationSoTheFirstLineKeepsItsColumns)
{
    setFileType(state(), FileType::Experimental);
    ExperimentDetails details { QStringLiteral("A"), QString(), QString(), QString(),
        QStringLiteral("MY TRIAL") };
    print::storeViewIdentity(details, QStringLiteral("MZ"));
    // Padded in place: the window's boxes show what was stored.
    EXPECT_EQ(details.INSTE, QStringLiteral(" A"));
    EXPECT_EQ(details.SITEE, QStringLiteral("  "));
    EXPECT_EQ(details.EXPTNO, QStringLiteral("    "));
    const QString text = print::writeViewText(fakeWriter, print::ViewFilePath());
    EXPECT_TRUE(text.startsWith(QStringLiteral("*EXP.DETAILS:  A      MZ MY TRIAL\n")))
        << text.toStdString();

    // The first row is edited, not a second one added; the type decides the code.
    setFileType(state(), FileType::Spatial);
    ExperimentDetails spatial { QStringLiteral("AB"), QStringLiteral("CD"), QStringLiteral("12"),
        QString(), QStringLiteral("GRID") };
    print::storeViewIdentity(spatial, QStringLiteral("MZ"));
    EXPECT_EQ(
        test::rowsOf(QStringLiteral("SELECT INSTE, SITEE, EXPTNO, CODE, ENAME FROM ExpDetails")),
        QStringList { QStringLiteral("AB|CD|  12|gs|GRID") });

    EXPECT_EQ(print::padLeft(QStringLiteral("12345"), 4), QStringLiteral("12345"));
}
