#pragma once

#include <QString>
#include <QVariant>

#include <vector>

namespace quillon::editors {

// The level of one factor that each row of Treatments held when an editor
// opened, in the order the table gives its rows. Renumbering a level while
// the editor is open reaches Treatments through the factor's cascading
// relation; Cancel gives every row its old level back.
class TreatmentLevels {
public:
    explicit TreatmentLevels(QString levelField);

    // CreateBackUp's step: remembers each treatment's level. Throws
    // RuntimeError.
    void capture();

    // Cancel's closing steps, once the factor's tables are back from their
    // backups with the relation `relationName` out of force: each treatment
    // gets its remembered level, then the relation (as the relation table
    // declares it) is made again. Throws RuntimeError.
    void restore(const QString& relationName) const;

private:
    QString m_levelField;
    std::vector<QVariant> m_levels;
};

// Takes a relation of the relation table out of force, when it is in force.
void dropRelation(const QString& name);

} // namespace quillon::editors
