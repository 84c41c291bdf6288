#include "app/ExpIdentity.h"

#include "app/AppState.h"
#include "app/RuntimeError.h"
#include "database/Sql.h"
#include "format/Columns.h"
#include "format/NumberText.h"

#include <QDir>
#include <QSqlRecord>

#include <cmath>

namespace quillon {

namespace {

int lastSeparator(const QString& path)
{
    for (int i = path.size() - 1; i >= 0; --i) {
        if (isPathSeparator(path.at(i)))
            return i;
    }
    return -1;
}

QString sep()
{
    return QString(QDir::separator());
}

// A whole number from 0 up written by a box, or -1.
int wholeNumber(const QString& text)
{
    if (!format::isNumeric(text))
        return -1;
    const double value = text.trimmed().toDouble();
    if (value < 0)
        return -1;
    return static_cast<int>(std::floor(value));
}

QString twoDigits(int value)
{
    return QStringLiteral("%1").arg(value % 100, 2, 10, QLatin1Char('0'));
}

QString text(const QSqlQuery& q, const char* column)
{
    const QVariant v = q.value(QLatin1String(column));
    return v.isNull() ? QString() : v.toString();
}

// A non-null empty string binds as a zero-length text rather than NULL.
QVariant textValue(const QString& value)
{
    return value.isNull() ? QStringLiteral("") : value;
}

// Edits the first row of a one-row table, or adds the row when there is none.
void storeFirstRow(const QString& table, const database::Values& values)
{
    if (database::rowCount(table) == 0) {
        database::insertRow(table, values);
        return;
    }
    QStringList assignments;
    QVariantList params;
    for (const auto& [column, value] : values) {
        assignments << column + QStringLiteral(" = ?");
        params << value;
    }
    database::exec(QStringLiteral("UPDATE %1 SET %2 WHERE rowid = (SELECT MIN(rowid) FROM %1)")
                       .arg(table, assignments.join(QStringLiteral(", "))),
        params);
}

QSqlQuery firstRow(const QString& table)
{
    QSqlQuery q
        = database::select(QStringLiteral("SELECT * FROM %1 ORDER BY rowid LIMIT 1").arg(table));
    q.next();
    return q;
}

Crop cropOf(const QSqlQuery& q)
{
    return { text(q, "Name").trimmed(), text(q, "CODE").trimmed(),
        text(q, "TERVA_Folder").trimmed() };
}

std::optional<Crop> firstCrop(const QString& sql, const QString& key)
{
    QSqlQuery q = database::select(sql, { key });
    if (!q.next())
        return std::nullopt;
    return cropOf(q);
}

} // namespace

FileType fileTypeOf(const AppState& s)
{
    if (s.IsSequence)
        return FileType::Sequence;
    if (s.IsSeasonal)
        return FileType::Seasonal;
    if (s.IsSpatial)
        return FileType::Spatial;
    if (s.IsForecast)
        return FileType::Forecast;
    return FileType::Experimental;
}

void setFileType(AppState& s, FileType type)
{
    s.IsExperimental = type == FileType::Experimental;
    s.IsSequence = type == FileType::Sequence;
    s.IsSeasonal = type == FileType::Seasonal;
    s.IsSpatial = type == FileType::Spatial;
    s.IsForecast = type == FileType::Forecast;
    s.FileTypeLabel = QLatin1Char('(') + fileTypeWord(type) + QLatin1Char(')');
}

namespace {

// The names a file type goes by: its word in captions, its code in
// ExpDetails, and the suite folder its files are kept in.
struct FileTypeNames {
    const char* word;
    const char* code;
    const char* folder;
};

const FileTypeNames& namesOf(FileType type)
{
    // In the order of the enum's values.
    static const FileTypeNames names[] = {
        { "experimental", "", "" },
        { "sequence", "sq", "Sequence" },
        { "seasonal", "sn", "Seasonal" },
        { "spatial", "gs", "Spatial" },
        { "forecast", "fc", "YieldForecast" },
    };
    return names[static_cast<int>(type)];
}

QString nameText(const char* name)
{
    return *name ? QString::fromLatin1(name) : QString();
}

} // namespace

QString fileTypeWord(FileType type)
{
    return QString::fromLatin1(namesOf(type).word);
}

QString fileTypeName(FileType type)
{
    QString word = fileTypeWord(type);
    word[0] = word.at(0).toUpper();
    return word;
}

QString fileTypeCode(FileType type)
{
    return nameText(namesOf(type).code);
}

QString fileTypeFolder(FileType type)
{
    return nameText(namesOf(type).folder);
}

std::optional<QString> acceptRange(const QString& text, const RangeRule& rule)
{
    const QString value = text.trimmed();
    if (value.isEmpty())
        return rule.emptyDefault;
    if (!format::isNumeric(value))
        return std::nullopt;
    const double number = value.toDouble();
    if (number == -99)
        return value;
    if (number < rule.lower || (rule.hasUpper && number > rule.upper))
        return std::nullopt;
    return value;
}

RangeRule experimentCounterRule()
{
    return { 0, 0, false, QStringLiteral("1") };
}

QString checkYear(const QString& text)
{
    const QString value = text.trimmed();
    if (value.isEmpty())
        return QString();
    if (!format::isNumeric(value))
        return identity_text::fourDigitYear;
    const double year = value.toDouble();
    // The lower bound is 1921 on purpose.
    if (year < 1921 || year > 3000)
        return identity_text::fourDigitYear;
    return QString();
}

namespace {
QString checkLength(const QString& text, int length, const QString& message)
{
    const QString value = text.trimmed();
    return !value.isEmpty() && value.size() < length ? message : QString();
}
} // namespace

QString checkInstitute(const QString& text)
{
    return checkLength(text, 2, identity_text::instituteTooShort);
}
QString checkSite(const QString& text)
{
    return checkLength(text, 2, identity_text::siteTooShort);
}
QString checkExperimentNumber(const QString& text)
{
    return checkLength(text, 4, identity_text::experimentNumberTooShort);
}

QString composeExperimentNumber(const QString& year, const QString& number)
{
    const int y = wholeNumber(year);
    const int n = wholeNumber(number);
    if (y < 0 || n < 0)
        return QString();
    return twoDigits(y) + twoDigits(n);
}

YearAndNumber splitExperimentNumber(const QString& exptno)
{
    const QString value = exptno.trimmed();
    if (value.size() != 4)
        return {};
    for (QChar c : value) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return {};
    }
    const int yy = value.left(2).toInt();
    const int year = yy <= 25 ? 2000 + yy : 1900 + yy;
    return { QString::number(year), QString::number(value.mid(2).toInt()) };
}

