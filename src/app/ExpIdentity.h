#pragma once

#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace quillon {

struct AppState;

// What identifies an experiment: its type, crop, institute, site and number,
// from which the file's name is made, its title, and the plot details and
// general information of its head. The identification window binds its
// controls to these rules; nothing here needs a window.

// The five kinds of experiment file. Exactly one is set in the state while a
// document is open.
enum class FileType { Experimental = 0, Sequence = 1, Seasonal = 2, Spatial = 3, Forecast = 4 };

// The type the state's five flags name (Experimental when none is set).
FileType fileTypeOf(const AppState& s);
// Sets exactly the flag of `type` and the label "(" + word + ")" shown in the
// editors' titles.
void setFileType(AppState& s, FileType type);
// "experimental", "sequence", "seasonal", "spatial", "forecast".
QString fileTypeWord(FileType type);
// The name offered in the type list: "Experimental", "Sequence", ...
QString fileTypeName(FileType type);
// The code that stands in ExpDetails.CODE for the four non-crop types
// ("sq", "sn", "gs", "fc"); empty for Experimental, whose code is the crop's.
QString fileTypeCode(FileType type);
// The folder under the data folder where new files of a type go:
// "Sequence", "Seasonal", "Spatial", "YieldForecast"; empty for
// Experimental, whose folder is the crop's.
QString fileTypeFolder(FileType type);

// --- Messages -------------------------------------------------------------

namespace identity_text {
inline const QString invalidEntry = QStringLiteral("Invalid entry.");
inline const QString errorTitle = QStringLiteral("Error");
inline const QString fourDigitYear = QStringLiteral("Enter a four digit year.");
inline const QString experimentNumberTooShort
    = QStringLiteral("Experiment number cannot less then 4 symbols long");
inline const QString instituteTooShort
    = QStringLiteral("Institute code must be two characters long.");
inline const QString siteTooShort = QStringLiteral("Site code must be two characters long.");
inline const QString specifyInstitute
    = QStringLiteral("Specify Institute Code before saving the file.");
inline const QString specifySite = QStringLiteral("Specify Site Code before saving the file.");
// The text of the label lblPleseEntExpNam, shown when the title is missing.
inline const QString enterExperimentName = QStringLiteral("Please enter the experiment name.");
inline const QString chooseCropName = QStringLiteral("You must choose a crop name.");
inline const QString selectCrop = QStringLiteral("Please select Crop.");
inline const QString cropOnlyForExperimental
    = QStringLiteral("Crop selection is available only for Experimental files");
inline const QString fileNameRule
    = QStringLiteral("File Name = [Institute Code]+[Site Code]+[Year] + [Experimental Number]");
} // namespace identity_text

// --- Validators -----------------------------------------------------------

// The rule of the numeric boxes: trimmed; an empty box takes the default;
// -99 always passes; otherwise the text must be numeric and between the
// limits (no upper limit when `hasUpper` is false).
struct RangeRule {
    double lower = 0;
    double upper = 0;
    bool hasUpper = true;
    QString emptyDefault = QStringLiteral("-99");
};

// The accepted text of a box (trimmed, or the default for an empty box), or
// nothing when the entry is refused with identity_text::invalidEntry.
std::optional<QString> acceptRange(const QString& text, const RangeRule& rule);

// The rule of txtNumber: from 0 up, 1 when empty.
RangeRule experimentCounterRule();

// Each check returns the message to show, or an empty string when the text
// passes.
// txtYear: a number below 1921 or above 3000 (or no number) is refused; an
// empty box passes, as it makes no experiment number yet.
QString checkYear(const QString& text);
// txtINSTE, TxtSitee, TxtEXPTNO: an empty box passes; otherwise the trimmed
// text must have its full length (2, 2 and 4).
QString checkInstitute(const QString& text);
QString checkSite(const QString& text);
QString checkExperimentNumber(const QString& text);

// --- Experiment number ------------------------------------------------------

// TxtEXPTNO from txtYear and txtNumber: the last two digits of the year and
// two digits of the number ("2026" and "1" give "2601"). Empty when either is
// not a number from 0 up.
QString composeExperimentNumber(const QString& year, const QString& number);

struct YearAndNumber {
    QString year;
    QString number;
};
// The other way, for a file that was read: a four-digit EXPTNO gives the
// four-digit year (00-25 in the 2000s, 26-99 in the 1900s) and the number.
// Anything else gives two empty texts.
YearAndNumber splitExperimentNumber(const QString& exptno);

