#include "app/AppState.h"
#include "format/Columns.h"
#include "format/Cp1252.h"
#include "format/DateCodes.h"
#include "format/NumberText.h"
#include "support/ScriptedUserInterface.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace quillon;
using namespace quillon::format;

namespace {

class DateText : public ::testing::Test {
protected:
    void SetUp() override { state().DateTextFormat = QStringLiteral("M/d/yyyy"); }
    test::ScriptedUserInterface m_ui;
};

} // namespace

TEST_F(DateText, FileCodesWithTheCenturyPivot)
{
    QString code = QStringLiteral("26001");
    EXPECT_EQ(YYDDDToDate(code), QStringLiteral("1/1/1926"));
    EXPECT_EQ(code, QStringLiteral("26000")); // the argument keeps the decremented form
    code = QStringLiteral("25001");
    EXPECT_EQ(YYDDDToDate(code), QStringLiteral("1/1/2025"));
    code = QStringLiteral("25366"); // the day isn't checked against the year
    EXPECT_EQ(YYDDDToDate(code), QStringLiteral("1/1/2026"));
    code = QStringLiteral("00001");
    EXPECT_EQ(YYDDDToDate(code), QStringLiteral("1/1/2000"));
    EXPECT_EQ(code, QStringLiteral("00000"));
    code = QStringLiteral("01000"); // day 000 borrows from the year: 2000 plus 999 days
    EXPECT_EQ(YYDDDToDate(code), QStringLiteral("9/26/2002"));
    EXPECT_EQ(code, QStringLiteral("00999"));
    for (const char* missing : { "", "-99", "0", " -99 " }) {
        QString m = QLatin1String(missing);
        EXPECT_EQ(YYDDDToDate(m), QString()) << missing;
        EXPECT_EQ(m, QLatin1String(missing));
    }
    EXPECT_TRUE(m_ui.messages.empty());
    // "-99.0" isn't the missing value here: it becomes "0-100", which is no date.
    QString notMissing = QStringLiteral("-99.0");
    EXPECT_EQ(YYDDDToDate(notMissing), QString());
    EXPECT_EQ(notMissing, QStringLiteral("0-100"));
    EXPECT_EQ(m_ui.texts(), QStringList { QStringLiteral("Type mismatch in TheDate.") });
}

TEST_F(DateText, TheDateAndItsLengthRule)
{
    EXPECT_EQ(TheDate(QStringLiteral("99031")), QStringLiteral("2/1/1999"));
    EXPECT_EQ(TheDate(QStringLiteral("  25000 ")), QStringLiteral("1/1/2025"));
    // Not five characters: always the twenty-first century, first two digits as year.
    EXPECT_EQ(TheDate(QStringLiteral("990031")), QStringLiteral("2/1/2099"));
    EXPECT_EQ(TheDate(QStringLiteral("9931")), QStringLiteral("7/21/2101"));
    EXPECT_EQ(TheDate(QVariant()), QString());
    EXPECT_TRUE(m_ui.messages.empty());
    // A day part that is no number is reported and gives "".
    EXPECT_EQ(TheDate(QStringLiteral("99ab1")), QString());
    ASSERT_EQ(m_ui.messages.size(), 1u);
    EXPECT_EQ(m_ui.messages[0].text, QStringLiteral("Type mismatch in TheDate."));

    EXPECT_EQ(TheDate2(QStringLiteral("2024059")), QStringLiteral("2/29/2024"));
    EXPECT_EQ(TheDate2(QStringLiteral("24059")), QString());
    QString seven = QStringLiteral("2024001");
    EXPECT_EQ(YYYYDDDToDate(seven), QStringLiteral("1/1/2024"));
    QString five = QStringLiteral("24001"); // padding stops at five: too short for TheDate2
    EXPECT_EQ(YYYYDDDToDate(five), QString());
}

