#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <utility>
#include <vector>

namespace quillon::reference {

// The default value of every column of the simulation control groups and
// of the automatic management groups, one member per column. The section
// readers put it in place of a blank or negative cell and into the rows they
// write after an error; the writer prints it for a NULL cell.
//
// A new record holds zeros and empty texts, like the program's globals before
// the first load; LoadSimDefaults() fills it.
struct SimDefaults {
    // general
    qint16 NYRS = 0;
    qint16 NREPSQ = 0;
    QString ISIMI;
    QString YRSIM;
    float RSEED = 0;
    QString TITSIM;
    QString Crop_Model;
    // options
    QString ISWWAT;
    QString ISWNIT;
    QString ISWSYM;
    QString ISWPHO;
    QString ISWPOT;
    QString ISWDIS;
    QString ISCHEM;
    QString ISTILL;
    QString ISCO2;
    // methods
    QString MEWTH;
    QString MESIC;
    QString MELI;
    QString MEEVP;
    QString MEINF;
    QString MEPHO;
    QString HYDRO;
    qint16 NSWIT = 0;
    QString MESOM;
    QString MESEV;
    QString MESOL;
    // management
    QString IPLTI;
    QString IIRRI;
    QString IFERI;
    QString IRESI;
    QString IHARI;
    // outputs
    QString IOX;
    QString IDETO;
    QString IDETS;
    qint16 FROP = 0;
    QString IDETG;
    QString IDETC;
    QString IDETW;
    QString IDETN;
    QString IDETP;
    QString IDETD;
    QString VBOSE;
    QString CHOUT;
    QString OPOUT;
    QString FMOPT;
    // automatic planting
    QString PWDINF;
    QString PWDINL;
    float SWPLTL = 0;
    float SWPLTH = 0;
    float SWPLTD = 0;
    float PTX = 0;
    float PTTN = 0;
    // automatic irrigation
    float DSOIL = 0;
    float THETAC = 0;
    float IEPT = 0;
    QString IOFF;
    QString IAME;
    float AIRAMT = 0;
    float EFFIRR = 0;
    // automatic nitrogen
    float DSOILN = 0;
    float SOILNC = 0;
    float SOILNX = 0;
    QString NCODE;
    QString NEND;
    // automatic residues
    float RIP = 0;
    float NRESDL = 0;
    float DRESMG = 0;
    // automatic harvest
    float HDLAY = 0;
    QString HLATE;
    float HPP = 0;
    float HRP = 0;
    // forecast dates
    QString FODAT;
    QString FONAME;

    // The member named like a table column (case-blind), ready to store: a
    // number for a numeric member, a text that is never NULL for a text
    // member. An invalid QVariant for a name that is no member.
    QVariant member(const QString& column) const;

    // Gives every member its built-in value. FODAT and FONAME are only set
    // when `forecast` holds; otherwise they keep what they have.
    void assignBuiltIn(bool forecast);
};

// One group of the simulation controls: its table, the column that holds
// its two-letter label, that label, and its value columns in file order.
struct SimGroup {
    QString table;
    QString labelColumn;
    QString label;
    QStringList columns;
};

// The eleven groups in the order of the file: general, options, methods,
// management, outputs, then the automatic planting, irrigation, nitrogen,
// residues, harvest and forecast dates.
const std::vector<SimGroup>& simGroups();
// The group whose table is `table` (case-blind); nullptr if none.
const SimGroup* findSimGroup(const QString& table);

// A row of a group that holds nothing but defaults: the level, the group's
// label and every value column from simDefaults().
std::vector<std::pair<QString, QVariant>> defaultRow(const SimGroup& group, int level);

// The process-wide record.
SimDefaults& simDefaults();

// The name of the defaults file of the open document's type in
// state().AppFolder ("Simulate.def", "Simulate_Sequence.def" …); empty
// unless exactly one type flag is set.
QString defaultsFileName();

// Fills simDefaults() from the defaults file of the open document's type in
// state().AppFolder, or, on any failure at all (missing file, too many lines,
// a bad number), from the built-in values. Never shows a message of its own;
// only VerifySim_Model may report a database error on the way.
void LoadSimDefaults();

// The code if SimLookUp knows it as a crop model (type 19), else "".
// A database error is reported (" in VerifySim_Model.") and gives "".
QString VerifySim_Model(const QString& code);

// Starts a new experiment: empties the treatments and all simulation control
// and automatic management tables, then adds level 1 of each group from
// simDefaults() (with no start date) and treatment 1. An error is reported
// (" in FillDefaltSim.") and ends the routine where it happened.
void FillDefaltSim();

} // namespace quillon::reference
