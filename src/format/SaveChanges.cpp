#include "format/SaveChanges.h"

#include "format/FileLayout.h"
#include "format/NumberText.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <climits>
#include <deque>

namespace quillon::format {

namespace {

// A cell's value as the readers see it: blank and -99 (in any of its
// masked forms) are both the missing value; numbers are equal whatever
// their form; texts are equal whatever the runs of blanks in them.
struct CellValue {
    enum Kind { Missing, Number, Text } kind = Missing;
    double number = 0;
    QString text;
};

CellValue valueOf(const QString& cell)
{
    const QString t = cell.trimmed();
    if (t.isEmpty())
        return {};
    if (isNumeric(t)) {
        const double n = t.toDouble();
        if (n == -99)
            return {};
        return { CellValue::Number, n, QString() };
    }
    return { CellValue::Text, 0, t.simplified() };
}

bool sameValue(const CellValue& a, const CellValue& b)
{
    if (a.kind != b.kind)
        return false;
    return a.kind == CellValue::Missing || (a.kind == CellValue::Number && a.number == b.number)
        || (a.kind == CellValue::Text && a.text == b.text);
}

// The value as a key for matching lines.
QString valueKey(const QString& cell)
{
    const CellValue v = valueOf(cell);
    switch (v.kind) {
    case CellValue::Missing:
        return QString();
    case CellValue::Number:
        return QString::number(v.number, 'g', 17);
    case CellValue::Text:
        return v.text;
    }
    return QString();
}

bool isLevel(const LayoutCell& cell)
{
    return cell.column && cell.column->key && cell.name.startsWith(QLatin1Char('@'));
}

bool holdsValue(const LayoutCell& cell)
{
    return !(cell.column && cell.column->key) && valueOf(cell.text).kind != CellValue::Missing;
}

// Whether cell `i` stands against the one before it: no blank between the
// last character of the one and the first of the other.
bool touches(const std::vector<LayoutCell>& cells, size_t i)
{
    if (i == 0 || !cells[i].column || cells[i].column->attached)
        return false;
    const QString& self = cells[i].text;
    const QString& before = cells[i - 1].text;
    return !self.isEmpty() && !before.isEmpty() && !self.front().isSpace()
        && !before.back().isSpace();
}

// A comment's words: the marks and blanks in front go, since the writer
// puts its own "!" before every comment line.
QString commentKey(const QString& line)
{
    int i = 0;
    while (i < line.size() && (line.at(i).isSpace() || line.at(i) == QLatin1Char('!')))
        ++i;
    return line.mid(i).simplified();
}

// A data line of one side with what matches it to a line of the other.
struct Line {
    const LayoutLine* line;
    QString level;
    QString firstValue;
};

// The lines of one group and level on both sides.
struct Bucket {
    QString group;
    std::vector<Line> before;
    std::vector<Line> after;
};

class Comparison {
public:
    Comparison(const FileLayout& before, const FileLayout& after)
        : m_before(before)
        , m_after(after)
    {
    }

    std::vector<SaveChange> run()
    {
        compareFileEnds();
        compareSectionLines();
        compareHeaders();
        compareGroups();
        compareComments();
        std::stable_sort(
            m_changes.begin(), m_changes.end(), [](const SaveChange& a, const SaveChange& b) {
                const int la = a.oldLine ? a.oldLine : INT_MAX;
                const int lb = b.oldLine ? b.oldLine : INT_MAX;
                return la != lb ? la < lb : a.newLine < b.newLine;
            });
        return std::move(m_changes);
    }

private:
    SaveChange& add(
        ChangeKind kind, const QString& column, const QString& oldText, const QString& newText)
    {
        SaveChange c;
        c.kind = kind;
        c.column = column;
        // A cell's blanks are its place in the line; a whole line shows as
        // it stands.
        c.oldText = column.isEmpty() ? oldText : oldText.trimmed();
        c.newText = column.isEmpty() ? newText : newText.trimmed();
        m_changes.push_back(c);
        return m_changes.back();
    }

    SaveChange& addAt(ChangeKind kind, const Line* before, const Line* after, const QString& column,
        const QString& oldText, const QString& newText)
    {
        SaveChange& c = add(kind, column, oldText, newText);
        const Line* either = before ? before : after;
        const FileLayout& side = before ? m_before : m_after;
        c.section = side.sectionTitle(*either->line);
        c.group = groupName(side.groupKey(*either->line), c.section);
        c.level = either->level;
        c.oldLine = before ? before->line->number : 0;
        c.newLine = after ? after->line->number : 0;
        return c;
    }

