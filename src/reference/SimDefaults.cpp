#include "reference/SimDefaults.h"

#include "app/AppState.h"
#include "app/RuntimeError.h"
#include "app/UserInterface.h"
#include "database/Sql.h"
#include "format/Columns.h"
#include "format/NumberText.h"
#include "format/TextLines.h"

#include <QFile>

#include <cmath>

namespace quillon::reference {

namespace {

using database::exec;
using database::insertRow;
using format::mid;

// A member of the record, by kind.
struct MemberRef {
    const char* name;
    qint16 SimDefaults::*whole = nullptr;
    float SimDefaults::*real = nullptr;
    QString SimDefaults::*text = nullptr;
};

MemberRef W(const char* name, qint16 SimDefaults::*m) { return { name, m, nullptr, nullptr }; }
MemberRef R(const char* name, float SimDefaults::*m) { return { name, nullptr, m, nullptr }; }
MemberRef T(const char* name, QString SimDefaults::*m) { return { name, nullptr, nullptr, m }; }

const std::vector<MemberRef>& members()
{
    using S = SimDefaults;
    static const std::vector<MemberRef> all {
        W("NYRS", &S::NYRS), W("NREPSQ", &S::NREPSQ), T("ISIMI", &S::ISIMI), T("YRSIM", &S::YRSIM),
        R("RSEED", &S::RSEED), T("TITSIM", &S::TITSIM), T("Crop_Model", &S::Crop_Model),
        T("ISWWAT", &S::ISWWAT), T("ISWNIT", &S::ISWNIT), T("ISWSYM", &S::ISWSYM), T("ISWPHO", &S::ISWPHO),
        T("ISWPOT", &S::ISWPOT), T("ISWDIS", &S::ISWDIS), T("ISCHEM", &S::ISCHEM), T("ISTILL", &S::ISTILL),
        T("ISCO2", &S::ISCO2),
        T("MEWTH", &S::MEWTH), T("MESIC", &S::MESIC), T("MELI", &S::MELI), T("MEEVP", &S::MEEVP),
        T("MEINF", &S::MEINF), T("MEPHO", &S::MEPHO), T("HYDRO", &S::HYDRO), W("NSWIT", &S::NSWIT),
        T("MESOM", &S::MESOM), T("MESEV", &S::MESEV), T("MESOL", &S::MESOL),
        T("IPLTI", &S::IPLTI), T("IIRRI", &S::IIRRI), T("IFERI", &S::IFERI), T("IRESI", &S::IRESI),
        T("IHARI", &S::IHARI),
        T("IOX", &S::IOX), T("IDETO", &S::IDETO), T("IDETS", &S::IDETS), W("FROP", &S::FROP),
        T("IDETG", &S::IDETG), T("IDETC", &S::IDETC), T("IDETW", &S::IDETW), T("IDETN", &S::IDETN),
        T("IDETP", &S::IDETP), T("IDETD", &S::IDETD), T("VBOSE", &S::VBOSE), T("CHOUT", &S::CHOUT),
        T("OPOUT", &S::OPOUT), T("FMOPT", &S::FMOPT),
        T("PWDINF", &S::PWDINF), T("PWDINL", &S::PWDINL), R("SWPLTL", &S::SWPLTL), R("SWPLTH", &S::SWPLTH),
        R("SWPLTD", &S::SWPLTD), R("PTX", &S::PTX), R("PTTN", &S::PTTN),
        R("DSOIL", &S::DSOIL), R("THETAC", &S::THETAC), R("IEPT", &S::IEPT), T("IOFF", &S::IOFF),
        T("IAME", &S::IAME), R("AIRAMT", &S::AIRAMT), R("EFFIRR", &S::EFFIRR),
        R("DSOILN", &S::DSOILN), R("SOILNC", &S::SOILNC), R("SOILNX", &S::SOILNX), T("NCODE", &S::NCODE),
        T("NEND", &S::NEND),
        R("RIP", &S::RIP), R("NRESDL", &S::NRESDL), R("DRESMG", &S::DRESMG),
        R("HDLAY", &S::HDLAY), T("HLATE", &S::HLATE), R("HPP", &S::HPP), R("HRP", &S::HRP),
        T("FODAT", &S::FODAT), T("FONAME", &S::FONAME),
    };
    return all;
}

const MemberRef* findMember(const QString& name)
{
    for (const MemberRef& m : members()) {
        if (name.compare(QLatin1String(m.name), Qt::CaseInsensitive) == 0)
            return &m;
    }
    return nullptr;
}

// How a member's text on its line of the defaults file becomes its value.
enum class Reading {
    Text, // as it stands, untrimmed
    Lenient, // the leading number; 0 for text
    Strict, // the whole text must be a number
    Model, // text through VerifySim_Model
};

// Where a member stands in the defaults file: its data line, counted from
// the general header, and its columns.
struct FileCell {
    const char* member;
    int line;
    int start;
    int width;
    Reading reading;
};

constexpr int General = 1;
constexpr int Options = 3;
constexpr int Methods = 5;
constexpr int Management = 7;
constexpr int Outputs = 9;
constexpr int Planting = 13; // a blank line, the marker and the header lie before it
constexpr int Irrigation = 15;
constexpr int Nitrogen = 17;
constexpr int Residues = 19;
constexpr int Harvest = 21;
constexpr int Simdates = 23;

const std::vector<FileCell>& fileCells()
{
    using Rd = Reading;
    static const std::vector<FileCell> cells {
        { "NYRS", General, 18, 3, Rd::Lenient }, { "NREPSQ", General, 25, 2, Rd::Lenient },
        { "ISIMI", General, 32, 1, Rd::Text }, { "YRSIM", General, 34, 5, Rd::Text },
        { "RSEED", General, 40, 5, Rd::Lenient }, { "TITSIM", General, 46, 24, Rd::Text },
        { "Crop_Model", General, 71, 8, Rd::Model },
        { "ISWWAT", Options, 20, 1, Rd::Text }, { "ISWNIT", Options, 26, 1, Rd::Text },
        { "ISWSYM", Options, 32, 1, Rd::Text }, { "ISWPHO", Options, 38, 1, Rd::Text },
        { "ISWPOT", Options, 44, 1, Rd::Text }, { "ISWDIS", Options, 50, 1, Rd::Text },
        { "ISCHEM", Options, 56, 1, Rd::Text }, { "ISTILL", Options, 62, 1, Rd::Text },
        { "ISCO2", Options, 68, 1, Rd::Text },
        { "MEWTH", Methods, 20, 1, Rd::Text }, { "MESIC", Methods, 26, 1, Rd::Text },
        { "MELI", Methods, 32, 1, Rd::Text }, { "MEEVP", Methods, 38, 1, Rd::Text },
        { "MEINF", Methods, 44, 1, Rd::Text }, { "MEPHO", Methods, 50, 1, Rd::Text },
        { "HYDRO", Methods, 56, 1, Rd::Text }, { "NSWIT", Methods, 62, 1, Rd::Strict },
        { "MESOM", Methods, 68, 1, Rd::Text }, { "MESEV", Methods, 74, 1, Rd::Text },
        { "MESOL", Methods, 80, 1, Rd::Text },
        { "IPLTI", Management, 20, 1, Rd::Text }, { "IIRRI", Management, 26, 1, Rd::Text },
        { "IFERI", Management, 32, 1, Rd::Text }, { "IRESI", Management, 38, 1, Rd::Text },
        { "IHARI", Management, 44, 1, Rd::Text },
        { "IOX", Outputs, 20, 1, Rd::Text }, { "IDETO", Outputs, 26, 1, Rd::Text },
        { "IDETS", Outputs, 32, 1, Rd::Text }, { "FROP", Outputs, 37, 2, Rd::Strict },
        { "IDETG", Outputs, 44, 1, Rd::Text }, { "IDETC", Outputs, 50, 1, Rd::Text },
        { "IDETW", Outputs, 56, 1, Rd::Text }, { "IDETN", Outputs, 62, 1, Rd::Text },
        { "IDETP", Outputs, 68, 1, Rd::Text }, { "IDETD", Outputs, 74, 1, Rd::Text },
        { "VBOSE", Outputs, 80, 1, Rd::Text }, { "CHOUT", Outputs, 86, 1, Rd::Text },
        { "OPOUT", Outputs, 92, 1, Rd::Text }, { "FMOPT", Outputs, 98, 1, Rd::Text },
        { "SWPLTL", Planting, 28, 5, Rd::Lenient }, { "SWPLTH", Planting, 34, 5, Rd::Lenient },
        { "SWPLTD", Planting, 40, 5, Rd::Lenient }, { "PTX", Planting, 46, 5, Rd::Lenient },
        { "PTTN", Planting, 52, 5, Rd::Lenient },
        { "DSOIL", Irrigation, 16, 5, Rd::Lenient }, { "THETAC", Irrigation, 22, 5, Rd::Lenient },
        { "IEPT", Irrigation, 28, 5, Rd::Lenient }, { "IOFF", Irrigation, 34, 5, Rd::Text },
        { "IAME", Irrigation, 40, 5, Rd::Text }, { "AIRAMT", Irrigation, 46, 5, Rd::Lenient },
        { "EFFIRR", Irrigation, 52, 5, Rd::Lenient },
        { "DSOILN", Nitrogen, 16, 5, Rd::Lenient }, { "SOILNC", Nitrogen, 22, 5, Rd::Lenient },
        { "SOILNX", Nitrogen, 28, 5, Rd::Lenient }, { "NCODE", Nitrogen, 34, 5, Rd::Text },
        { "NEND", Nitrogen, 40, 5, Rd::Text },
        { "RIP", Residues, 16, 5, Rd::Strict }, { "NRESDL", Residues, 22, 5, Rd::Strict },
        { "DRESMG", Residues, 28, 5, Rd::Strict },
        { "HDLAY", Harvest, 16, 5, Rd::Strict }, { "HPP", Harvest, 28, 5, Rd::Lenient },
        { "HRP", Harvest, 34, 5, Rd::Lenient },
    };
    return cells;
}

constexpr int TypeMismatch = err::TypeMismatch;
constexpr int Overflow = 6;
constexpr int SubscriptOutOfRange = 9;

// The program's conversion of a number to a 16-bit member: rounded half to
// even, refused outside the range.
qint16 wholeNumber(double value)
{
    const double rounded = std::nearbyint(value);
    if (!(rounded >= -32768 && rounded <= 32767))
        throw RuntimeError(Overflow, QStringLiteral("Overflow"));
    return static_cast<qint16>(rounded);
}

void assign(SimDefaults& d, const MemberRef& m, double value)
{
    if (m.whole)
        d.*m.whole = wholeNumber(value);
    else if (m.real)
        d.*m.real = static_cast<float>(value);
}

void readMember(SimDefaults& d, const FileCell& cell, const QString& line)
{
    const MemberRef* m = findMember(QLatin1String(cell.member));
    const QString text = mid(line, cell.start, cell.width);
    switch (cell.reading) {
    case Reading::Text:
        d.*m->text = text;
        break;
    case Reading::Model:
        d.*m->text = VerifySim_Model(text);
        break;
    case Reading::Lenient:
        assign(d, *m, format::leadingNumber(text));
        break;
    case Reading::Strict:
        if (!format::isNumeric(text))
            throw RuntimeError(TypeMismatch, QStringLiteral("Type mismatch"));
        assign(d, *m, format::leadingNumber(text));
        break;
    }
}

} // namespace

QString defaultsFileName()
{
    const AppState& s = state();
    const int set = int(s.IsExperimental) + int(s.IsSequence) + int(s.IsSeasonal) + int(s.IsSpatial)
        + int(s.IsForecast);
    if (set != 1)
        return QString();
    if (s.IsExperimental)
        return QStringLiteral("Simulate.def");
    if (s.IsSequence)
        return QStringLiteral("Simulate_Sequence.def");
    if (s.IsSeasonal)
        return QStringLiteral("Simulate_Seasonal.def");
    if (s.IsSpatial)
        return QStringLiteral("Simulate_Spatial.def");
    return QStringLiteral("Simulate_Forecast.def");
}

namespace {

// Reads the defaults file into `d`. Throws on any failure; `d` may then hold
// part of the file.
void readDefaultsFile(SimDefaults& d)
{
    const QString name = defaultsFileName();
    if (name.isEmpty())
        throw RuntimeError(err::BadFileNameOrNumber, QStringLiteral("Bad file name or number"));
    QStringList raw;
    if (!format::readLines(state().AppFolder + name, raw))
        throw RuntimeError(err::FileNotFound, QStringLiteral("File not found"));

    // Lines are numbered from 1 as read, the marker and those before it too;
    // only the lines behind the marker are kept, each under its number.
    constexpr int Entries = 31;
    QStringList entries;
    for (int i = 0; i < Entries; ++i)
        entries << QString();
    int number = 0;
    int at = 0;
    while (at < raw.size()) {
        const QString line = raw.at(at++);
        ++number;
        if (line.left(4) == QLatin1String("*SIM"))
            break;
    }
    while (at < raw.size()) {
        ++number;
        if (number >= Entries)
            throw RuntimeError(SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
        entries[number] = raw.at(at++);
    }

    int k = 0;
    while (k < Entries && entries.at(k).isEmpty())
        ++k;
    if (k == Entries)
        throw RuntimeError(SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
    auto entry = [&](int offset) {
        if (k + offset >= Entries)
            throw RuntimeError(SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
        return entries.at(k + offset);
    };

    for (const FileCell& cell : fileCells())
        readMember(d, cell, entry(cell.line));
    d.PWDINF = QStringLiteral("-99  ");
    d.PWDINL = QStringLiteral("-99  ");
    d.HLATE = QStringLiteral("-99  ");
    if (state().IsForecast) {
        const QString line = entry(Simdates);
        d.FODAT = mid(line, 30, 7);
        d.FONAME = mid(line, 71, 25);
    }
}

QVariant text(const QString& value) { return value.isEmpty() ? QVariant(QStringLiteral("")) : QVariant(value); }

} // namespace

QVariant SimDefaults::member(const QString& column) const
{
    const MemberRef* m = findMember(column);
    if (!m)
        return QVariant();
    if (m->whole)
        return QVariant(int(this->*m->whole));
    if (m->real)
        return QVariant(static_cast<double>(this->*m->real));
    return text(this->*m->text);
}

void SimDefaults::assignBuiltIn(bool forecast)
{
    NYRS = 1;
    NREPSQ = 1;
    ISIMI = QStringLiteral("S");
    YRSIM = QStringLiteral("-99");
    RSEED = 2150;
    TITSIM = QStringLiteral("Default Simulation Control.");
    Crop_Model = QStringLiteral("");
    ISWWAT = QStringLiteral("Y");
    ISWNIT = QStringLiteral("Y");
    ISWSYM = QStringLiteral("Y");
    ISWPHO = QStringLiteral("N");
    ISWPOT = QStringLiteral("N");
    ISWDIS = QStringLiteral("N");
    ISCHEM = QStringLiteral("N");
    ISTILL = QStringLiteral("N");
    ISCO2 = QStringLiteral("W");
    MEWTH = QStringLiteral("M");
    MESIC = QStringLiteral("M");
    MELI = QStringLiteral("E");
    MEEVP = QStringLiteral("R");
    MEINF = QStringLiteral("S");
    MEPHO = QStringLiteral("C");
    HYDRO = QStringLiteral("R");
    NSWIT = 1;
    MESOM = QStringLiteral("G");
    MESEV = QStringLiteral("S");
    MESOL = QStringLiteral("2");
    IPLTI = QStringLiteral("R");
    IIRRI = QStringLiteral("R");
    IFERI = QStringLiteral("R");
    IRESI = QStringLiteral("N");
    IHARI = QStringLiteral("M");
    IOX = QStringLiteral("N");
    IDETO = QStringLiteral("Y");
    IDETS = QStringLiteral("Y");
    FROP = 1;
    IDETG = QStringLiteral("Y");
    IDETC = QStringLiteral("N");
    IDETW = QStringLiteral("Y");
    IDETN = QStringLiteral("Y");
    IDETP = QStringLiteral("Y");
    IDETD = QStringLiteral("N");
    VBOSE = QStringLiteral("Y");
    CHOUT = QStringLiteral("N");
    OPOUT = QStringLiteral("Y");
    FMOPT = QStringLiteral("A");
    PWDINF = QStringLiteral("-99  ");
    PWDINL = QStringLiteral("-99  ");
    SWPLTL = 40;
    SWPLTH = 100;
    SWPLTD = 30;
    PTX = 40;
    PTTN = 10;
    DSOIL = 30;
    THETAC = 50;
    IEPT = 100;
    IOFF = QStringLiteral("GS000");
    IAME = QStringLiteral("IR001");
    AIRAMT = 10;
    EFFIRR = 1;
    DSOILN = 30;
    SOILNC = 50;
    SOILNX = 25;
    NCODE = QStringLiteral("FE001");
    NEND = QStringLiteral("GS000");
    RIP = 100;
    NRESDL = 1;
    DRESMG = 20;
    HDLAY = 30;
    HLATE = QStringLiteral("-99  ");
    HPP = 100;
    HRP = 30;
    if (forecast) {
        FODAT = QStringLiteral("-99");
        FONAME = QStringLiteral("-99");
    }
}

const std::vector<SimGroup>& simGroups()
{
    auto group = [](const char* table, const char* labelColumn, const char* label, const char* columns) {
        return SimGroup { QLatin1String(table), QLatin1String(labelColumn), QLatin1String(label),
            QString::fromLatin1(columns).split(QLatin1Char(' ')) };
    };
    static const std::vector<SimGroup> groups {
        group("SimulationControl", "TITCOM", "GE", "NYRS NREPSQ ISIMI YRSIM RSEED TITSIM Crop_Model"),
        group("SimulationControlOptions", "TITOPT", "OP",
            "ISWWAT ISWNIT ISWSYM ISWPHO ISWPOT ISWDIS ISCHEM ISTILL ISCO2"),
        group("SimulationControlMethods", "TITMET", "ME",
            "MEWTH MESIC MELI MEEVP MEINF MEPHO HYDRO NSWIT MESOM MESEV MESOL"),
        group("SimulationControlManagement", "TITMAT", "MA", "IPLTI IIRRI IFERI IRESI IHARI"),
        group("SimulationControlOutputs", "TITOUT", "OU",
            "IOX IDETO IDETS FROP IDETG IDETC IDETW IDETN IDETP IDETD VBOSE CHOUT OPOUT FMOPT"),
        group("AutoManagementPlanting", "TITPLA", "PL", "PWDINF PWDINL SWPLTL SWPLTH SWPLTD PTX PTTN"),
        group("AutoManagementIrrigation", "TITIRR", "IR", "DSOIL THETAC IEPT IOFF IAME AIRAMT EFFIRR"),
        group("AutoManagementNitrogen", "TITNIT", "NI", "DSOILN SOILNC SOILNX NCODE NEND"),
        group("AutoManagementResidues", "TITRES", "RE", "RIP NRESDL DRESMG"),
        group("AutoManagementHarvest", "TITHAR", "HA", "HDLAY HLATE HPP HRP"),
        group("AutoManagementSimdates", "TITSI", "SI", "FODAT FONAME"),
    };
    return groups;
}

const SimGroup* findSimGroup(const QString& table)
{
    for (const SimGroup& g : simGroups()) {
        if (g.table.compare(table, Qt::CaseInsensitive) == 0)
            return &g;
    }
    return nullptr;
}

std::vector<std::pair<QString, QVariant>> defaultRow(const SimGroup& group, int level)
{
    std::vector<std::pair<QString, QVariant>> row { { QStringLiteral("LNSIM"), level },
        { group.labelColumn, group.label } };
    for (const QString& column : group.columns)
        row.emplace_back(column, simDefaults().member(column));
    return row;
}

SimDefaults& simDefaults()
{
    static SimDefaults record;
    return record;
}

void LoadSimDefaults()
{
    SimDefaults& d = simDefaults();
    try {
        readDefaultsFile(d);
    } catch (const RuntimeError&) {
        // The fall-back is silent by design, and complete: whatever the
        // file gave before the failure is overwritten.
        d.assignBuiltIn(state().IsForecast);
    }
}

QString VerifySim_Model(const QString& code)
{
    try {
        database::Rows q(
            QStringLiteral("SELECT * FROM SimLookup WHERE Type = 19 AND Code = ?"), { text(code) });
        return q.next() ? code : QString();
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in VerifySim_Model."));
        return QString();
    }
}

void FillDefaltSim()
{
    try {
        for (const char* table :
            { "Treatments", "SimulationControlOptions", "SimulationControlMethods", "SimulationControlManagement",
                "SimulationControlOutputs", "AutoManagementPlanting", "AutoManagementIrrigation",
                "AutoManagementNitrogen", "AutoManagementResidues", "AutoManagementHarvest",
                "AutoManagementSimdates", "SimulationControl" })
            exec(QStringLiteral("DELETE FROM [%1]").arg(QLatin1String(table)));

        // A new experiment has no start date until the planting date gives one.
        database::Values general = defaultRow(*findSimGroup(QStringLiteral("SimulationControl")), 1);
        for (auto& cell : general) {
            if (cell.first == QLatin1String("YRSIM"))
                cell.second = QVariant();
        }
        insertRow(QStringLiteral("SimulationControl"), general);

        // The other groups in file order; forecast dates whatever the type.
        for (const SimGroup& g : simGroups()) {
            if (g.table != QLatin1String("SimulationControl"))
                insertRow(g.table, defaultRow(g, 1));
        }

        insertRow(QStringLiteral("Treatments"),
            { { QStringLiteral("TRTNO"), 1 }, { QStringLiteral("ROTNO"), 1 }, { QStringLiteral("ROTOPT"), 1 },
                { QStringLiteral("TITLET"), QStringLiteral("Sim1") }, { QStringLiteral("LNSIM"), 1 },
                { QStringLiteral("LNFLD"), 1 }, { QStringLiteral("LNCU"), 1 }, { QStringLiteral("LNPLT"), 1 } });
    } catch (const RuntimeError& e) {
        reportError(e.text(), QStringLiteral(" in FillDefaltSim."));
    }
}

} // namespace quillon::reference
