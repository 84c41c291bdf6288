#pragma once

#include <QString>

// The texts of the simulation control editor frmSim, as the program words
// them.
namespace quillon::editors::sim_text {

// The window caption's stem.
inline const QString captionStem = QStringLiteral("Simulation Controls");
// The factor's name in the deletion warning.
inline const QString levelWord = QStringLiteral("Simulation");

inline const QString invalidPercentage = QStringLiteral("Invalid percentage.");
inline const QString nyrsDefault
    = QStringLiteral("Invalid entry. Default value 1 will be assigned!");
// The cautions shown where the user picks a weather method or a management.
inline const QString weatherCaution = QStringLiteral(
    "Be sure that selected weather source type is consistant with 'Sim. Control Method'.");
inline const QString managementCaution = QStringLiteral(
    "Be sure that selected management is consistent with Simulation/Management section.");

// The tails of the failure messages, spelt per routine as the program does.
inline QString tail(const char* routine)
{
    return QStringLiteral(" in %1/frmSim.").arg(QLatin1String(routine));
}
inline const QString formLoadTail = QStringLiteral(" in frmSim_Load.");
inline const QString editEntryTail = QStringLiteral(" in EditEntry/frmSim. ");
inline const QString dbCombo1Tail = QStringLiteral(" in DBCombo1_Click/Methods/FrmSim.");
inline const QString menuTail = QStringLiteral(" in EditSimOptGeneral_Click/frmMain.");

// Tabs of TabRTF and TabRTF2.
inline const QString general = QStringLiteral("General");
inline const QString options = QStringLiteral("Options");
inline const QString methods = QStringLiteral("Methods");
inline const QString management = QStringLiteral("Management");
inline const QString outputs = QStringLiteral("Outputs");
inline const QString forecast = QStringLiteral("Forecast");
inline const QString planting = QStringLiteral("Planting");
inline const QString irrigation = QStringLiteral("Irrigation");
inline const QString nitrogen = QStringLiteral("Nitrogen");
inline const QString residue = QStringLiteral("Residue");
inline const QString harvest = QStringLiteral("Harvest");

} // namespace quillon::editors::sim_text
