#pragma once

#include <QString>
#include <QStringList>

#include <array>

namespace quillon {

// The comment lines of a file, one buffer per section family. Each buffer
// holds its lines without their leading "!", every line preceded by CR LF.
struct CommentBuffers {
    QString CommentsGeneral;
    QString CommentsTreatments;
    QString CommentsCultivars;
    QString CommentsFields;
    QString CommentsSoil;
    QString CommentsIC;
    QString CommentsPlanting;
    QString CommentsIrrigation;
    QString CommentsFertilizer;
    QString CommentsResidue;
    QString CommentsChemical;
    QString CommentsTillage;
    QString CommentsEnvironment;
    QString CommentsHarvest;
    QString CommentsSimulation;
    // Not a comment buffer: the @NOTES lines of the general block, each
    // followed by CR LF. It lives here so that it is emptied together with
    // the buffers whenever a file is opened, read back or closed.
    QString Notes;

    void clear() { *this = CommentBuffers(); }
    // File Open's last touch: every buffer that isn't empty loses its first
    // two characters, the CR LF in front of its first line.
    void stripLeadingLineBreaks();
    std::array<QString*, 15> all();
};

// The program's process-wide state: one object, alive as long as the program.
struct AppState {
    // Folders and files
    QString AppFolder; // always ends in a separator
    QString SuiteFolderName = QStringLiteral("TERVA48");
    QString DataFolder;
    QString WorkDBPath;
    QString ExpFilePath;
    QString WeatherFolder;
    QString GenotypeFolder;
    QString LastSavedPath;
    QString OpenFolderName;

    // The command line
    QString CommandLine;
    QStringList CommandArgs;
    QString CommandFolder;
    QString CommandFile;
    bool OpenFromCommand = false;
    bool NewFromCommand = false;

    // The open document
    bool IsExperimental = false;
    bool IsSequence = false;
    bool IsSeasonal = false;
    bool IsSpatial = false;
    bool IsForecast = false;
    bool FileSaved = true;
    bool IsNewFile = false;
    bool DocumentOpen = false;
    QString FileTypeLabel;
    CommentBuffers comments;
    // Set by the environment reader when a negative adjustment was read.
    bool NegativeEnvValue = false;

    // Refresh
    bool RefreshGoOn = false;
    int RefreshAnswer = 1;
    // Set by New and cleared at start: the next Refresh skips its notice and
    // asks its own save question instead (SaveQuestionPending).
    bool RefreshStarted = false;
    // The save question of the next Close is frmSaveFile's, not the plain one.
    bool SaveQuestionPending = false;

    // The document commands' own marks.
    // Makes File Open open ExpFilePath again without its dialog.
    bool ReopenFlag = false;
    // Set by Save (and by Refresh on an unchanged document): the next Close
    // asks nothing. Only Open and New clear it.
    bool CloseWithoutQuestion = false;
    // Set when the user cancelled Exit's save question.
    bool ExitCancelled = false;

    // Window scaling against the design size of 9600 by 7200 units.
    float ScaleX = 1;
    float ScaleY = 1;

    // The user's locale settings at start, put back at the end.
    QString SavedShortDate;
    QString SavedDecimal;
    // The format of date text in the editors: the saved short date format,
    // with the year widened to four digits so that the text reads back
    // without a century guess.
    QString DateTextFormat = QStringLiteral("M/d/yyyy");

    // Which editor window is open, one flag per editor (editors::EditorForm).
    std::array<bool, 15> EditorOpen {};
    // Set by an editor's menu handler when the factor had no level and it
    // made level 1; Cancel then takes that level away again.
    bool NewLevelCreated = false;
    // The date to start the simulation at, as date text; "-99" for none.
    // A new level of an event editor is dated by it when it is set.
    QString SimulationDate = QStringLiteral("-99");

    // Clears the five type flags and sets IsExperimental.
    void setExperimental();
    // Exactly one type flag set, from the two first letters of the
    // extension (any case): sq, sn, gs, fc, or any other for a crop.
    void setTypeFromExtension(const QString& fileName);
};

AppState& state();

} // namespace quillon
