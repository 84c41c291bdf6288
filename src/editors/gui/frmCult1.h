#pragma once

#include "editors/CultivarEditor.h"
#include "editors/CultivarScreen.h"
#include "editors/gui/LevelGridWindow.h"

class QLabel;
class QListWidget;

namespace quillon {

// The cultivar editor's window: the level grid DBGrid1, the crop list
// ListCrop, the cultivar list ListDescription, the crop's picture, and the
// buttons. It only shows and forwards: every routine is the editor's. In the
// crop list a letter goes to the first crop that begins with it; a click,
// Enter or Space chooses.
class frmCult1 final : public LevelGridWindow, public editors::CultivarScreen {
    Q_OBJECT
public:
    explicit frmCult1(QWidget* parent = nullptr);
    ~frmCult1() override;

    void Form_Load() override;
    editors::CultivarEditor& editor() { return m_editor; }

    int currentRow() const override { return gridRow(); }
    void goToRow(int row) override { moveGrid(row); }
    void commitEdit() override { commitGridEdit(); }
    void setCaption(const QString& caption) override { setWindowTitle(caption); }
    void closeWindow() override { closeFromEditor(); }
    void setCrops(const QStringList& names) override;
    void selectCrop(int row) override;
    void setCultivars(const QStringList& descriptions, int selected) override;
    void showPicture(const QString& path) override;

protected:
    void escapePressed() override { m_editor.escapePressed(); }
    void unload() override { m_editor.Form_Unload(); }
    void levelRowChanged() override { m_editor.DBGrid1_RowColChange(); }
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void choose(QListWidget* list);

    editors::CultivarEditor m_editor { *this };
    QListWidget* m_ListCrop;
    QListWidget* m_ListDescription;
    QLabel* m_picture;
};

} // namespace quillon