TEST_F(DateText, DatesToCodesAndSlashText)
{
    QVariant d = QDate(1999, 2, 1);
    EXPECT_EQ(DateToYYDDD(d), QStringLiteral("99032"));
    EXPECT_EQ(d.toString(), QStringLiteral("2/1/1999"));
    QVariant d2 = QStringLiteral("12/31/2024");
    EXPECT_EQ(DateToYYYYDDD(d2), QStringLiteral("2024366"));
    QVariant d3 = QStringLiteral("1/5/2003");
    EXPECT_EQ(DateToYYDDD(d3), QStringLiteral("03005"));
    QVariant junk = QStringLiteral("no date");
    EXPECT_EQ(DateToYYDDD(junk), QStringLiteral("001"));
    EXPECT_EQ(junk.toString(), QString());
    EXPECT_EQ(DateToSlashText(QDate(2001, 3, 4)), QStringLiteral("3/4/2001"));
    EXPECT_EQ(DateToSlashText(QStringLiteral("x")), QString());

    // Date text follows the user's format and reads back.
    state().DateTextFormat = QStringLiteral("dd.MM.yyyy");
    EXPECT_EQ(TheDate(QStringLiteral("99031")), QStringLiteral("01.02.1999"));
    QVariant back = TheDate(QStringLiteral("99031"));
    EXPECT_EQ(DateToYYDDD(back), QStringLiteral("99032"));
}

TEST(NumberText, NumTextWritesShortestFloatWithAPoint)
{
    EXPECT_EQ(NumText(QVariant()), QString());
    EXPECT_EQ(NumText(QStringLiteral("1,5")), QStringLiteral("1.5"));
    EXPECT_EQ(NumText(1.5), QStringLiteral("1.5"));
    EXPECT_EQ(NumText(0.1), QStringLiteral("0.1"));
    EXPECT_EQ(NumText(static_cast<double>(0.1f)), QStringLiteral("0.1"));
    EXPECT_EQ(NumText(25.0), QStringLiteral("25"));
    EXPECT_EQ(NumText(-99.0), QStringLiteral("-99"));
    EXPECT_EQ(NumText(0.0001), QStringLiteral("0.0001"));
    EXPECT_EQ(NumText(0.00001), QStringLiteral("1E-05"));
    EXPECT_EQ(NumText(12345678.0), QStringLiteral("1.2345678E+07"));
    EXPECT_EQ(NumText(1234567.0), QStringLiteral("1234567"));
    EXPECT_EQ(NumText(7), QStringLiteral("7"));
    EXPECT_EQ(NumText(QStringLiteral("  12 ")), QStringLiteral("12"));
}

TEST(NumberText, FormatMasks)
{
    EXPECT_EQ(formatMask(0, QStringLiteral("#0.00")), QStringLiteral("0.00"));
    EXPECT_EQ(formatMask(12.3, QStringLiteral("#0.00")), QStringLiteral("12.30"));
    EXPECT_EQ(formatMask(0.5, QStringLiteral("##.0")), QStringLiteral(".5"));
    EXPECT_EQ(formatMask(-99, QStringLiteral("##.0")), QStringLiteral("-99.0"));
    EXPECT_EQ(formatMask(0, QStringLiteral("##")), QString());
    EXPECT_EQ(formatMask(15, QStringLiteral("##")), QStringLiteral("15"));
    EXPECT_EQ(formatMask(2.345, QStringLiteral("#0.00")), QStringLiteral("2.35"));
    EXPECT_EQ(formatMask(0.145, QStringLiteral("##.000")), QStringLiteral(".145"));
    EXPECT_EQ(formatMask(1234.56, QStringLiteral("##0.0")), QStringLiteral("1234.6"));
    EXPECT_EQ(formatMask(9.96, QStringLiteral("#0.0")), QStringLiteral("10.0"));
    EXPECT_EQ(formatMask(5, QStringLiteral("00")), QStringLiteral("05"));
    EXPECT_EQ(formatMask(7, QStringLiteral("000")), QStringLiteral("007"));
    EXPECT_EQ(formatMask(-0.04, QStringLiteral("#0.0")), QStringLiteral("0.0"));
    EXPECT_EQ(maskedNumber(1.5, QStringLiteral("#0.00")), QStringLiteral("1.50"));
}

