#include "editors/LevelPage.h"

#include "app/UserInterface.h"
#include "database/Sql.h"
#include "editors/EditorTexts.h"
#include "format/NumberText.h"

namespace quillon::editors {

using database::scalar;
using database::select;

LevelPage::LevelPage(const EventMember& member, EventScreen& screen)
    : m_member(member)
    , m_screen(screen)
{
}

void LevelPage::load() const
{
    for (int i = 0; i < int(m_member.levelPage.size()); ++i) {
        const LevelPageField& f = m_member.levelPage[size_t(i)];
        if (f.listType.isEmpty())
            continue;
        QStringList descriptions;
        QSqlQuery q = select(QStringLiteral("SELECT Description FROM CodeLookup WHERE Type = ? "
                                            "ORDER BY Description"),
            { f.listType });
        while (q.next())
            descriptions << q.value(0).toString();
        m_screen.setLevelPageChoices(i, descriptions);
    }
}

void LevelPage::show(int level) const
{
    QStringList fields;
    for (const LevelPageField& f : m_member.levelPage)
        fields << f.field;
    QSqlQuery row = select(QStringLiteral("SELECT %1 FROM [%2] WHERE %3 = %4")
                               .arg(fields.join(QStringLiteral(", ")), m_member.levelTable,
                                   m_member.levelField, QString::number(level)));
    const bool found = row.next();
    QStringList texts;
    for (int i = 0; i < int(m_member.levelPage.size()); ++i) {
        const LevelPageField& f = m_member.levelPage[size_t(i)];
        const QVariant value = found ? row.value(i) : QVariant();
        if (value.isNull())
            texts << QString();
        else if (!f.listType.isEmpty())
            texts << scalar(QStringLiteral("SELECT Description FROM CodeLookup WHERE Type = ? AND "
                                           "Code = ? ORDER BY rowid LIMIT 1"),
                { f.listType, value })
                         .toString();
        else
            texts << format::NumText(value);
    }
    m_screen.showLevelPage(texts);
}

std::optional<QVariant> LevelPage::accepted(const LevelPageField& f, const QString& text) const
{
    const QString trimmed = text.trimmed();
    if (!f.checked)
        return trimmed.isEmpty() ? QVariant() : QVariant(trimmed);
    if (trimmed.isEmpty() || trimmed == QLatin1String("-99"))
        return QVariant(-99.0);
    if (!format::isNumeric(trimmed)) {
        msgBox(text::invalidEntry, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
        return std::nullopt;
    }
    const double value = trimmed.toDouble();
    if (value < f.low || value > f.high) {
        msgBox(f.rangeMessage, MsgButtons::OK, MsgIcon::Critical, text::errorTitle);
        return std::nullopt;
    }
    return QVariant(value);
}

bool LevelPage::validate(int level, int field, const QString& text) const
{
    const LevelPageField& f = m_member.levelPage.at(size_t(field));
    const std::optional<QVariant> value = accepted(f, text);
    if (!value)
        return false;
    store(level, f, *value);
    // An empty box shows the -99 it became.
    show(level);
    return true;
}

void LevelPage::choose(int level, int field, const QString& description) const
{
    const LevelPageField& f = m_member.levelPage.at(size_t(field));
    const QVariant code = scalar(QStringLiteral("SELECT Code FROM CodeLookup WHERE Type = ? AND "
                                                "Description = ? ORDER BY rowid LIMIT 1"),
        { f.listType, description });
    store(level, f, code.isValid() ? code : QVariant());
}

void LevelPage::store(int level, const LevelPageField& f, const QVariant& value) const
{
    database::exec(
        QStringLiteral("UPDATE [%1] SET [%2] = ? WHERE %3 = %4")
            .arg(m_member.levelTable, f.field, m_member.levelField, QString::number(level)),
        { value });
}

} // namespace quillon::editors
