#pragma once

#include "EditHistory.h"
#include "PageOverlay.h"
#include "PreviewPage.h"
#include "ScratchHost.h"
#include "lint/Finding.h"

#include <QMainWindow>

#include <memory>

class GamePage;
class QAction;
class QFileSystemWatcher;
class QListWidget;
class QScrollArea;
class QSpinBox;
class QTimer;

namespace qf::designer {

// What the designer asks the author; a test answers in place of a person.
class DesignerQuestions {
public:
    virtual ~DesignerQuestions() = default;
    // The file changed on disk while edits are unsaved: true takes the file's.
    virtual bool reloadOverEdits(QWidget* parent, const QString& path) = 0;
    enum class Unsaved { Save, Discard, Cancel };
    virtual Unsaved closeWithEdits(QWidget* parent, const QString& path) = 0;
};
std::shared_ptr<DesignerQuestions> messageBoxQuestions();

// A game data file's page drawn by the control's view, edited with the mouse
// and the keyboard. Every edit goes through the editing core and onto the
// undo history; the page, the properties and the findings follow the edited
// bytes, and the file is written only on Save.
class DesignerWindow : public QMainWindow {
    Q_OBJECT
public:
    // Throws editing::EditError for a file the editing core cannot write back.
    DesignerWindow(preview::PageSource source, std::shared_ptr<DesignerQuestions> questions,
                   QWidget* parent = nullptr);
    ~DesignerWindow() override;

    PageOverlay* overlay() const { return m_overlay; }
    GamePage* page() const { return m_page.get(); }
    const QByteArray& bytes() const { return m_history.current(); }
    bool isModified() const { return bytes() != m_saved; }
    const lint::Findings& findings() const { return m_findings; }
    // Writes the edited bytes to the file; false (and says why) when it cannot.
    bool save();
    void undo();
    void redo();
    void setGrid(int twips);
    void select(int entry);
    void setTesting(bool on);

signals:
    // The page was built again from the edited bytes.
    void rebuilt();
    void linted();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildActions();
    void buildDocks();
    // Makes bytes the current state: an edit when record is true.
    void apply(const QByteArray& bytes, bool record, const QStringList& notes = {});
    void refresh();
    void rebuildPage();
    void showProperties();
    void runLint();
    void place(int entry, const QRect& twips);
    void addEntry(const QString& kind);
    void setKeyValue(const QString& key, const QString& value);
    void deleteSelected();
    void watchFile();
    void fileChanged();
    void updateActions();

    preview::PageSource m_source;
    std::shared_ptr<DesignerQuestions> m_questions;
    ScratchHost m_scratch;
    editing::EditHistory m_history;
    QByteArray m_saved; // the file's bytes as last read or written
    std::unique_ptr<GamePage> m_page;
    QWidget* m_canvas = nullptr;
    PageOverlay* m_overlay = nullptr;
    QSpinBox* m_grid = nullptr;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QAction* m_testing = nullptr;
    QList<QAction*> m_groups; // mod selection, parameters, configs
    QList<QAction*> m_editActions;
    QScrollArea* m_propertyScroll = nullptr;
    QWidget* m_properties = nullptr;
    QWidget* m_palette = nullptr;
    QListWidget* m_findingList = nullptr;
    lint::Findings m_findings;
    QTimer* m_lintSoon = nullptr;
    QFileSystemWatcher* m_watcher = nullptr;
    QTimer* m_reloadSoon = nullptr;
};

} // namespace qf::designer
