#pragma once

#include <QString>

#include <vector>

namespace quillon::database {

// Field types of the working database. Integer is 16-bit, Long 32-bit,
// Single a 32-bit float.
enum class FieldType { Text, Integer, Long, Single };

struct FieldDef {
    QString name;
    FieldType type;
    int size = 0; // text: maximum length (0: the default length); numbers: width in the file
    QString rule; // validation rule in the program's own notation, e.g. "BETWEEN 0 AND 99 or -99"
    QString ruleText; // the message shown when the rule refuses a value
};

struct IndexDef {
    QString name;
    QStringList fields;
    bool unique;
};

struct TableDef {
    QString name;
    std::vector<FieldDef> fields;
    std::vector<IndexDef> indexes;
    bool allowZeroLength; // text fields take ""
    int stage; // the stage of CreateDataBaseX that makes it, for its failure label
};

// One step of building the schema, in creation order: a table, a statement,
// or a move of the progress bar.
struct SchemaStep {
    enum Kind { Table, Statement, Progress } kind;
    TableDef table;
    QString statement;
    int stage = 0;
    int percent = 0;
};

// The length a text field without a size may hold.
constexpr int DefaultTextSize = 255;

const std::vector<SchemaStep>& schemaSteps();
// The table definition of a schema table by name (case-blind); nullptr if
// the table isn't part of the schema.
const TableDef* findTable(const QString& name);

// The SQL type declaration of a field: its type, its size, and for text the
// case-blind comparison.
QString columnDeclaration(const FieldDef& field);

} // namespace quillon::database
