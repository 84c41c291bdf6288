#include "format/HeaderColumns.h"

#include <QSet>

namespace quillon::format {

namespace {

// The labels of the simulation control and automatic management groups.
bool isGroupLabel(const QString& name)
{
    static const QSet<QString> labels { QStringLiteral("GENERAL"), QStringLiteral("OPTIONS"),
        QStringLiteral("METHODS"), QStringLiteral("MANAGEMENT"), QStringLiteral("OUTPUTS"),
        QStringLiteral("PLANTING"), QStringLiteral("IRRIGATION"), QStringLiteral("NITROGEN"),
        QStringLiteral("RESIDUES"), QStringLiteral("HARVEST"), QStringLiteral("SIMDATES") };
    return labels.contains(name);
}

// The columns the writer puts left-aligned: level names, identifiers and
// codes of free length, and the simulation groups' labels.
bool leftAligned(const QString& name)
{
    static const QSet<QString> names { QStringLiteral("TNAME"), QStringLiteral("CNAME"),
        QStringLiteral("ID_FIELD"), QStringLiteral("WSTA"), QStringLiteral("SLTX"),
        QStringLiteral("ID_SOIL"), QStringLiteral("FLNAME"), QStringLiteral("SANAME"),
        QStringLiteral("ICNAME"), QStringLiteral("PLNAME"), QStringLiteral("IRNAME"),
        QStringLiteral("FERNAME"), QStringLiteral("RENAME"), QStringLiteral("CHNAME"),
        QStringLiteral("ENVNAME"), QStringLiteral("HNAME"), QStringLiteral("SNAME"),
        QStringLiteral("SMODEL"), QStringLiteral("FWFILE"), QStringLiteral("FONAME") };
    return names.contains(name) || isGroupLabel(name);
}

// The treatment number is two wide (the rotation number follows at once);
// every other level takes three positions.
int levelWidth(const QString& key)
{
    return key == QLatin1String("@N R") ? 2 : 3;
}

struct Word {
    QString name;
    int start; // first position of the word, its leading dots included
    int end; // last position
};

bool isDot(QChar c)
{
    return c == QLatin1Char('.');
}

void addWord(std::vector<Word>& words, const QString& line, int from, int to)
{
    QString name = line.mid(from, to - from);
    while (name.startsWith(QLatin1Char('.')))
        name.remove(0, 1);
    while (name.endsWith(QLatin1Char('.')))
        name.chop(1);
    if (!name.isEmpty())
        words.push_back({ name, from + 1, to });
}

// The words of a header: runs of characters other than blanks. Two or more
// dots between two names ("CHT..CHNAME") split a run, the dots going with
// the second name, whose cell they fill.
std::vector<Word> words(const QString& line)
{
    std::vector<Word> out;
    const int n = int(line.size());
    int i = 0;
    while (i < n) {
        while (i < n && line.at(i).isSpace())
            ++i;
        int j = i;
        while (j < n && !line.at(j).isSpace())
            ++j;
        int from = i;
        for (int k = i; k < j;) {
            if (!isDot(line.at(k))) {
                ++k;
                continue;
            }
            int dots = k;
            while (dots < j && isDot(line.at(dots)))
                ++dots;
            if (dots - k >= 2 && k > from && dots < j) {
                addWord(out, line, from, k);
                from = k;
            }
            k = dots;
        }
        if (from < j)
            addWord(out, line, from, j);
        i = j;
    }
    return out;
}

// The environment modifications: each variable is a pair, a factor letter
// right-aligned in 2 positions and its adjustment right-aligned in 4, under
// one name. The name of the pair goes to the adjustment.
void addPair(std::vector<HeaderColumn>& columns, const QString& name, int& lastEnd)
{
    columns.push_back({ name + QStringLiteral(" factor"), lastEnd + 1, lastEnd + 2, false, false });
    columns.push_back({ name, lastEnd + 3, lastEnd + 6, false, true });
    lastEnd += 6;
}

} // namespace

GroupHeader groupHeader(const QString& headerLine)
{
    GroupHeader header;
    const std::vector<Word> w = words(headerLine);
    const QString first = w.empty() ? headerLine.trimmed()
                                    : headerLine.mid(w[0].start - 1, w[0].end - w[0].start + 1);
    if (w.empty() || first.size() > 2 || (first.size() == 1 && w.size() == 1)) {
        header.key = first;
        return header;
    }
    size_t next = 0;
    int lastEnd = 0;
    if (first.size() == 1) {
        // "@ PAREA": no level; the first column begins the line.
        next = 1;
        header.key = first + QLatin1Char(' ') + w[1].name;
    } else {
        header.key = w.size() > 1 ? first + QLatin1Char(' ') + w[1].name : first;
        lastEnd = levelWidth(header.key);
        header.columns.push_back({ first, 1, lastEnd, true, false });
        next = 1;
    }
    const bool pairs = header.key == QLatin1String("@E ODATE");
    for (size_t i = next; i < w.size(); ++i) {
        const bool last = i + 1 == w.size();
        if (pairs && i > next && !last) {
            addPair(header.columns, w[i].name, lastEnd);
            continue;
        }
        HeaderColumn c { w[i].name, lastEnd + 1, 0, isGroupLabel(w[i].name), false };
        if (!last) {
            const bool nextLeft = leftAligned(w[i + 1].name);
            c.end = leftAligned(c.name) && nextLeft ? w[i + 1].start - 1 : w[i].end;
            c.end = std::max(c.end, c.start);
        }
        header.columns.push_back(c);
        lastEnd = c.end;
    }
    return header;
}

QString cellAt(const QString& line, const HeaderColumn& column)
{
    if (column.start > line.size())
        return QString();
    return line.mid(column.start - 1, column.end ? column.end - column.start + 1 : -1);
}

} // namespace quillon::format
