#pragma once

// Damages an experiment file the ways real files get damaged, and some ways
// they don't: flipped bytes, cut-off ends, lines moved or doubled, junk and
// control characters put in, very long lines, other line ends. Deterministic
// for a given generator, so that a failure can be replayed from its seed.

#include <QByteArray>
#include <QList>

#include <random>

namespace quillon::test {

class Mutator {
public:
    explicit Mutator(unsigned seed)
        : m_random(seed)
    {
    }

    // One to four damages of `bytes`.
    QByteArray mutate(QByteArray bytes)
    {
        const int count = 1 + below(4);
        for (int k = 0; k < count; ++k)
            bytes = once(bytes);
        return bytes;
    }

    int below(int n) { return n <= 0 ? 0 : int(m_random() % unsigned(n)); }

private:
    QByteArray once(QByteArray b)
    {
        switch (below(9)) {
        case 0: // flip bytes
            for (int k = 1 + below(8); k > 0 && !b.isEmpty(); --k)
                b[below(int(b.size()))] = char(below(256));
            return b;
        case 1: // cut the file short
            return b.left(below(int(b.size()) + 1));
        case 2: { // move a line
            QList<QByteArray> lines = b.split('\n');
            if (lines.size() > 1)
                lines.move(below(int(lines.size())), below(int(lines.size())));
            return lines.join('\n');
        }
        case 3: { // double a run of lines
            QList<QByteArray> lines = b.split('\n');
            const int from = below(int(lines.size()));
            const QList<QByteArray> run = lines.mid(from, 1 + below(12));
            for (int k = int(run.size()) - 1; k >= 0; --k)
                lines.insert(from, run.at(k));
            return lines.join('\n');
        }
        case 4: // junk from the characters that matter to the format
            return b.insert(below(int(b.size()) + 1), junk(1 + below(40)));
        case 5: // a very long line
            return b.insert(
                below(int(b.size()) + 1), QByteArray(10000 + below(5000), pick("9 x-.\t")));
        case 6: { // other line ends
            const int kind = below(3);
            b.replace("\r\n", kind == 0 ? "\n" : kind == 1 ? "\r" : "\n\r");
            return b;
        }
        case 7: { // a line cut off in its columns
            QList<QByteArray> lines = b.split('\n');
            if (!lines.isEmpty()) {
                QByteArray& line = lines[below(int(lines.size()))];
                line = line.left(below(int(line.size()) + 1));
            }
            return lines.join('\n');
        }
        default: { // numbers out of range in a column
            static const char* const numbers[]
                = { "99999", "-99999", "32768", "-32769", "1e308", "1e-308", "nan", "inf", "0",
                      "-0", "2147483648", "9999999999999999999999", ".", "-", "+", "1.2.3" };
            const QByteArray n = numbers[below(int(std::size(numbers)))];
            const int at = below(int(b.size()) + 1);
            return b.replace(at, std::min<int>(int(n.size()), int(b.size()) - at), n);
        }
        }
    }

    char pick(const char* from) { return from[below(int(qstrlen(from)))]; }

    QByteArray junk(int size)
    {
        static const char interesting[] = { '\0', '\t', '\r', '\n', '\x1A', '*', '@', '!', ' ', '-',
            '.', '9', '0', '\x7F', '\x80', '\x81', '\xA0', '\xE9', '\xFC', '\xFF' };
        QByteArray out;
        for (int k = 0; k < size; ++k)
            out += below(2) ? interesting[below(int(sizeof interesting))] : char(below(256));
        // Now and then a line that looks like a section or a group.
        if (below(3) == 0) {
            static const char* const keys[] = { "\r\n*TREATMENTS\r\n", "\r\n@N GENERAL\r\n",
                "\r\n*SIMULATION\r\n", "\r\n@  AUTOMATIC\r\n", "\r\n*EXP.DETAILS: \r\n",
                "\r\n@SITE\r\n", "\r\n@ PAREA\r\n", "\r\n*IRRIGATION\r\n", "\r\n*FIELDS\r\n",
                "\r\n*INITIAL\r\n", "\r\n*SOIL\r\n", "\r\n@NOTES\r\n" };
            out += keys[below(int(std::size(keys)))];
        }
        return out;
    }

    std::mt19937 m_random;
};

} // namespace quillon::test
