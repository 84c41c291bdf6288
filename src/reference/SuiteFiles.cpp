#include "reference/SuiteFiles.h"

#include "app/AppState.h"
#include "format/Cp1252.h"
#include "format/TextLines.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <filesystem>

#ifdef Q_OS_UNIX
#include <dirent.h>
#include <sys/stat.h>
#endif
#include <vector>

namespace quillon::reference {

namespace {

struct Entry {
    QString name;
    bool isDir;
};

struct Listing {
    std::vector<Entry> entries;
    // Case-folded name -> entry, made on the first look-up: listing by
    // pattern doesn't need it.
    QHash<QString, int> byFoldedName;
    bool indexed = false;

    const Entry* find(const QString& name)
    {
        if (!indexed) {
            byFoldedName.reserve(int(entries.size()));
            for (int i = 0; i < int(entries.size()); ++i) {
                // Names that differ only in case on a case-aware disk: the
                // first in name order wins, whatever order the disk lists.
                auto it = byFoldedName.find(entries[i].name.toCaseFolded());
                if (it == byFoldedName.end())
                    byFoldedName.insert(entries[i].name.toCaseFolded(), i);
                else if (entries[i].name < entries[*it].name)
                    *it = i;
            }
            indexed = true;
        }
        const auto hit = byFoldedName.constFind(name.toCaseFolded());
        return hit == byFoldedName.constEnd() ? nullptr : &entries[*hit];
    }
};

int g_cacheDepth = 0;

QHash<QString, Listing>& listingCache()
{
    static QHash<QString, Listing> cache;
    return cache;
}

Listing readListing(const QString& folder)
{
    // Read the folder directly: the entry types come with the names, so a
    // folder of thousands of weather files costs no stat per file.
    Listing listing;
#ifdef Q_OS_UNIX
    DIR* dir = opendir(QFile::encodeName(folder).constData());
    if (!dir)
        return listing;
    while (const dirent* entry = readdir(dir)) {
        const char* name = entry->d_name;
        if (name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0)))
            continue;
        bool isDir = entry->d_type == DT_DIR;
        if (entry->d_type == DT_UNKNOWN || entry->d_type == DT_LNK) {
            struct stat info;
            const QByteArray full = QFile::encodeName(folder) + '/' + name;
            isDir = ::stat(full.constData(), &info) == 0 && S_ISDIR(info.st_mode);
        }
        listing.entries.push_back({ QFile::decodeName(name), isDir });
    }
    closedir(dir);
#else
    std::error_code error;
    std::filesystem::directory_iterator it(QFile::encodeName(folder).toStdString(), error);
    for (; !error && it != std::filesystem::directory_iterator(); it.increment(error)) {
        std::error_code typeError;
        const bool isDir = it->is_directory(typeError);
        listing.entries.push_back(
            { QFile::decodeName(QByteArray::fromStdString(it->path().filename().string())),
                isDir });
    }
#endif
    return listing;
}

// The listing of a folder: remembered while a ListingCache lives.
Listing& listingOf(const QString& folder)
{
    static Listing scratch;
    if (g_cacheDepth == 0) {
        scratch = readListing(folder);
        return scratch;
    }
    QHash<QString, Listing>& cache = listingCache();
    auto it = cache.find(folder);
    if (it == cache.end())
        it = cache.insert(folder, readListing(folder));
    return *it;
}

QString slashed(QString path)
{
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return path;
}

// A wildcard match without regard to case: "*" any run, "?" one character.
bool wildcardMatch(const QString& name, const QString& pattern)
{
    int n = 0;
    int p = 0;
    int starP = -1;
    int starN = 0;
    while (n < name.size()) {
        if (p < pattern.size()
            && (pattern.at(p) == QLatin1Char('?')
                || pattern.at(p).toCaseFolded() == name.at(n).toCaseFolded())) {
            ++n;
            ++p;
        } else if (p < pattern.size() && pattern.at(p) == QLatin1Char('*')) {
            starP = p++;
            starN = n;
        } else if (starP >= 0) {
            p = starP + 1;
            n = ++starN;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern.at(p) == QLatin1Char('*'))
        ++p;
    return p == pattern.size();
}

bool isAsciiLetter(QChar c)
{
    const ushort u = c.unicode();
    return (u >= 'A' && u <= 'Z') || (u >= 'a' && u <= 'z');
}

// A drive-letter path: a letter in the first column and, in the second, a
// colon or any character that can't continue a folder name.
bool isDriveForm(const QString& path)
{
    if (path.isEmpty() || !isAsciiLetter(path.at(0)))
        return false;
    if (path.size() == 1)
        return true;
    const QChar second = path.at(1);
    return !(second.isLetterOrNumber() || second == QLatin1Char('_') || second == QLatin1Char('-')
        || second == QLatin1Char('.') || second == QLatin1Char('/'));
}

QString driveRoot()
{
    const QString root = qEnvironmentVariable("QUILLON_DRIVE_ROOT");
    return root.isEmpty() ? QStringLiteral("/") : root;
}

} // namespace

ListingCache::ListingCache()
{
    ++g_cacheDepth;
}

ListingCache::~ListingCache()
{
    if (--g_cacheDepth == 0)
        listingCache().clear();
}

