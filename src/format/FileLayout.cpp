#include "format/FileLayout.h"

#include "format/TextLines.h"

#include <QHash>

namespace quillon::format {

namespace {

const QString expLine = QStringLiteral("*EXP.DETAILS:");

QString titleOf(const QString& line)
{
    if (line.startsWith(QLatin1String("*EXP")))
        return expLine;
    const QString t = line.trimmed();
    const int gap = int(t.indexOf(QLatin1String("  ")));
    return gap < 0 ? t : t.left(gap);
}

// Whether every line break of the bytes is CR LF.
bool allCrLf(const QByteArray& bytes)
{
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (bytes.at(i) == '\n' && (i == 0 || bytes.at(i - 1) != '\r'))
            return false;
        if (bytes.at(i) == '\r' && (i + 1 == bytes.size() || bytes.at(i + 1) != '\n'))
            return false;
    }
    return true;
}

} // namespace

FileLayout::FileLayout(const QByteArray& bytes)
    : m_crLf(allCrLf(bytes))
{
    const QStringList lines = splitLines(bytes);
    // Headers repeat (once a level in several sections): each text is
    // taken apart once.
    QHash<QString, int> known;
    int section = -1;
    int header = -1;
    // Comments since the last line that isn't one: a header or data line
    // behind them puts them inside their section.
    size_t pending = 0;
    for (int i = 0; i < lines.size(); ++i) {
        const QString& text = lines.at(i);
        const QString trimmed = text.trimmed();
        const int number = i + 1;
        if (trimmed.isEmpty())
            continue;
        if (trimmed == QLatin1String("\x1a")) {
            m_endMark = true;
            continue;
        }
        m_endMark = false;
        if (isComment(text)) {
            m_comments.push_back({ number, text,
                section < 0 ? QString() : m_sections.at(size_t(section)).key, false });
            continue;
        }
        const bool sectionLine = text.startsWith(QLatin1Char('*'));
        for (; pending < m_comments.size(); ++pending)
            m_comments[pending].inside = !sectionLine;
        if (sectionLine) {
            m_sections.push_back({ text.left(4), titleOf(text), number });
            section = int(m_sections.size()) - 1;
            header = -1;
            // The experiment line holds the identity and the title.
            if (text.startsWith(QLatin1String("*EXP")))
                m_lines.push_back({ number, text, section, -1 });
            continue;
        }
        if (text.startsWith(QLatin1Char('@'))) {
            auto it = known.find(text);
            if (it == known.end()) {
                m_headers.push_back({ groupHeader(text), text, number });
                it = known.insert(text, int(m_headers.size()) - 1);
            }
            header = it.value();
            continue;
        }
        m_lines.push_back({ number, text, section, header });
    }
}

QString FileLayout::groupKey(const LayoutLine& line) const
{
    if (line.header >= 0)
        return m_headers.at(size_t(line.header)).group.key;
    if (line.section < 0)
        return QStringLiteral("|");
    const LayoutSection& s = m_sections.at(size_t(line.section));
    return s.number == line.number ? expLine : s.key + QLatin1Char('|');
}

QString FileLayout::sectionTitle(const LayoutLine& line) const
{
    return line.section < 0 ? QString() : m_sections.at(size_t(line.section)).title;
}

std::vector<LayoutCell> FileLayout::cells(const LayoutLine& line) const
{
    std::vector<LayoutCell> out;
    if (line.header < 0) {
        if (line.section >= 0 && m_sections.at(size_t(line.section)).number == line.number) {
            // "*EXP.DETAILS: <identity> <title>"
            QString rest
                = line.text.startsWith(expLine) ? line.text.mid(expLine.size()) : line.text.mid(4);
            rest = rest.trimmed();
            const int blank = int(rest.indexOf(QLatin1Char(' ')));
            out.push_back(
                { nullptr, QStringLiteral("identity"), blank < 0 ? rest : rest.left(blank) });
            out.push_back(
                { nullptr, QStringLiteral("title"), blank < 0 ? QString() : rest.mid(blank + 1) });
            return out;
        }
        out.push_back({ nullptr, QStringLiteral("line"), line.text });
        return out;
    }
    const GroupHeader& group = m_headers.at(size_t(line.header)).group;
    if (group.columns.empty()) {
        out.push_back({ nullptr, group.key.mid(1), line.text });
        return out;
    }
    out.reserve(group.columns.size());
    for (const HeaderColumn& column : group.columns)
        out.push_back({ &column, column.name, cellAt(line.text, column) });
    return out;
}

} // namespace quillon::format
