#include "reference/CropLookups.h"

#include "app/AppState.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/Columns.h"
#include "format/TextLines.h"
#include "reference/LookupText.h"
#include "reference/SuiteFiles.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace quillon::reference {

namespace {

using format::mid;
using format::trimSpaces;

struct Crop {
    QString code;
    QString name;
    QString folder;
    QString cultivarFile;
};

bool skippedCultivarLine(const QString& line)
{
    if (line.startsWith(QLatin1Char('!')) || line.startsWith(QLatin1Char('@'))
        || line.startsWith(QLatin1Char('*')) || line.startsWith(QLatin1Char('$')))
        return true;
    return trimSpaces(line).isEmpty();
}

void readCultivarFile(const QString& cropCode, const QString& path)
{
    for (const QString& line : readSuiteLines(path)) {
        if (skippedCultivarLine(line))
            continue;
        const QString number = trimSpaces(mid(line, 1, 6));
        if (number.isEmpty())
            continue;
        QString description = withoutApostrophes(trimSpaces(mid(line, 7, 16)));
        if (description.isEmpty())
            description = QStringLiteral("No description");
        database::insertRow(QStringLiteral("CropCodesLookup"),
            { { QStringLiteral("CODE"), textOrNull(cropCode) }, { QStringLiteral("CROP"), number },
                { QStringLiteral("Description"), description } });
    }
}

} // namespace

QString cultivarFileOfModel(const QString& cropCode, const QString& path)
{
    const QString p = trimSpaces(path);
    if (p.right(5) == QLatin1String("EXE I"))
        return cropCode + mid(p.right(14), 3, 6) + QStringLiteral(".CUL");
    if (p.indexOf(QLatin1Char(' '), 4) >= 0) {
        const QString last = p.mid(p.lastIndexOf(QLatin1Char(' ')) + 1);
        if (last.size() > 3)
            return cropCode + (last + QStringLiteral(".CUL")).mid(2);
    }
    return QString();
}

QString folderOfData(const QString& path)
{
    const int separator
        = int(std::max(path.lastIndexOf(QLatin1Char('\\')), path.lastIndexOf(QLatin1Char('/'))));
    return separator < 0 ? QString() : path.mid(separator + 1);
}

void CreateCropLookup()
{
    database::Transaction transaction;
    try {
        std::vector<Crop> crops;
        QSqlQuery q
            = database::select(QStringLiteral("SELECT Code, Description FROM CodeLookup WHERE Type "
                                              "= 'Crop and Weed Species' ORDER BY Code"));
        while (q.next())
            crops.push_back(
                { trimSpaces(q.value(0).toString()), trimSpaces(q.value(1).toString()), {}, {} });
        q.finish();

        // A crop's profile rows are "<crop>D" (its data folder) and "M<crop>"
        // (its model); the profile is read once, and the last row of a kind
        // wins.
        std::multimap<QString, Crop*> byData;
        std::multimap<QString, Crop*> byModel;
        for (Crop& crop : crops) {
            byData.emplace((crop.code + QLatin1Char('D')).toUpper(), &crop);
            byModel.emplace((QLatin1Char('M') + crop.code).toUpper(), &crop);
        }
        QSqlQuery rows
            = database::select(QStringLiteral("SELECT Code, Path FROM TERVAPRO ORDER BY rowid"));
        while (rows.next()) {
            const QString code = rows.value(0).toString().toUpper();
            const QString path = rows.value(1).toString();
            for (auto [at, end] = byData.equal_range(code); at != end; ++at)
                at->second->folder = folderOfData(path);
            for (auto [at, end] = byModel.equal_range(code); at != end; ++at)
                at->second->cultivarFile = cultivarFileOfModel(at->second->code, path);
        }
        rows.finish();

        for (const Crop& crop : crops) {
            if (crop.cultivarFile.isEmpty())
                continue;
            try {
                database::insertRow(QStringLiteral("CropLookup"),
                    { { QStringLiteral("CODE"), textOrNull(crop.code) },
                        { QStringLiteral("Name"), textOrNull(crop.name) },
                        { QStringLiteral("TERVA_Folder"), textOrNull(crop.folder) },
                        { QStringLiteral("CultivarFile"), crop.cultivarFile } });
            } catch (const RuntimeError& e) {
                if (e.number() != err::DuplicateKey)
                    throw;
                msgBox(QStringLiteral(
                           "Please correct the file TERVAPRO.V48. Repeated codes are not permitted "
                           "in the file. Please change or remove one code '")
                        + crop.code + QStringLiteral("D") + QStringLiteral("'."),
                    MsgButtons::OK, MsgIcon::Critical, QStringLiteral("Error"));
            }
        }
        database::exec(QStringLiteral("DELETE FROM CropLookup WHERE [Name] IS NULL"));
        database::exec(QStringLiteral("DELETE FROM CropLookup WHERE [Name] = ''"));
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" CreateCropLookup."));
        endProgram();
    }
    transaction.commit();
}

void CropCodesLookup()
{
    database::Transaction transaction;
    const QString folder = locationFolder(state().GenotypeFolder);

    std::vector<std::pair<QString, QString>> crops;
    QSqlQuery q = database::select(
        QStringLiteral("SELECT CODE, CultivarFile FROM CropLookup ORDER BY rowid"));
    while (q.next()) {
        const QVariant file = q.value(1);
        crops.emplace_back(
            q.value(0).toString(), file.isNull() ? QStringLiteral("None") : file.toString());
    }
    q.finish();

    for (const auto& [code, fileName] : crops) {
        const QString path = findIn(folder, fileName);
        if (path.isEmpty())
            continue;
        try {
            readCultivarFile(code, path);
        } catch (const RuntimeError&) {
            msgBox(QStringLiteral("Error in file ") + path
                    + QStringLiteral(" in CropCodesLookup/module."),
                MsgButtons::OK, MsgIcon::None, QStringLiteral("Error"));
        }
    }

    // Fallow has no cultivar file; it is always offered. A cultivar file
    // that lists it already has put it there.
    const RuntimeError fallow
        = database::tryExec(QStringLiteral("INSERT INTO CropCodesLookup (CODE, Description, CROP) "
                                           "VALUES ('FA', ' FALLOW', 'IB0001')"));
    if (fallow.number() != 0 && fallow.number() != err::DuplicateKey)
        reportError(fallow.text(), QStringLiteral(" in CropCodesLookup/module."));
    database::tryExec(QStringLiteral("DELETE FROM CropCodesLookup WHERE Crop IS NULL"));
    database::tryExec(QStringLiteral("DELETE FROM CropCodesLookup WHERE Crop = ''"));
    transaction.commit();
}

} // namespace quillon::reference
