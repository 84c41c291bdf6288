#include "support/WorkDbFixture.h"

#include "app/AppState.h"
#include "database/Sql.h"
#include "database/WorkDatabase.h"

#include <QDir>
#include <QFile>
#include <QSqlRecord>

namespace quillon::test {

void WorkDbTest::SetUp()
{
    ASSERT_TRUE(m_dir.isValid());
    AppState& s = state();
    s = AppState();
    s.AppFolder = QDir::toNativeSeparators(m_dir.path()) + QDir::separator();
    s.DataFolder = QDir::toNativeSeparators(m_dir.path());
    s.WorkDBPath = s.AppFolder + QStringLiteral("QUILLONTEMP2.mdb");
    s.DateTextFormat = QStringLiteral("M/d/yyyy");
    database::CreateDataBaseX();
    m_ui.clear();
}

void WorkDbTest::TearDown()
{
    database::closeWorkDB();
}

QByteArray bytesOf(const QString& path, qint64 count)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return count < 0 ? file.readAll() : file.read(count);
}

QStringList rowsOf(const QString& sql)
{
    QStringList rows;
    QSqlQuery q = database::select(sql);
    while (q.next()) {
        QStringList cells;
        for (int i = 0; i < q.record().count(); ++i)
            cells << (q.value(i).isNull() ? QStringLiteral("NULL") : q.value(i).toString());
        rows << cells.join(QLatin1Char('|'));
    }
    return rows;
}

} // namespace quillon::test
