#pragma once

#include <QString>

#include <stdexcept>

namespace quillon {

// A failure the way the program's error traps see it: a number that tells
// the class of failure and the text shown to the user. Routines throw it and
// their trap reports text + the routine's tail.
class RuntimeError : public std::runtime_error {
public:
    RuntimeError(int number, const QString& text)
        : std::runtime_error(text.toStdString())
        , m_number(number)
        , m_text(text)
    {
    }
    int number() const { return m_number; }
    const QString& text() const { return m_text; }

private:
    int m_number;
    QString m_text;
};

// The classes of failure the program tells apart by number.
namespace err {
constexpr int TypeMismatch = 13;
constexpr int ObjectNotSet = 91;
constexpr int BadFileNameOrNumber = 52;
constexpr int FileNotFound = 53;
constexpr int PathNotFound = 76;
constexpr int NoCurrentRecord = 3021;
constexpr int DuplicateKey = 3022;
constexpr int FieldTooSmall = 3163;
constexpr int RelatedRecordsExist = 3200;
constexpr int RelatedRecordRequired = 3201;
constexpr int ItemNotFound = 3265;
constexpr int ZeroLengthString = 3315;
constexpr int ValidationRule = 3317;
constexpr int NumericOverflow = 3349;
constexpr int TableExists = 3010;
constexpr int TableNotFound = 3078;
constexpr int Other = 3000;
// The editors' grids and the statements they build from typed text.
constexpr int RowNotStored = 524; // a grid's pending row could not be stored
constexpr int MalformedExpression = 3075; // typed text that no statement can take
constexpr int UpdateCancelled = 3426; // a stored row refused by a validation rule
constexpr int GridDataError = 16389; // a value a grid's own update could not store
} // namespace err

} // namespace quillon
