#include "app/UserInterface.h"

#include <cstdlib>

namespace quillon {

namespace {

class SilentUserInterface final : public UserInterface {
public:
    MsgAnswer message(const QString&, const QString&, MsgIcon, MsgButtons buttons) override
    {
        return firstAnswer(buttons);
    }
    QString openFileName(const QString&, const QString&, const QString&) override { return {}; }
    QString saveFileName(const QString&, const QString&, const QString&) override { return {}; }
    PrintChoice choosePrinter() override { return {}; }
    void progress(int) override { }
    void endProgram() override { std::exit(1); }
};

SilentUserInterface g_silent;
UserInterface* g_ui = &g_silent;

} // namespace

MsgAnswer firstAnswer(MsgButtons buttons)
{
    switch (buttons) {
    case MsgButtons::YesNo:
    case MsgButtons::YesNoCancel:
        return MsgAnswer::Yes;
    case MsgButtons::YesNoDefaultNo:
        return MsgAnswer::No;
    case MsgButtons::OKCancelDefaultCancel:
        return MsgAnswer::Cancel;
    case MsgButtons::OK:
    case MsgButtons::OKCancel:
        break;
    }
    return MsgAnswer::OK;
}

void UserInterface::deletionWarning(const QString& levelName, const QStringList& treatments)
{
    const QString text = QStringLiteral("This level is used in one or more treatments.\n"
                                        "You may not delete the level used by a treatment. You MUST "
                                        "modify the treatment design to use another available level "
                                        "or delete the treatment.\n")
        + QStringLiteral("Treatment %1 is currently using this %2 level")
              .arg(treatments.join(QStringLiteral(", ")), levelName);
    message(text, QStringLiteral("Deletion Warning"), MsgIcon::Exclamation, MsgButtons::OK);
}

UserInterface& ui() { return *g_ui; }

void setUserInterface(UserInterface* ui) { g_ui = ui ? ui : &g_silent; }

QString appTitle() { return QStringLiteral("Quillon"); }

MsgAnswer msgBox(const QString& text, MsgButtons buttons, MsgIcon icon, const QString& title)
{
    return ui().message(text, title.isEmpty() ? appTitle() : title, icon, buttons);
}

void reportError(const QString& errorText, const QString& tail)
{
    msgBox(errorText + tail);
}

void endProgram()
{
    ui().endProgram();
    // An interface that returns from endProgram() still ends the process.
    std::exit(1);
}

} // namespace quillon