QString findPath(const QString& path)
{
    if (path.isEmpty())
        return {};
    QString wanted = slashed(path);
    while (wanted.size() > 1 && wanted.endsWith(QLatin1Char('/')))
        wanted.chop(1);
    if (QFileInfo::exists(wanted))
        return wanted;
    wanted = QDir::cleanPath(QDir::current().absoluteFilePath(wanted));

    // Walk from the root; a component that isn't there as written is looked
    // up in its folder's listing.
    QString current;
    QString rest = wanted;
    if (rest.startsWith(QLatin1Char('/'))) {
        current = QStringLiteral("/");
        rest = rest.mid(1);
    } else {
        // A drive on a system that has them: "X:/…".
        const int slash = int(rest.indexOf(QLatin1Char('/')));
        current = rest.left(slash + 1);
        rest = rest.mid(slash + 1);
    }
    const QStringList parts = rest.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (const QString& part : parts) {
        const QString exact = current + part;
        if (QFileInfo::exists(exact)) {
            current = exact + QLatin1Char('/');
            continue;
        }
        const Entry* hit = listingOf(current).find(part);
        if (!hit)
            return {};
        current += hit->name + QLatin1Char('/');
    }
    current.chop(1);
    return current.isEmpty() ? QStringLiteral("/") : current;
}

QString findIn(const QString& folder, const QString& name)
{
    if (folder.isEmpty())
        return {};
    return findPath(slashed(folder) + QLatin1Char('/') + slashed(name));
}

QStringList listMatching(const QString& folder, const QString& pattern)
{
    QStringList names;
    const QString found = findPath(folder);
    if (found.isEmpty() || !QFileInfo(found).isDir())
        return names;
    for (const Entry& entry : listingOf(found).entries) {
        if (!entry.isDir && wildcardMatch(entry.name, pattern))
            names << entry.name;
    }
    std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
        const int c = a.compare(b, Qt::CaseInsensitive);
        return c != 0 ? c < 0 : a < b;
    });
    return names;
}

QString joinPath(const QString& folder, const QString& name)
{
    if (folder.isEmpty())
        return name;
    if (folder.endsWith(QLatin1Char('/')) || folder.endsWith(QLatin1Char('\\')))
        return folder + name;
    return folder + QDir::separator() + name;
}

QString locationText(const QString& path)
{
    const QString p = format::trimSpaces(path);
    if (p.startsWith(QLatin1Char('/')) || !isDriveForm(p))
        return p;
    return p.left(1) + QLatin1Char(':') + format::trimSpaces(p.mid(2));
}

QString locationFolder(const QString& locationText)
{
    const QString text = format::trimSpaces(locationText);
    if (text.isEmpty())
        return {};
    const QString dataFolder = slashed(state().DataFolder);

    if (text.startsWith(QLatin1Char('/'))) {
        const QString found = findPath(text);
        return found.isEmpty() ? text : found;
    }
    if (!(text.size() >= 2 && isAsciiLetter(text.at(0)) && text.at(1) == QLatin1Char(':'))) {
        const QString candidate = dataFolder + QLatin1Char('/') + slashed(text);
        const QString found = findPath(candidate);
        return found.isEmpty() ? candidate : found;
    }

    // A drive path: first inside the suite, from its folder name on.
    const QStringList parts = slashed(text.mid(2)).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    QString inSuite;
    for (int i = 0; i < parts.size(); ++i) {
        if (parts.at(i).compare(state().SuiteFolderName, Qt::CaseInsensitive) == 0) {
            inSuite = dataFolder;
            for (int j = i + 1; j < parts.size(); ++j)
                inSuite += QLatin1Char('/') + parts.at(j);
            break;
        }
    }
    if (!inSuite.isEmpty()) {
        const QString found = findPath(inSuite);
        if (!found.isEmpty())
            return found;
    }
    QString asWritten = slashed(driveRoot());
    for (const QString& part : parts) {
        if (!asWritten.endsWith(QLatin1Char('/')))
            asWritten += QLatin1Char('/');
        asWritten += part;
    }
    const QString found = findPath(asWritten);
    if (!found.isEmpty())
        return found;
    return inSuite.isEmpty() ? asWritten : inSuite;
}

RuntimeError openFailure(const QString& path)
{
    const QFileInfo info(path);
    if (path.isEmpty() || !info.exists())
        return RuntimeError(err::FileNotFound, QStringLiteral("File not found"));
    if (info.isDir())
        return RuntimeError(75, QStringLiteral("Path/File access error"));
    return RuntimeError(70, QStringLiteral("Permission denied"));
}

QStringList readSuiteLines(const QString& path)
{
    QFile file(path);
    if (path.isEmpty() || QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly))
        throw openFailure(path);
    return format::splitLines(file.readAll());
}

QString readFirstLine(const QString& path)
{
    QFile file(path);
    if (path.isEmpty() || QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly))
        throw openFailure(path);
    QByteArray bytes;
    while (!file.atEnd()) {
        const QByteArray chunk = file.read(512);
        if (chunk.isEmpty())
            break;
        const qsizetype start = bytes.size();
        bytes += chunk;
        for (qsizetype i = start; i < bytes.size(); ++i) {
            if (bytes.at(i) == '\r' || bytes.at(i) == '\n')
                return format::fromCp1252(bytes.left(i));
        }
    }
    return format::fromCp1252(bytes);
}

} // namespace quillon::reference
