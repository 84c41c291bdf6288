#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace quillon::database {

// A named link between a parent table's key and a child table's column,
// enforced while it exists: a child row needs a parent row with its value
// (NULL needs none), a parent row with children can't be deleted, and a
// change of the parent's key is carried to the children.
struct Relation {
    QString name;
    QString parentTable;
    QString parentField;
    QString childTable;
    QString childField;
};

// Creates the relation. Throws RuntimeError if one of that name exists or if
// rows of the child table already name a value the parent doesn't have.
void createRelation(const Relation& relation);
// Removes the relation by name. Throws RuntimeError (ItemNotFound) if there
// is none of that name.
void deleteRelation(const QString& name);

// Makes each relation of the list as createRelation() does, skipping those
// that can't be made; the others are made all the same.
void createRelations(const std::vector<Relation>& relations);
// Removes the relations of these names that are in force; other names are
// passed over.
void deleteRelations(const QStringList& names);
bool relationExists(const QString& name);
// The names of the relations in force.
QStringList relationNames();

} // namespace quillon::database
