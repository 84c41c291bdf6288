#pragma once

#include <QString>

#include <optional>

namespace quillon::editors {

// The editor windows. Each has an open flag in the process-wide state, set
// by its Form_Load (which clears the others) and cleared when it unloads;
// Save reads the flags to open the editor again after the read-back.
enum class EditorForm {
    frmViewTreatments,
    frmCult1,
    frmFields,
    frmSoilAnalysis,
    frmInitCond,
    frmPlantingEd,
    frmIrrigation,
    frmFertEdit,
    frmResidueEdit,
    frmChemEdit,
    frmTillEdit,
    frmEnvMod,
    frmHarvest,
    frmSim,
};

QString formName(EditorForm form);
std::optional<EditorForm> formNamed(const QString& name);

// Marks a form open and every other closed.
void markOpen(EditorForm form);
void markClosed(EditorForm form);
bool isOpen(EditorForm form);
// Closes the open editor, which commits as it closes, and keeps the open
// flags as they were until the opening editor's Form_Load sets its own.
void closeOtherEditors();
// The form whose flag is set, if any.
std::optional<EditorForm> openForm();

// An editor's window caption: its stem, the file-type label, a hyphen and
// the experiment file's name in capitals ("Fertilizers (experimental) -
// ABCD0101.MZX").
QString editorCaption(const QString& stem);

} // namespace quillon::editors