    // Lines under no header have no group to name; the experiment line is
    // a section and a group in one.
    static QString groupName(const QString& key, const QString& section)
    {
        return key.contains(QLatin1Char('|')) || key == section ? QString() : key;
    }

    // The level and the first value of a line; the other cells are taken
    // apart only where the two lines differ.
    static Line take(const FileLayout& side, const LayoutLine& line)
    {
        Line l { &line, QString(), QString() };
        const auto keys = [&](const LayoutCell& cell) {
            if (isLevel(cell)) {
                l.level = valueKey(cell.text);
                return false;
            }
            if (cell.column && cell.column->key)
                return false;
            l.firstValue = valueKey(cell.text);
            return true;
        };
        if (line.header >= 0 && !side.headers()[size_t(line.header)].group.columns.empty()) {
            for (const HeaderColumn& column : side.headers()[size_t(line.header)].group.columns) {
                if (keys({ &column, column.name, cellAt(line.text, column) }))
                    break;
            }
            return l;
        }
        for (const LayoutCell& cell : side.cells(line)) {
            if (keys(cell))
                break;
        }
        return l;
    }

    static bool holdsAnyValue(const FileLayout& side, const Line& l)
    {
        for (const LayoutCell& cell : side.cells(*l.line)) {
            if (holdsValue(cell))
                return true;
        }
        return false;
    }

    void compareFileEnds()
    {
        if (m_before.crLf() != m_after.crLf())
            add(ChangeKind::Layout, QStringLiteral("line ends"), QStringLiteral("other"),
                QStringLiteral("CR LF"));
        if (m_before.endMark() != m_after.endMark())
            add(ChangeKind::Layout, QStringLiteral("end mark"),
                m_before.endMark() ? QStringLiteral("0x1A") : QStringLiteral("none"),
                m_after.endMark() ? QStringLiteral("0x1A") : QStringLiteral("none"));
    }

    void compareSectionLines()
    {
        QHash<QString, const LayoutSection*> written;
        for (const LayoutSection& s : m_after.sections())
            written.insert(s.key, &s);
        for (const LayoutSection& s : m_before.sections()) {
            const LayoutSection* w = written.value(s.key);
            if (w && w->title != s.title) {
                SaveChange& c = add(ChangeKind::Layout, QString(), s.title, w->title);
                c.section = s.title;
                c.oldLine = s.number;
                c.newLine = w->number;
                c.note = QStringLiteral("section line");
            }
        }
    }

    void compareHeaders()
    {
        QHash<QString, const LayoutHeader*> written;
        for (const LayoutHeader& h : m_after.headers())
            written.insert(h.group.key, &h);
        QSet<QString> seen;
        for (const LayoutHeader& h : m_before.headers()) {
            const LayoutHeader* w = written.value(h.group.key);
            if (!w || seen.contains(h.group.key))
                continue;
            seen.insert(h.group.key);
            if (w->text.trimmed() != h.text.trimmed()) {
                SaveChange& c = add(ChangeKind::Layout, QString(), h.text, w->text);
                c.group = h.group.key;
                c.oldLine = h.number;
                c.newLine = w->number;
                c.note = QStringLiteral("group header");
            }
        }
    }

    // Groups, and sections, the written text has no line of at all; then
    // the lines of each group and level matched up.
    void compareGroups()
    {
        QSet<QString> writtenGroups;
        QSet<QString> writtenSections;
        for (const LayoutLine& line : m_after.lines())
            writtenGroups.insert(m_after.groupKey(line));
        for (const LayoutSection& s : m_after.sections())
            writtenSections.insert(s.key);

        std::vector<Bucket> buckets;
        QHash<QString, size_t> index;
        auto bucketOf = [&](const QString& group, const QString& level) -> Bucket& {
            const QString key = group + QLatin1Char('\n') + level;
            auto it = index.find(key);
            if (it == index.end()) {
                it = index.insert(key, buckets.size());
                buckets.push_back({ group, {}, {} });
            }
            return buckets[it.value()];
        };

        std::vector<Line> gone;
        std::vector<bool> sectionGone(m_before.sections().size(), true);
        for (const LayoutLine& line : m_before.lines()) {
            const QString group = m_before.groupKey(line);
            if (writtenGroups.contains(group) && line.section >= 0)
                sectionGone[size_t(line.section)] = false;
        }
        for (size_t s = 0; s < sectionGone.size(); ++s) {
            if (writtenSections.contains(m_before.sections()[s].key))
                sectionGone[s] = false;
        }
        for (const LayoutLine& line : m_before.lines()) {
            const QString group = m_before.groupKey(line);
            Line l = take(m_before, line);
            if (line.section >= 0 && sectionGone[size_t(line.section)])
                gone.push_back(std::move(l));
            else if (!writtenGroups.contains(group))
                lineGone(l, QStringLiteral("the group is not written"));
            else
                bucketOf(group, l.level).before.push_back(std::move(l));
        }
        sectionsGone(gone);
        for (const LayoutLine& line : m_after.lines()) {
            Line l = take(m_after, line);
            bucketOf(m_after.groupKey(line), l.level).after.push_back(std::move(l));
        }
        for (const Bucket& b : buckets)
            matchLines(b);
    }

