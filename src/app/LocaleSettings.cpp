#include "app/LocaleSettings.h"

#include "app/AppState.h"

#include <QLocale>

namespace quillon {

namespace {

QLocale& savedLocale()
{
    static QLocale locale;
    return locale;
}

} // namespace

QString fourDigitYearFormat(const QString& shortDateFormat)
{
    if (shortDateFormat.contains(QLatin1String("yyyy")))
        return shortDateFormat;
    QString format = shortDateFormat;
    format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    return format.contains(QLatin1String("yyyy")) ? format : QStringLiteral("M/d/yyyy");
}

void saveLocaleSettings()
{
    savedLocale() = QLocale();
    const QLocale system = QLocale::system();
    state().SavedShortDate = system.dateFormat(QLocale::ShortFormat);
    state().SavedDecimal = system.decimalPoint();
    state().DateTextFormat = fourDigitYearFormat(state().SavedShortDate);
}

void restoreLocaleSettings() { QLocale::setDefault(savedLocale()); }

} // namespace quillon
