#pragma once

#include "editors/EventEditor.h"
#include "editors/EventScreen.h"
#include "editors/SqlGridModel.h"
#include "editors/gui/EditorWindow.h"

#include <memory>
#include <vector>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTableView;

namespace quillon {

class GridDelegate;

// The window of the event-editor frame: the level grid DBGrid1 and the
// event grid DBGrid2 over their record sources, the management and year
// controls, the drop-down lists, and the buttons. It only shows and
// forwards: every routine is the editor's.
class EventEditorWindow : public EditorWindow, public editors::EventScreen {
    Q_OBJECT
public:
    explicit EventEditorWindow(const editors::EventMember& member, QWidget* parent = nullptr);
    ~EventEditorWindow() override;

    void Form_Load() override { m_editor.Form_Load(); }
    editors::EventEditor& editor() { return m_editor; }

    // EventScreen
    QString levelCellText() const override;
    QString eventCellText(int column) const override;
    qint64 currentEventRow() const override;
    RuntimeError commitEventEdit() override;
    void showLevels(const QString& statement, editors::LevelRow row) override;
    void showEvents(const editors::EventGridSetup& setup) override;
    void refreshEvents() override;
    void goToEvent(qint64 row) override;
    void goToLastEvent() override;
    void setEventCell(int column, const QString& text) override;
    void setLevelCaptions(const QStringList& captions) override;
    void setEventCaptions(const QStringList& captions, const std::vector<bool>& visible) override;
    void setCaption(const QString& caption) override;
    void setLevelNumberText(const QString& text) override;
    void showYears(const editors::YearControls& years) override;
    void setManagementChoices(const QStringList& descriptions) override;
    void showManagement(const QString& description) override;
    void setListItems(int list, const QStringList& items) override;
    void showList(int list, const QString& selected) override;
    void hideLists() override;
    void setDeleteEnabled(bool levelButton, bool eventButton) override;
    void closeWindow() override { closeFromEditor(); }

protected:
    void keyCommand(Key key) override;
    void unload() override { m_editor.Form_Unload(); }
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildLayout();
    void connectWidgets();
    int levelRow() const;
    int eventRow() const;
    void setEventRow(int row);
    bool isListColumn(int column) const;
    void fitColumns();

    editors::EventEditor m_editor;
    editors::SqlGridModel m_levels;
    editors::SqlGridModel m_events;
    QTableView* m_DBGrid1;
    QTableView* m_DBGrid2;
    GridDelegate* m_levelDelegate;
    GridDelegate* m_eventDelegate;
    QLabel* m_lblHeading;
    QLabel* m_LblLevelNumber;
    QLabel* m_lblManagement;
    QComboBox* m_DBComboManagement;
    QLabel* m_lblYear;
    QComboBox* m_ComboYear;
    QLineEdit* m_txtYear;
    QPushButton* m_cmdAdd1;
    QPushButton* m_cmdDelete1;
    QPushButton* m_cmdAdd2;
    QPushButton* m_cmdDelete2;
    QPushButton* m_cmdOK;
    QPushButton* m_cmdCancel;
    std::vector<QListWidget*> m_lists;
    // Programmatic moves of the grids don't run the editor's row handlers.
    bool m_moving = false;
    // A commit asked for by a routine reports its failure to the routine,
    // not through the grid's error event.
    bool m_committing = false;
};

} // namespace quillon
