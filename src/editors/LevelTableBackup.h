#pragma once

#include <QString>
#include <QVariant>

#include <vector>

namespace quillon::editors {

// The undo of an editor that changes one level table in place (cultivars,
// planting): BackUp, a copy of the table taken as the editor opens, and the
// level each row of Treatments held then. A renumbered level reaches
// Treatments through the table's relation; restoring puts those levels back
// as well.
class LevelTableBackup {
public:
    LevelTableBackup(const QString& table, const QString& levelField, const QString& relation);

    // CreateBackUp: BackUp made anew as a copy of the table, and the
    // treatments' levels remembered. Throws RuntimeError.
    void create();
    // Cancel, in this order: the relation off, the table back from BackUp
    // (which goes), each treatment back to the level it held, the relation
    // on. Throws RuntimeError.
    void restore() const;
    // Cancel's restore, with a failure reported under the routine's tail.
    void restore(const QString& failureTail) const;
    // "Drop Table [Backup]", a failure ignored.
    static void drop();

private:
    QString m_table;
    QString m_levelField;
    QString m_relation;
    std::vector<QVariant> m_treatmentLevels;
};

} // namespace quillon::editors