bool isPathSeparator(QChar c)
{
    return c == QLatin1Char('/') || c == QLatin1Char('\\');
}

int doubledSeparatorAt(const QString& path)
{
    for (int i = 0; i + 1 < path.size(); ++i) {
        if (isPathSeparator(path.at(i)) && isPathSeparator(path.at(i + 1)))
            return i;
    }
    return -1;
}

QString folderOf(const QString& path)
{
    const int at = lastSeparator(path);
    return at < 0 ? QString() : path.left(at);
}

QString fileNameOf(const QString& path)
{
    return path.mid(lastSeparator(path) + 1);
}

QString experimentFilePath(const FileNameParts& parts)
{
    if (parts.INSTE.size() != 2 || parts.SITEE.size() != 2 || parts.EXPTNO.size() != 4)
        return QString();
    QString folder;
    QString extension;
    if (parts.type == FileType::Experimental) {
        folder = parts.dataFolder + sep() + parts.cropFolder;
        extension = parts.cropCode + QLatin1Char('x');
    } else {
        folder = parts.dataFolder + sep() + fileTypeFolder(parts.type);
        extension = fileTypeCode(parts.type) + QLatin1Char('x');
    }
    if (!parts.readFilePath.isEmpty())
        folder = folderOf(parts.readFilePath);
    return folder + sep() + parts.INSTE + parts.SITEE + parts.EXPTNO + QLatin1Char('.') + extension;
}

QString pathForType(const QString& path, FileType type)
{
    if (type == FileType::Experimental)
        return path;
    QString result = path;
    const int gap = doubledSeparatorAt(result);
    if (gap >= 0)
        result.replace(gap, 2, sep() + fileTypeFolder(type) + sep());
    if (result.endsWith(QLatin1String(".x"), Qt::CaseInsensitive)) {
        result.chop(2);
        result += QLatin1Char('.') + fileTypeCode(type).toUpper() + QLatin1Char('X');
    }
    return result;
}

QString captionWithFile(const QString& caption, const QString& path)
{
    return format::CaptionStem(caption) + QLatin1Char(' ') + fileNameOf(path).toUpper();
}

std::vector<Crop> cropList()
{
    std::vector<Crop> crops;
    QSqlQuery q = database::select(QStringLiteral(
        "SELECT CropLookup.NAME, CropLookup.CODE, CropLookup.TERVA_Folder FROM CropLookup "
        "INNER JOIN CodeLookup ON CropLookUp.Code = CodeLookUp.Code "
        "WHERE CodeLookUp.Type = 'Crop and Weed Species' ORDER BY CropLookup.NAME"));
    while (q.next())
        crops.push_back({ q.value(0).toString().trimmed(), q.value(1).toString().trimmed(),
            q.value(2).toString().trimmed() });
    return crops;
}

std::optional<Crop> cropNamed(const QString& name)
{
    return firstCrop(QStringLiteral("SELECT * FROM CropLookup WHERE Name = ?"), name);
}

std::optional<Crop> cropWithCode(const QString& code)
{
    return firstCrop(QStringLiteral("SELECT * FROM CropLookup WHERE CODE = ?"), code.trimmed());
}

