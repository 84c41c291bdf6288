#include "database/Rules.h"

#include "database/Sql.h"

#include <QDate>

namespace quillon::database {

namespace {

struct Token {
    enum Kind { Value, Word, Operator, Open, Close, Comma } kind;
    QString text;
};

bool isOperatorChar(QChar c) { return c == QLatin1Char('<') || c == QLatin1Char('>') || c == QLatin1Char('='); }

std::vector<Token> tokenize(const QString& rule)
{
    std::vector<Token> tokens;
    int i = 0;
    const int n = rule.size();
    auto expectingOperand = [&tokens] {
        if (tokens.empty())
            return true;
        const Token& last = tokens.back();
        return last.kind == Token::Operator || last.kind == Token::Open || last.kind == Token::Comma
            || (last.kind == Token::Word && last.text.compare(QLatin1String("NULL"), Qt::CaseInsensitive) != 0);
    };
    while (i < n) {
        const QChar c = rule.at(i);
        if (c.isSpace()) {
            ++i;
        } else if (c == QLatin1Char('(')) {
            tokens.push_back({ Token::Open, QStringLiteral("(") });
            ++i;
        } else if (c == QLatin1Char(')')) {
            tokens.push_back({ Token::Close, QStringLiteral(")") });
            ++i;
        } else if (c == QLatin1Char(',')) {
            tokens.push_back({ Token::Comma, QStringLiteral(",") });
            ++i;
        } else if (isOperatorChar(c)) {
            int j = i + 1;
            while (j < n && isOperatorChar(rule.at(j)))
                ++j;
            tokens.push_back({ Token::Operator, rule.mid(i, j - i) });
            i = j;
        } else if (c == QLatin1Char('#')) {
            // A date literal, #month/day/year#: compared as the ISO text in
            // which date columns hold their dates.
            int j = i + 1;
            while (j < n && rule.at(j) != c)
                ++j;
            const QDate date = QDate::fromString(rule.mid(i + 1, j - i - 1).trimmed(), QStringLiteral("M/d/yyyy"));
            tokens.push_back({ Token::Value, QLatin1Char('\'') + date.toString(Qt::ISODate) + QLatin1Char('\'') });
            i = j + 1;
        } else if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
            int j = i + 1;
            while (j < n && rule.at(j) != c)
                ++j;
            QString body = rule.mid(i + 1, j - i - 1);
            body.replace(QLatin1String("'"), QLatin1String("''"));
            tokens.push_back({ Token::Value, QLatin1Char('\'') + body + QLatin1Char('\'') });
            i = j + 1;
        } else if (c.isDigit() || c == QLatin1Char('.')
            || (c == QLatin1Char('-') && expectingOperand())) {
            int j = i + 1;
            while (j < n && (rule.at(j).isDigit() || rule.at(j) == QLatin1Char('.')))
                ++j;
            tokens.push_back({ Token::Value, rule.mid(i, j - i) });
            i = j;
        } else {
            int j = i + 1;
            while (j < n && (rule.at(j).isLetterOrNumber() || rule.at(j) == QLatin1Char('_')))
                ++j;
            tokens.push_back({ Token::Word, rule.mid(i, j - i) });
            i = j;
        }
    }
    return tokens;
}

bool isWord(const Token& t, const char* word)
{
    return t.kind == Token::Word && t.text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

QString quoted(const QString& text)
{
    QString body = text;
    body.replace(QLatin1String("'"), QLatin1String("''"));
    return QLatin1Char('\'') + body + QLatin1Char('\'');
}

// "#number#message": the form in which refusals travel through SQLite, so that
// classify() gives back the number and the exact message.
QString raise(int number, const QString& message)
{
    return QStringLiteral("RAISE(ABORT, %1)").arg(quoted(QStringLiteral("#%1#%2").arg(number).arg(message)));
}

QString col(const QString& name) { return QStringLiteral("NEW.[%1]").arg(name); }

void createCheckTriggers(const QString& name, const QString& table, const QStringList& cases)
{
    if (cases.isEmpty())
        return;
    const QString body = QStringLiteral("SELECT CASE %1 END;").arg(cases.join(QLatin1Char(' ')));
    exec(QStringLiteral("CREATE TRIGGER [%1_ins] BEFORE INSERT ON [%2] BEGIN %3 END").arg(name, table, body));
    exec(QStringLiteral("CREATE TRIGGER [%1_upd] BEFORE UPDATE ON [%2] BEGIN %3 END").arg(name, table, body));
}

} // namespace

QString ruleCondition(const QString& rule, const QString& column)
{
    const std::vector<Token> tokens = tokenize(rule);
    QStringList out;
    bool operand = true; // a value or a comparison is expected next
    for (size_t i = 0; i < tokens.size(); ++i) {
        const Token& t = tokens[i];
        if (operand && t.kind == Token::Operator) {
            out << column << t.text;
            if (i + 1 < tokens.size())
                out << tokens[++i].text;
            operand = false;
        } else if (operand && (isWord(t, "BETWEEN") || isWord(t, "LIKE") || isWord(t, "IN") || isWord(t, "IS"))) {
            out << column;
            if (isWord(t, "BETWEEN") && i + 3 < tokens.size()) {
                out << t.text << tokens[i + 1].text << tokens[i + 2].text << tokens[i + 3].text;
                i += 3;
                operand = false;
            } else {
                out << t.text;
            }
        } else if (operand && t.kind == Token::Value) {
            out << column << QStringLiteral("=") << t.text;
            operand = false;
        } else if (operand && isWord(t, "NOT")) {
            out << t.text;
        } else {
            out << t.text;
            operand = t.kind == Token::Open || isWord(t, "AND") || isWord(t, "OR");
        }
    }
    return QLatin1Char('(') + out.join(QLatin1Char(' ')) + QLatin1Char(')');
}

QString defaultRuleText(const QString& rule, const QString& table, const QString& field)
{
    return QStringLiteral("One or more values are prohibited by the validation rule '%1' set for '%2.%3'. "
                          "Enter a value that the expression for this field can accept.")
        .arg(rule, table, field);
}

void installFieldChecks(const TableDef& table)
{
    QStringList cases;
    for (const FieldDef& field : table.fields) {
        const QString c = col(field.name);
        if (field.type == FieldType::Text) {
            const int size = field.size > 0 ? field.size : DefaultTextSize;
            if (!table.allowZeroLength)
                cases << QStringLiteral("WHEN %1 = '' THEN %2")
                             .arg(c, raise(err::ZeroLengthString,
                                      QStringLiteral("Field '%1.%2' cannot be a zero-length string.")
                                          .arg(table.name, field.name)));
            cases << QStringLiteral("WHEN length(%1) > %2 THEN %3")
                         .arg(c)
                         .arg(size)
                         .arg(raise(err::FieldTooSmall,
                             QStringLiteral("The field is too small to accept the amount of data you "
                                            "attempted to add.  Try inserting or pasting less data.")));
        } else if (field.type == FieldType::Integer) {
            cases << QStringLiteral("WHEN typeof(%1) IN ('integer', 'real') AND (%1 > 32767 OR %1 < -32768) THEN %2")
                         .arg(c, raise(err::NumericOverflow, QStringLiteral("Numeric field overflow.")));
        }
        if (!field.rule.isEmpty()) {
            const QString text = field.ruleText.isEmpty()
                ? defaultRuleText(field.rule, table.name, field.name)
                : field.ruleText;
            cases << QStringLiteral("WHEN %1 IS NOT NULL AND NOT %2 THEN %3")
                         .arg(c, ruleCondition(field.rule, c), raise(err::ValidationRule, text));
        }
    }
    createCheckTriggers(QStringLiteral("check_") + table.name, table.name, cases);
}

void setValidationRule(const QString& table, const QString& field, const QString& rule,
    const QString& ruleText)
{
    const QString name = QStringLiteral("rule_%1_%2").arg(table, field);
    exec(QStringLiteral("DROP TRIGGER IF EXISTS [%1_ins]").arg(name));
    exec(QStringLiteral("DROP TRIGGER IF EXISTS [%1_upd]").arg(name));
    if (rule.trimmed().isEmpty())
        return;
    const QString c = col(field);
    const QString text = ruleText.isEmpty() ? defaultRuleText(rule, table, field) : ruleText;
    createCheckTriggers(name, table,
        { QStringLiteral("WHEN %1 IS NOT NULL AND NOT %2 THEN %3")
                .arg(c, ruleCondition(rule, c), raise(err::ValidationRule, text)) });
}

} // namespace quillon::database
