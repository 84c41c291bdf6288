#include "LargeExperiment.h"

#include "format/Columns.h"
#include "format/Cp1252.h"
#include "format/TextLines.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <vector>

using namespace quillon;

namespace bench {

namespace {

struct Section {
    QString line;
    QStringList body;
};

// The level at the start of a data line (" 1 ", "12 "), or 0.
int levelOf(const QString& line)
{
    static const QRegularExpression level(QStringLiteral("^ ?(\\d{1,2}) "));
    const QRegularExpressionMatch m = level.match(line);
    return m.hasMatch() ? m.captured(1).toInt() : 0;
}

QString withLevel(const QString& line, int level)
{
    return format::levelColumn(level) + line.mid(3);
}

// Event rows stand under a header with a date column in its first words;
// planting has one row a level and isn't one.
bool isEventHeader(const QString& header)
{
    return header.left(9).contains(QLatin1String("DATE"))
        && !header.startsWith(QLatin1String("@P"));
}

} // namespace

QByteArray generateLarge(const QByteArray& sample, int repeat, int& eventRows)
{
    QStringList lines = format::splitLines(sample);
    QStringList out;
    std::vector<Section> sections;
    for (const QString& line : lines) {
        if (line.startsWith(QLatin1Char('*')))
            sections.push_back({ line, {} });
        else if (!sections.empty() && !line.trimmed().isEmpty())
            sections.back().body << line;
    }
    eventRows = 0;
    for (const Section& s : sections) {
        if (!out.isEmpty())
            out << QString();
        out << s.line;
        if (s.line.startsWith(QLatin1String("*EXP")) || s.line.startsWith(QLatin1String("*GEN"))) {
            out << s.body;
            continue;
        }
        if (s.line.startsWith(QLatin1String("*TRE"))) {
            out << s.body.first();
            for (int t = 1; t <= 99; ++t) {
                QString row = format::twoWide(t) + QStringLiteral(" 1 1 0 ")
                    + QStringLiteral("Generated treatment %1").arg(t).leftJustified(25);
                for (int f = 0; f < 13; ++f)
                    row += format::rightJustified(QString::number((t + f - 1) % 99 + 1), 3);
                out << row;
            }
            continue;
        }
        int top = 0;
        for (const QString& line : s.body)
            top = std::max(top, levelOf(line));
        if (top == 0) {
            out << s.body;
            continue;
        }
        // Sections read with the plain section loop keep their one header
        // in front; grouped sections repeat their headers with the levels.
        const bool grouped
            = s.body.mid(1).filter(QRegularExpression(QStringLiteral("^@"))).size() > 0;
        const QStringList block = grouped ? s.body : s.body.mid(1);
        if (!grouped)
            out << s.body.first();
        for (int copy = 0; copy * top < 99; ++copy) {
            QString header;
            for (const QString& line : block) {
                if (line.startsWith(QLatin1Char('@'))) {
                    header = line;
                    out << line;
                    continue;
                }
                const int level = levelOf(line);
                if (level == 0) {
                    out << line;
                    continue;
                }
                const int renumbered = level + copy * top;
                if (renumbered > 99)
                    continue;
                const bool event = isEventHeader(grouped ? header : s.body.first());
                const int date = line.mid(3, 5).toInt();
                for (int k = 0; k < (event ? repeat : 1); ++k) {
                    QString row = withLevel(line, renumbered);
                    if (event && date > 0) {
                        row.replace(3, 5,
                            QStringLiteral("%1").arg(date + k % 200, 5, 10, QLatin1Char('0')));
                        ++eventRows;
                    }
                    out << row;
                }
            }
        }
    }
    QByteArray bytes;
    for (const QString& line : out)
        bytes += format::toCp1252(line) + "\r\n";
    return bytes + "\x1A\r\n";
}

} // namespace bench