    void sectionsGone(const std::vector<Line>& lines)
    {
        size_t i = 0;
        while (i < lines.size()) {
            const int section = lines[i].line->section;
            bool value = false;
            size_t j = i;
            for (; j < lines.size() && lines[j].line->section == section; ++j)
                value = value || holdsAnyValue(m_before, lines[j]);
            const LayoutSection& s = m_before.sections()[size_t(section)];
            SaveChange& c = add(
                value ? ChangeKind::Dropped : ChangeKind::Layout, QString(), QString(), QString());
            c.section = s.title;
            c.oldLine = s.number;
            c.gone = true;
            c.note
                = QStringLiteral("the whole section up to line %1").arg(lines[j - 1].line->number);
            i = j;
        }
    }

    void lineGone(const Line& l, const QString& note)
    {
        const bool value = holdsAnyValue(m_before, l);
        SaveChange& c = addAt(value ? ChangeKind::Dropped : ChangeKind::Layout, &l, nullptr,
            QString(), l.line->text, QString());
        c.note = note;
        c.gone = true;
    }

    void lineAdded(const Line& l)
    {
        const bool value = holdsAnyValue(m_after, l);
        addAt(value ? ChangeKind::Value : ChangeKind::Layout, nullptr, &l, QString(), QString(),
            l.line->text)
            .note
            = QStringLiteral("a line the file didn't have");
    }

    // Within a group and level: lines of the same first value pair up in
    // their order (rows the writer sorts come together again), then the
    // rest in their order.
    void matchLines(const Bucket& b)
    {
        std::vector<int> partner(b.before.size(), -1);
        std::vector<bool> taken(b.after.size(), false);
        QHash<QString, std::deque<size_t>> byValue;
        for (size_t j = 0; j < b.after.size(); ++j)
            byValue[b.after[j].firstValue].push_back(j);
        for (size_t i = 0; i < b.before.size(); ++i) {
            auto it = byValue.find(b.before[i].firstValue);
            if (it == byValue.end() || it->empty())
                continue;
            partner[i] = int(it->front());
            taken[it->front()] = true;
            it->pop_front();
        }
        size_t next = 0;
        for (size_t i = 0; i < b.before.size(); ++i) {
            if (partner[i] >= 0)
                continue;
            while (next < b.after.size() && taken[next])
                ++next;
            if (next == b.after.size())
                break;
            partner[i] = int(next);
            taken[next] = true;
        }
        for (size_t i = 0; i < b.before.size(); ++i) {
            if (partner[i] < 0)
                lineGone(b.before[i], QStringLiteral("the line is not written"));
            else
                compareLine(b.before[i], b.after[size_t(partner[i])]);
        }
        for (size_t j = 0; j < b.after.size(); ++j) {
            if (!taken[j])
                lineAdded(b.after[j]);
        }
    }

    // Whether two lines stand under headers of the same text.
    bool sameHeaders(const Line& before, const Line& after) const
    {
        const int b = before.line->header;
        const int a = after.line->header;
        if (b < 0 || a < 0)
            return b == a;
        return m_before.headers()[size_t(b)].text == m_after.headers()[size_t(a)].text;
    }

