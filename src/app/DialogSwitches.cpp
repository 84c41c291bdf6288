#include "app/DialogSwitches.h"

#include "app/AppState.h"
#include "format/NumberText.h"

#include <QFile>

namespace quillon {

namespace {

bool switchOn(const char* name)
{
    QFile file(state().AppFolder + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QString firstLine = QString::fromLatin1(file.readLine());
    return format::leadingNumber(firstLine) == 1;
}

void switchOff(const char* name)
{
    QFile file(state().AppFolder + QLatin1String(name));
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write("0\r\n");
}

} // namespace

bool DontShowOptionRefresh() { return switchOn("DontShowOption.txt"); }
bool DontShowOptionNew() { return switchOn("DontShowNew.txt"); }
void DontShowOption_Remove() { switchOff("DontShowOption.txt"); }
void DontShowNew_Remove() { switchOff("DontShowNew.txt"); }

} // namespace quillon
