#include "editors/SimValues.h"

#include "database/Schema.h"
#include "editors/EditorTexts.h"
#include "editors/SimTexts.h"
#include "format/DateCodes.h"
#include "format/NumberText.h"
#include "reference/SimDefaults.h"

namespace quillon::editors {

namespace {

bool isDate(const SimField& field)
{
    return field.kind == SimKind::Date || field.kind == SimKind::LongDate;
}

bool wholeColumn(const SimField& field)
{
    if (const database::TableDef* table = database::findTable(field.table)) {
        for (const database::FieldDef& f : table->fields) {
            if (f.name.compare(field.column, Qt::CaseInsensitive) == 0)
                return f.type == database::FieldType::Integer
                    || f.type == database::FieldType::Long;
        }
    }
    return false;
}

} // namespace

QString shownText(const SimField& field, const QVariant& value)
{
    if (value.isNull())
        return QString();
    QString code = value.toString();
    switch (field.kind) {
    case SimKind::Number:
        return format::NumText(value);
    case SimKind::Date:
        return format::YYDDDToDate(code);
    case SimKind::LongDate:
        return format::YYYYDDDToDate(code);
    case SimKind::Text:
    case SimKind::Code:
        break;
    }
    return code;
}

QString refusalOf(const SimField& field, const QString& text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return QString();
    if (isDate(field))
        return format::toDate(trimmed).isValid() ? QString() : text::invalidDate;
    if (!field.bounded)
        return QString();
    if (!format::isNumeric(trimmed))
        return text::invalidEntry;
    const double value = trimmed.toDouble();
    if (value == -99 || (value >= field.low && value <= field.high))
        return QString();
    return field.percentage ? sim_text::invalidPercentage : text::invalidEntry;
}

std::optional<QVariant> storedValue(const SimField& field, const QString& text)
{
    const QString trimmed = text.trimmed();
    if (!refusalOf(field, text).isEmpty())
        return std::nullopt;
    if (trimmed.isEmpty()) {
        if (isDate(field) || field.column == QLatin1String("NYRS"))
            return reference::simDefaults().member(field.column);
        return QVariant();
    }
    QVariant date = trimmed;
    switch (field.kind) {
    case SimKind::Number:
        return wholeColumn(field) ? QVariant(qRound(trimmed.toDouble()))
                                  : QVariant(trimmed.toDouble());
    case SimKind::Date:
        return format::DateToYYDDD(date);
    case SimKind::LongDate:
        return format::DateToYYYYDDD(date);
    case SimKind::Text:
    case SimKind::Code:
        break;
    }
    return trimmed;
}

} // namespace quillon::editors