TEST(NumberText, LeadingNumberAndIsNumeric)
{
    EXPECT_EQ(leadingNumber(QStringLiteral("  12.5abc")), 12.5);
    EXPECT_EQ(leadingNumber(QStringLiteral("1 2")), 12); // blanks anywhere are skipped
    EXPECT_EQ(leadingNumber(QStringLiteral("-99")), -99);
    EXPECT_EQ(leadingNumber(QStringLiteral("abc")), 0);
    EXPECT_EQ(leadingNumber(QStringLiteral("")), 0);
    EXPECT_EQ(leadingNumber(QStringLiteral(".5")), 0.5);
    EXPECT_EQ(leadingNumber(QStringLiteral("1E3x")), 1000);
    EXPECT_EQ(leadingNumber(QStringLiteral("1Ex")), 1);
    EXPECT_TRUE(isNumeric(QStringLiteral("  1 ")));
    EXPECT_TRUE(isNumeric(QStringLiteral("-2.5")));
    EXPECT_TRUE(isNumeric(QStringLiteral("1e5")));
    EXPECT_FALSE(isNumeric(QStringLiteral("1 2")));
    EXPECT_FALSE(isNumeric(QStringLiteral("")));
    EXPECT_FALSE(isNumeric(QStringLiteral("-")));
    EXPECT_FALSE(isNumeric(QStringLiteral("A1")));
}

TEST(Columns, WriterIdioms)
{
    EXPECT_EQ(levelColumn(1), QStringLiteral(" 1 "));
    EXPECT_EQ(levelColumn(12), QStringLiteral("12 "));
    EXPECT_EQ(levelColumn(123), QStringLiteral("123"));
    EXPECT_EQ(levelColumn(1234), QStringLiteral("1234"));
    EXPECT_EQ(twoWide(3), QStringLiteral(" 3"));
    EXPECT_EQ(twoWide(13), QStringLiteral("13"));
    EXPECT_EQ(rightJustified(QStringLiteral("12"), 6), QStringLiteral("    12"));
    EXPECT_EQ(rightJustified(QStringLiteral("1234567"), 6), QStringLiteral("1234567"));
    EXPECT_EQ(afterGap(QStringLiteral("ab "), 2), QStringLiteral("  ab "));
    EXPECT_EQ(mid(QStringLiteral("abcdef"), 2, 3), QStringLiteral("bcd"));
    EXPECT_EQ(mid(QStringLiteral("abc"), 5, 3), QString());
}

TEST(Columns, CaptionStemKeepsTheHyphen)
{
    EXPECT_EQ(CaptionStem(QStringLiteral("Fertilizers - ABCD0101.MZX")), QStringLiteral("Fertilizers -"));
    EXPECT_EQ(CaptionStem(QStringLiteral("Fields -ABC")), QStringLiteral("Fields -"));
    EXPECT_EQ(CaptionStem(QStringLiteral("Treatments")), QStringLiteral("Treatments"));
    EXPECT_EQ(CaptionStem(QStringLiteral("Tillage -")), QStringLiteral("Tillage -"));
    EXPECT_EQ(CaptionStem(QStringLiteral("Tillage -x")), QStringLiteral("Tillage -x"));
}

TEST(Cp1252, EveryByteRoundTrips)
{
    QByteArray all;
    for (int b = 0; b < 256; ++b)
        all.append(char(b));
    const QString text = fromCp1252(all);
    EXPECT_EQ(text.size(), 256);
    EXPECT_EQ(text.at(0x80), QChar(0x20AC));
    EXPECT_EQ(text.at(0xE9), QChar(0xE9));
    EXPECT_EQ(toCp1252(text), all);
}
