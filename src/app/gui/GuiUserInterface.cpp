#include "app/gui/GuiUserInterface.h"

#include "app/StartUp.h"
#include "app/gui/frmWait.h"
#include "database/WorkDatabase.h"
#include "editors/gui/frmDelMessage.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QRegularExpression>

#include <cstdlib>

namespace quillon {

namespace {

QMessageBox::StandardButtons standardButtons(MsgButtons buttons)
{
    switch (buttons) {
    case MsgButtons::OK:
        return QMessageBox::Ok;
    case MsgButtons::OKCancel:
    case MsgButtons::OKCancelDefaultCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case MsgButtons::YesNo:
    case MsgButtons::YesNoDefaultNo:
        return QMessageBox::Yes | QMessageBox::No;
    case MsgButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon messageIcon(MsgIcon icon)
{
    switch (icon) {
    case MsgIcon::Critical:
        return QMessageBox::Critical;
    case MsgIcon::Question:
        return QMessageBox::Question;
    case MsgIcon::Exclamation:
        return QMessageBox::Warning;
    case MsgIcon::Information:
        return QMessageBox::Information;
    case MsgIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

MsgAnswer answerOf(int button)
{
    switch (button) {
    case QMessageBox::Cancel:
        return MsgAnswer::Cancel;
    case QMessageBox::Yes:
        return MsgAnswer::Yes;
    case QMessageBox::No:
        return MsgAnswer::No;
    default:
        return MsgAnswer::OK;
    }
}

QString bothCases(const QString& pattern)
{
    const QString lower = pattern.toLower();
    const QString upper = pattern.toUpper();
    return lower == upper ? lower : lower + QLatin1Char(' ') + upper;
}

} // namespace

QString qtFileFilter(const QString& filter)
{
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList filters;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString description = parts.at(i);
        description.remove(QRegularExpression(QStringLiteral("\\s*\\([^)]*\\)\\s*$")));
        QStringList patterns;
        for (const QString& pattern : parts.at(i + 1).split(QLatin1Char(';'), Qt::SkipEmptyParts))
            patterns << bothCases(pattern.trimmed());
        filters << QStringLiteral("%1 (%2)").arg(
            description.trimmed(), patterns.join(QLatin1Char(' ')));
    }
    return filters.join(QStringLiteral(";;"));
}

GuiUserInterface::GuiUserInterface(QWidget* parent)
    : m_parent(parent)
{
}

GuiUserInterface::~GuiUserInterface()
{
    delete m_wait.data();
}

MsgAnswer GuiUserInterface::message(
    const QString& text, const QString& title, MsgIcon icon, MsgButtons buttons)
{
    QApplication::restoreOverrideCursor();
    QMessageBox box(messageIcon(icon), title, text, standardButtons(buttons), m_parent);
    if (buttons == MsgButtons::YesNoDefaultNo)
        box.setDefaultButton(QMessageBox::No);
    if (buttons == MsgButtons::OKCancelDefaultCancel)
        box.setDefaultButton(QMessageBox::Cancel);
    return answerOf(box.exec());
}

QString GuiUserInterface::openFileName(
    const QString& filter, const QString& folder, const QString& name)
{
    return QFileDialog::getOpenFileName(m_parent, QString(), QDir(folder).filePath(name),
        qtFileFilter(filter), nullptr, QFileDialog::ReadOnly);
}

QString GuiUserInterface::saveFileName(
    const QString& filter, const QString& folder, const QString& name)
{
    // The program asks about overwriting itself.
    return QFileDialog::getSaveFileName(m_parent, QString(), QDir(folder).filePath(name),
        qtFileFilter(filter), nullptr, QFileDialog::DontConfirmOverwrite);
}

PrintChoice GuiUserInterface::choosePrinter()
{
    QPrinter printer;
    QPrintDialog dialog(&printer, m_parent);
    PrintChoice choice;
    choice.accepted = dialog.exec() == QDialog::Accepted;
    if (choice.accepted) {
        choice.pdfFile
            = printer.outputFormat() == QPrinter::PdfFormat ? printer.outputFileName() : QString();
        choice.printerName = printer.printerName();
    }
    return choice;
}

void GuiUserInterface::progress(int percent)
{
    if (percent < 0) {
        delete m_wait.data();
        return;
    }
    if (!m_wait)
        m_wait = new frmWait(m_parent);
    m_wait->setPercent(percent);
}

void GuiUserInterface::endProgram()
{
    database::closeWorkDB();
    releaseInstanceLock();
    std::exit(0);
}

void GuiUserInterface::deletionWarning(const QString& levelName, const QStringList& treatments)
{
    QApplication::restoreOverrideCursor();
    frmDelMessage dialog(levelName, treatments, m_parent);
    dialog.exec();
}

} // namespace quillon
