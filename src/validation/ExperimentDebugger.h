#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

namespace quillon::validation {

// The experiment debugger: checks the whole experiment in the working
// database against the weather files, the management codes and the dates,
// and collects what it finds as numbered text lines. It never changes a
// factor table; its only table is the scratch table `Years`.

// The list of findings, numbered from 1 in the order they are added:
// "(1)  Treatment #3/Fields: Missing data: Weather station code."
class Findings {
public:
    // Adds "(" n ")  Treatment #" trtno + factorPart + text.
    void add(const QVariant& trtno, const QString& factorPart, const QString& text);
    const QStringList& lines() const { return m_lines; }
    bool isEmpty() const { return m_lines.isEmpty(); }
    void clear() { m_lines.clear(); }

private:
    QStringList m_lines;
};

// What a run of DebugFile came to, for the window that shows Errors.txt and
// for the command-line tool.
struct DebugResult {
    enum class Outcome {
        Refused, // no treatments, or a treatment without simulation or field level
        Clean, // nothing found; an old Errors.txt stays as it was
        Findings, // findings written to Errors.txt
    };
    Outcome outcome = Outcome::Refused;
    QStringList findings;
    bool errorsFileWritten = false;
    QString errorsFilePath;
};

// Runs the whole debugger: refuses with a message when there are no
// treatments or a treatment lacks its simulation or field level; otherwise
// runs the checks below in turn (each reports its own failures and the run
// goes on), then either says "No errors has been found." or writes
// Errors.txt in the program folder: two empty lines, then each finding
// indented by five blanks, CR LF line ends. A failure of its own steps is
// reported with " in DebugFile/frmMain.".
DebugResult DebugFile();

// The text the command-line tool prints for a result: the lines of
// Errors.txt (two empty lines and the indented findings), or
// "No errors has been found." for a clean run; nothing for a refused run,
// whose message was already shown.
QStringList findingsReport(const DebugResult& result);

// The weather sources a simulation's MEWTH selects.
enum class WeatherKind { None, Observed, Generated, Climate };
// "M" Observed, "G" Generated, "S" and "W" Climate; anything else None.
WeatherKind weatherKindOf(const QVariant& mewth);

// The checks. Each walks the treatments, adds its findings, and reports a
// failure with the error text and its own tail, stopping there.

// Remakes `Years` and, for each treatment, checks that the field's weather
// station exists in the weather lookup for the simulation's weather kind;
// collects the years of the station's files into `Years`.
void CheckWeatherFileExistence(Findings& findings);
// Adds to `Years` the years of weather that the station of field level
// `level` offers for a kind of weather.
void FindFieldYears_byLevel(int level, WeatherKind kind);
// Dates that don't fit the management: five-digit codes where the
// management counts days after planting, day counts where it uses dates.
void CheckApplications_Management(Findings& findings);
// Planting level, simulation start and planting day, and their order.
void CheckPlanting_date(Findings& findings);
// The year of every dated event must be one of the field's weather years.
void CheckAllYears(Findings& findings);

// Warns with an exclamation box when the year of a five-digit date code is
// none of `availableYears` (four-digit years, as the field years list them)
// or when the code isn't five characters long; the warning ends with a
// blank and the number of years. Returns whether the year was found.
bool CheckPlantingDate(const QString& code, const QStringList& availableYears);

} // namespace quillon::validation