QString checkCropFolderName(const QString& name)
{
    const QString value = name.trimmed();
    if (value.isEmpty())
        return QStringLiteral("Please enter a folder name.");
    if (value.contains(QLatin1Char('\\')) || value.contains(QLatin1Char('\''))
        || value.contains(QLatin1Char(',')))
        return QStringLiteral("A folder name cannot contain \\ , ' or ,.");
    return QString();
}

void storeCropFolder(const QString& cropName, const QString& folder)
{
    database::exec(QStringLiteral("UPDATE CropLookup SET TERVA_Folder = ? WHERE Name = ?"),
        { folder.trimmed().toUpper(), cropName });
}

const std::array<PlotField, 10>& plotFields()
{
    static const std::array<PlotField, 10> fields { {
        { "PAREA", "txtPAREA", true, false, { 0, 99999 }, &PlotDetails::PAREA },
        { "PRNO", "txtPRNO", true, true, { 0, 99999 }, &PlotDetails::PRNO },
        { "PLEN", "txtPLEN", true, false, { 0, 9999 }, &PlotDetails::PLEN },
        { "PLDR", "txtPLDR", true, true, { 0, 99999 }, &PlotDetails::PLDR },
        { "PLSP", "txtPLSP", true, true, { 0, 99999 }, &PlotDetails::PLSP },
        { "PLAY", "txtPLAY", false, false, {}, &PlotDetails::PLAY },
        { "HAREA", "txtHAREA", true, false, { 0, 9999 }, &PlotDetails::HAREA },
        { "HRNO", "txtHRNO", true, true, { 0, 99999 }, &PlotDetails::HRNO },
        { "HLEN", "txtHLEN", true, false, { 0, 99999 }, &PlotDetails::HLEN },
        { "HARM", "txtHARM", false, false, {}, &PlotDetails::HARM },
    } };
    return fields;
}

ExperimentDetails loadExperimentDetails()
{
    QSqlQuery q = firstRow(QStringLiteral("ExpDetails"));
    if (!q.isValid())
        return {};
    return { text(q, "INSTE"), text(q, "SITEE"), text(q, "EXPTNO"), text(q, "CODE"),
        text(q, "ENAME") };
}

PlotDetails loadPlotDetails()
{
    PlotDetails plot;
    QSqlQuery q = firstRow(QStringLiteral("PlotInfo"));
    if (!q.isValid())
        return plot;
    for (const PlotField& field : plotFields()) {
        plot.*field.member = field.numeric ? format::NumText(q.value(QLatin1String(field.column)))
                                           : text(q, field.column);
    }
    return plot;
}

GeneralDetails loadGeneralDetails()
{
    QSqlQuery q = firstRow(QStringLiteral("GeneralInfo"));
    if (!q.isValid())
        return {};
    return { text(q, "PEOPLE"), text(q, "ADDRESS"), text(q, "SITE") };
}

void storeExperimentDetails(const ExperimentDetails& d)
{
    storeFirstRow(QStringLiteral("ExpDetails"),
        { { QStringLiteral("INSTE"), textValue(d.INSTE) },
            { QStringLiteral("SITEE"), textValue(d.SITEE) },
            { QStringLiteral("EXPTNO"), textValue(d.EXPTNO) },
            { QStringLiteral("CODE"), textValue(d.CODE) },
            { QStringLiteral("ENAME"), textValue(d.ENAME) } });
}

void storePlotDetails(const PlotDetails& plot)
{
    database::Values values;
    for (const PlotField& field : plotFields()) {
        const QString value = (plot.*field.member).trimmed();
        QVariant stored;
        if (!field.numeric) {
            stored = textValue(plot.*field.member);
        } else if (value.isEmpty()) {
            stored = QVariant(QMetaType::fromType<double>());
        } else if (format::isNumeric(value)) {
            const double number = value.toDouble();
            stored = field.whole ? std::nearbyint(number) : number;
        } else {
            throw RuntimeError(err::TypeMismatch, QStringLiteral("Data type conversion error."));
        }
        values.emplace_back(QLatin1String(field.column), stored);
    }
    storeFirstRow(QStringLiteral("PlotInfo"), values);
}

void storeGeneralDetails(const GeneralDetails& g)
{
    storeFirstRow(QStringLiteral("GeneralInfo"),
        { { QStringLiteral("PEOPLE"), textValue(g.PEOPLE) },
            { QStringLiteral("ADDRESS"), textValue(g.ADDRESS) },
            { QStringLiteral("SITE"), textValue(g.SITE) } });
}

QString checkBeforeSave(const ExperimentDetails& details, FileType type, const QString& cropCode)
{
    if (type == FileType::Experimental && cropCode.trimmed().isEmpty())
        return identity_text::chooseCropName;
    if (details.INSTE.trimmed().isEmpty())
        return identity_text::specifyInstitute;
    if (details.SITEE.trimmed().isEmpty())
        return identity_text::specifySite;
    if (details.ENAME.trimmed().isEmpty())
        return identity_text::enterExperimentName;
    return QString();
}

} // namespace quillon
