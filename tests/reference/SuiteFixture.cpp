#include "reference/SuiteFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace quillon::test {

void SuiteTest::writeBytes(const QString& relativePath, const QByteArray& bytes)
{
    const QString target = path(relativePath);
    QDir().mkpath(QFileInfo(target).absolutePath());
    QFile file(target);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << target.toStdString();
    file.write(bytes);
}

void SuiteTest::write(const QString& relativePath, const QStringList& lines)
{
    writeBytes(
        relativePath, (lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toLatin1());
}

void SuiteTest::writeProfile(const QStringList& more)
{
    write(QStringLiteral("TERVAPRO.V48"),
        QStringList { QStringLiteral("WED C: \\TERVA48\\Weather"),
            QStringLiteral("CRD C: \\TERVA48\\Genotype"), QStringLiteral("SLD C: \\TERVA48\\Soil") }
            + more);
}

void SuiteTest::writeSmallSuite()
{
    writeProfile({ QStringLiteral("ABD C: \\TERVA48\\Alpha"),
        QStringLiteral("MAB C: \\TERVA48\\ABMOD048.EXE ABMOD048") });
    write(QStringLiteral("Detail.cde"),
        { QStringLiteral("*Crop and Weed Species"), QStringLiteral("AB       Alpha bean") });
    write(QStringLiteral("GRSTAGE.CDE"),
        { QStringLiteral("*Growth and Development Codes - Alpha bean (AB)"),
            QStringLiteral("    1 GE    Germination") });
    write(QStringLiteral("Simulation.cde"),
        { QStringLiteral("*Start Simulation"), QStringLiteral("S        Sowing date") });
    write(QStringLiteral("Weather/ABCD9901.WTH"),
        { QStringLiteral("*WEATHER DATA : Alpha station") });
    write(QStringLiteral("Genotype/ABMOD048.CUL"), { QStringLiteral("IB0001 Alpha one") });
    write(QStringLiteral("Soil/SOIL.SOL"),
        QStringList { QStringLiteral("*SOILS: General") }
            + soilProfile(QStringLiteral("IBAB000001"), QStringLiteral("Alpha soil"),
                { soilLayer(QStringLiteral("10"), QStringLiteral(".1"), QStringLiteral(".2"),
                    QStringLiteral("1.3")) }));
}

QString soilHeader(const QString& code, const QString& depth, const QString& description)
{
    // Columns 12-31 hold the source and texture, which the program doesn't read.
    return QStringLiteral("*") + code.leftJustified(10) + QStringLiteral("  SCS         SIC   ")
        + depth.rightJustified(5) + QStringLiteral(" ") + description;
}

QString soilLayer(
    const QString& base, const QString& lower, const QString& upper, const QString& density)
{
    return QStringLiteral(" ") + base.rightJustified(5) + QStringLiteral("   -99  ")
        + lower.rightJustified(5) + QStringLiteral(" ") + upper.rightJustified(5)
        + QStringLiteral("  0.40  1.00  0.23 ") + density.rightJustified(5)
        + QStringLiteral("  1.20");
}

QStringList soilProfile(const QString& code, const QString& description, const QStringList& layers)
{
    return QStringList { soilHeader(code, QStringLiteral("150"), description),
        QStringLiteral("@SITE        COUNTRY          LAT     LONG SCS FAMILY"),
        QStringLiteral(" Somewhere   Nowhere        10.000   20.000 Clay"),
        QStringLiteral("@ SCOM  SALB  SLU1  SLDR  SLRO  SLNF  SLPF  SMHB  SMPX  SMKE"),
        QStringLiteral("    BN  0.13   6.0  0.30  85.0  1.00  1.00 IB001 IB001 IB001"),
        QStringLiteral("@  SLB  SLMH  SLLL  SDUL  SSAT  SRGF  SSKS  SBDM  SLOC") }
    + layers;
}

} // namespace quillon::test