// --- The file's name --------------------------------------------------------

struct FileNameParts {
    QString INSTE;
    QString SITEE;
    QString EXPTNO;
    FileType type = FileType::Experimental;
    QString cropCode; // CropLookup.CODE of the chosen crop
    QString cropFolder; // CropLookup.TERVA_Folder of the chosen crop
    QString dataFolder;
    // A file that was read stays where it is: its path; empty for a new file.
    QString readFilePath;
};

// The full path of the experiment file: folder, separator, INSTE + SITEE +
// EXPTNO, ".", extension (the crop code + "x", or "sqx", "snx", "gsx",
// "fcx"). A new file goes to the data folder's type folder (for an
// experimental file, the crop's folder); a file that was read keeps its own.
// Empty as long as the three parts haven't their full length (2, 2, 4).
QString experimentFilePath(const FileNameParts& parts);

// A path whose crop is still missing has a doubled separator where the
// crop's folder belongs and ends in ".x". When the type of a new file changes
// to one of the four non-crop types, the type's folder takes the gap and the
// extension becomes ".SQX", ".SNX", ".GSX" or ".FCX". Other paths and the
// experimental type leave the path as it is.
QString pathForType(const QString& path, FileType type);

// Whether `c` separates a path's parts: "/" or "\".
bool isPathSeparator(QChar c);
// Where a path has two separators in a row (the first of them), or -1.
int doubledSeparatorAt(const QString& path);

// The text of a path up to its last separator ("/" or "\"), without it;
// empty when there is none.
QString folderOf(const QString& path);
// The text behind the last separator.
QString fileNameOf(const QString& path);

// A window caption rebuilt for a file: the caption up to its last hyphen
// (format::CaptionStem), a blank and the file's name in capitals.
QString captionWithFile(const QString& caption, const QString& path);

// --- Crops ------------------------------------------------------------------

struct Crop {
    QString name;
    QString code;
    QString folder; // TERVA_Folder
};

// The crops offered for an experimental file: the crops of CropLookup that
// the code table lists as species, by name.
std::vector<Crop> cropList();
// The row of CropLookup with this name, or with this code (any case).
std::optional<Crop> cropNamed(const QString& name);
std::optional<Crop> cropWithCode(const QString& code);

// A crop's folder name as frmCreateDir takes it: an empty name, or one with
// "\", "'" or ",", is refused with a message; an empty result means it
// passes.
QString checkCropFolderName(const QString& name);
// Writes the name, trimmed and in upper case, to TERVA_Folder of the crop of
// that name. Throws RuntimeError when the database refuses.
void storeCropFolder(const QString& cropName, const QString& folder);

// --- The three tables -----------------------------------------------------

struct ExperimentDetails {
    QString INSTE;
    QString SITEE;
    QString EXPTNO;
    QString CODE;
    QString ENAME;
};

// The plot details as the boxes show them: numbers as file text.
struct PlotDetails {
    QString PAREA;
    QString PRNO;
    QString PLEN;
    QString PLDR;
    QString PLSP;
    QString PLAY;
    QString HAREA;
    QString HRNO;
    QString HLEN;
    QString HARM;
};

struct GeneralDetails {
    QString PEOPLE;
    QString ADDRESS;
    QString SITE;
};

// One box of the plot details: its column, its control, and for the numeric
// ones their rule. PLAY and HARM take any text.
struct PlotField {
    const char* column;
    const char* control;
    bool numeric;
    bool whole; // an Integer column: the value is rounded as the database engine rounds (half to
                // even)
    RangeRule rule;
    QString PlotDetails::*member;
};
const std::array<PlotField, 10>& plotFields();

// Each table holds one row at most; the loaders read the first row (empty
// texts without one), the storers edit the first row or add one. Storers
// throw RuntimeError when the database refuses a value (too long, or a number
// too large for its column). A numeric plot box that is empty is stored as
// NULL; empty texts are stored as zero-length texts.
ExperimentDetails loadExperimentDetails();
PlotDetails loadPlotDetails();
GeneralDetails loadGeneralDetails();
void storeExperimentDetails(const ExperimentDetails& details);
void storePlotDetails(const PlotDetails& plot);
void storeGeneralDetails(const GeneralDetails& general);

// The checks of Save on the identification, in their order: a missing crop
// for an experimental file, then institute, site, title. Returns the first
// message, or an empty string when all is there.
QString checkBeforeSave(const ExperimentDetails& details, FileType type, const QString& cropCode);

} // namespace quillon