    void compareLine(const Line& before, const Line& after)
    {
        if (before.line->text == after.line->text && sameHeaders(before, after))
            return;
        const size_t count = m_changes.size();
        const std::vector<LayoutCell> oldCells = m_before.cells(*before.line);
        const std::vector<LayoutCell> newCells = m_after.cells(*after.line);
        std::vector<bool> used(oldCells.size(), false);
        for (size_t j = 0; j < newCells.size(); ++j) {
            const LayoutCell& cell = newCells[j];
            size_t i = 0;
            while (i < oldCells.size() && (used[i] || oldCells[i].name != cell.name))
                ++i;
            if (i == oldCells.size()) {
                const bool value = holdsValue(cell);
                addAt(value ? ChangeKind::Value : ChangeKind::Layout, &before, &after, cell.name,
                    QString(), cell.text)
                    .note
                    = QStringLiteral("a column the file didn't have");
                continue;
            }
            used[i] = true;
            compareCell(before, oldCells, i, after, newCells, j);
        }
        for (size_t i = 0; i < oldCells.size(); ++i) {
            if (used[i])
                continue;
            const LayoutCell& cell = oldCells[i];
            SaveChange& c = addAt(holdsValue(cell) ? ChangeKind::Dropped : ChangeKind::Layout,
                &before, &after, cell.name, cell.text, QString());
            c.note = QStringLiteral("the column is not written");
            c.gone = true;
        }
        if (m_changes.size() == count && before.line->text != after.line->text)
            addAt(
                ChangeKind::Layout, &before, &after, QString(), before.line->text, after.line->text)
                .note
                = QStringLiteral("blanks");
    }

    void compareCell(const Line& before, const std::vector<LayoutCell>& oldCells, size_t i,
        const Line& after, const std::vector<LayoutCell>& newCells, size_t j)
    {
        const QString& a = oldCells[i].text;
        const QString& b = newCells[j].text;
        const bool nowTouching = touches(newCells, j) && !touches(oldCells, i);
        if (a.trimmed() == b.trimmed() && !nowTouching)
            return;
        const bool same = sameValue(valueOf(a), valueOf(b));
        SaveChange& c = addAt(nowTouching || !same ? ChangeKind::Value : ChangeKind::Layout,
            &before, &after, newCells[j].name, a, b);
        if (nowTouching)
            c.note = QStringLiteral("now touches ") + newCells[j - 1].name;
    }

    // Comments keep their words but not their place: the writer puts them
    // behind their section's lines.
    void compareComments()
    {
        QHash<QString, std::deque<size_t>> written;
        const std::vector<LayoutComment>& after = m_after.comments();
        for (size_t j = 0; j < after.size(); ++j)
            written[commentKey(after[j].text)].push_back(j);
        std::vector<bool> taken(after.size(), false);
        std::vector<const LayoutComment*> lost;
        for (const LayoutComment& c : m_before.comments()) {
            auto it = written.find(commentKey(c.text));
            if (it == written.end() || it->empty()) {
                lost.push_back(&c);
                continue;
            }
            const LayoutComment& w = after[it->front()];
            taken[it->front()] = true;
            it->pop_front();
            if (w.section != c.section || w.inside != c.inside)
                addComment(ChangeKind::Layout, &c, &w).note = QStringLiteral("moved");
        }
        // What is left on both sides pairs up in order: a comment that lost
        // characters on its way.
        size_t next = 0;
        for (const LayoutComment* c : lost) {
            while (next < after.size() && taken[next])
                ++next;
            if (next < after.size()) {
                taken[next] = true;
                addComment(ChangeKind::Value, c, &after[next]);
            } else {
                // A "!" with nothing behind it holds no words to lose.
                const bool words = !commentKey(c->text).isEmpty();
                addComment(words ? ChangeKind::Dropped : ChangeKind::Layout, c, nullptr).gone
                    = true;
            }
        }
        for (size_t j = 0; j < after.size(); ++j) {
            if (!taken[j])
                addComment(ChangeKind::Value, nullptr, &after[j]);
        }
    }

    SaveChange& addComment(ChangeKind kind, const LayoutComment* before, const LayoutComment* after)
    {
        SaveChange& c = add(kind, QStringLiteral("comment"), before ? before->text : QString(),
            after ? after->text : QString());
        c.oldLine = before ? before->number : 0;
        c.newLine = after ? after->number : 0;
        return c;
    }

    const FileLayout& m_before;
    const FileLayout& m_after;
    std::vector<SaveChange> m_changes;
};

} // namespace

std::vector<SaveChange> compareForSave(const QByteArray& onDisk, const QByteArray& written)
{
    const FileLayout before(onDisk);
    const FileLayout after(written);
    return Comparison(before, after).run();
}

} // namespace quillon::format
