#pragma once

#include "PreviewPage.h"
#include "lint/Finding.h"

#include <QWidget>

#include <functional>
#include <memory>

class QFileSystemWatcher;
class QFrame;
class QLabel;
class QLineEdit;
class QListWidget;
class QTimer;

namespace qf::preview {

// A game data file's page beside the findings about it, rebuilt whenever the
// file or a language file is saved. The author can click the page's widgets
// (the rules run as for players) and pick a finding to see its widget framed.
class PreviewWindow : public QWidget {
    Q_OBJECT
public:
    using Lint = std::function<lint::Findings(const QString& gameDataPath)>;

    PreviewWindow(PageSource source, Lint lint, QWidget* parent = nullptr);
    ~PreviewWindow() override;

    GamePage* page() const { return m_page.get(); }
    const lint::Findings& findings() const { return m_findings; }
    // Frames the widget of the finding at that row; false when it has none.
    bool showFinding(int row);
    // The frame around the widget of the chosen finding, nullptr when none.
    QFrame* highlight() const { return m_highlight; }
    // What the game receives from the page as it is now.
    QString launchText() const;

signals:
    void rebuilt();

private:
    void rebuild();
    void showLaunch();
    void watchFiles();
    void fileSaved(const QString& path);

    PageSource m_source;
    Lint m_lint;
    lint::Findings m_findings;
    std::unique_ptr<GamePage> m_page;
    QWidget* m_pageHolder = nullptr;
    QLabel* m_problem = nullptr;
    QLineEdit* m_launch = nullptr;
    QLabel* m_summary = nullptr;
    QListWidget* m_list = nullptr;
    QFrame* m_highlight = nullptr;
    QFileSystemWatcher* m_watcher = nullptr;
    QTimer* m_rebuildSoon = nullptr;
};

} // namespace qf::preview
