#pragma once

#include "app/UserInterface.h"

#include <QPointer>

class QWidget;

namespace quillon {

class frmWait;

// The user interface of the windowed program: message boxes, file and
// printer dialogs, and the wait window for progress.
class GuiUserInterface final : public UserInterface {
public:
    explicit GuiUserInterface(QWidget* parent = nullptr);
    ~GuiUserInterface() override;

    void setParentWindow(QWidget* parent) { m_parent = parent; }

    MsgAnswer message(const QString& text, const QString& title, MsgIcon icon, MsgButtons buttons) override;
    QString openFileName(const QString& filter, const QString& folder, const QString& name) override;
    QString saveFileName(const QString& filter, const QString& folder, const QString& name) override;
    PrintChoice choosePrinter() override;
    void progress(int percent) override;
    void endProgram() override;
    void deletionWarning(const QString& levelName, const QStringList& treatments) override;

private:
    QPointer<QWidget> m_parent;
    QPointer<frmWait> m_wait;
};

// The program's filter form "Name (*.x)|*.x|Other|*.*" in Qt's form, each
// pattern offered in both cases so that "*.*x" also finds "ABCD0101.MZX".
QString qtFileFilter(const QString& filter);

} // namespace quillon
