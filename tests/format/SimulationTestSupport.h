#pragma once

// Shared pieces of the simulation control and automatic management tests.

#include "app/AppState.h"
#include "database/Sql.h"
#include "reference/SimDefaults.h"
#include "support/WorkDbFixture.h"

#include <QString>
#include <QStringList>

namespace quillon::test {

// A data line of the simulation groups as the writer lays it out: level and
// label in 14 positions, then each cell right-aligned in 6.
inline QString groupLine(const char* head, std::initializer_list<const char*> cells)
{
    QString line = QString::fromLatin1(head).leftJustified(14);
    for (const char* cell : cells)
        line += QString::fromLatin1(cell).rightJustified(6);
    return line;
}

// The general line: the five cells, the title at 46 and the model at 72.
inline QString generalLine(const char* head, std::initializer_list<const char*> cells, const QString& title,
    const QString& model)
{
    return groupLine(head, cells) + QLatin1Char(' ') + title.leftJustified(26) + model;
}

// A working database with a model table, the built-in defaults and an
// experimental document.
class SimulationTest : public WorkDbTest {
protected:
    void SetUp() override
    {
        WorkDbTest::SetUp();
        state().setExperimental();
        reference::simDefaults() = reference::SimDefaults();
        reference::simDefaults().assignBuiltIn(false);
        database::exec(QStringLiteral(
            "CREATE TABLE SimLookUp (Code TEXT COLLATE NOCASE, Description TEXT COLLATE NOCASE, Type INTEGER)"));
        for (const char* code : { "KESTRAL", "MIRTA", "LUMEN-ALT" })
            database::insertRow(QStringLiteral("SimLookUp"),
                { { QStringLiteral("Code"), QString::fromLatin1(code) },
                    { QStringLiteral("Description"), QStringLiteral("a model") }, { QStringLiteral("Type"), 19 } });
    }

    // Empties every group table.
    static void clearControls()
    {
        for (const reference::SimGroup& g : reference::simGroups())
            database::exec(QStringLiteral("DELETE FROM [%1]").arg(g.table));
    }

    static QStringList rows(const char* table)
    {
        return rowsOf(QStringLiteral("SELECT * FROM %1 ORDER BY rowid").arg(QLatin1String(table)));
    }
};

} // namespace quillon::test
