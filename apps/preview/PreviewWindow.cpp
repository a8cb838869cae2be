#include "PreviewWindow.h"

#include "EntryWidget.h"
#include "GamePage.h"
#include "control/qForms.h"
#include "view/ControlView.h"

#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace qf::preview {

namespace {

QString severityWord(lint::Severity severity)
{
    switch (severity) {
    case lint::Severity::Error:
        return QStringLiteral("error");
    case lint::Severity::Warning:
        return QStringLiteral("warning");
    case lint::Severity::Note:
        break;
    }
    return QStringLiteral("note");
}

QString findingText(const lint::Finding& finding)
{
    return QStringLiteral("%1:%2: %3: %4 [%5]")
        .arg(QFileInfo(finding.path).fileName())
        .arg(finding.line)
        .arg(severityWord(finding.severity), finding.message, finding.check);
}

} // namespace

PreviewWindow::PreviewWindow(PageSource source, Lint lint, QWidget* parent)
    : QWidget(parent), m_source(std::move(source)), m_lint(std::move(lint)),
      m_watcher(new QFileSystemWatcher(this)), m_rebuildSoon(new QTimer(this))
{
    setWindowTitle(tr("%1 - qforms preview").arg(QFileInfo(m_source.gameDataPath).fileName()));
    auto* layout = new QHBoxLayout(this);
    m_pageHolder = new QWidget(this);
    auto* pageLayout = new QVBoxLayout(m_pageHolder);
    pageLayout->setContentsMargins(0, 0, 0, 0);
    m_problem = new QLabel(m_pageHolder);
    m_problem->setWordWrap(true);
    pageLayout->addWidget(m_problem);
    auto* launchLabel = new QLabel(tr("&Launch:"), m_pageHolder);
    m_launch = new QLineEdit(m_pageHolder);
    m_launch->setObjectName(QStringLiteral("launch"));
    m_launch->setReadOnly(true);
    launchLabel->setBuddy(m_launch);
    pageLayout->addWidget(launchLabel);
    pageLayout->addWidget(m_launch);
    pageLayout->addStretch();
    layout->addWidget(m_pageHolder);
    auto* findingsLayout = new QVBoxLayout;
    m_summary = new QLabel(this);
    findingsLayout->addWidget(m_summary);
    m_list = new QListWidget(this);
    m_list->setMinimumWidth(320);
    m_list->setWordWrap(true);
    m_list->setResizeMode(QListView::Adjust);
    findingsLayout->addWidget(m_list);
    layout->addLayout(findingsLayout, 1);

    connect(m_list, &QListWidget::currentRowChanged, this, &PreviewWindow::showFinding);
    // A second click on the same finding frames its widget again after a rebuild.
    connect(m_list, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { showFinding(m_list->row(item)); });
    // Editors write in several steps: build once they are done.
    m_rebuildSoon->setSingleShot(true);
    m_rebuildSoon->setInterval(150);
    connect(m_rebuildSoon, &QTimer::timeout, this, &PreviewWindow::rebuild);
    connect(m_watcher, &QFileSystemWatcher::fileChanged, this, &PreviewWindow::fileSaved);
    connect(m_watcher, &QFileSystemWatcher::directoryChanged, this, &PreviewWindow::fileSaved);
    rebuild();
}

PreviewWindow::~PreviewWindow() = default;

void PreviewWindow::rebuild()
{
    // The new page may ask for another size: the author placed the window.
    const QRect placed = geometry();
    const bool wasShown = isVisible();
    m_highlight = nullptr;
    m_page.reset();

    const QString problem = checkSource(m_source);
    m_problem->setText(problem);
    m_problem->setVisible(!problem.isEmpty());
    if (problem.isEmpty()) {
        m_page = buildPage(m_source, m_pageHolder);
        static_cast<QVBoxLayout*>(m_pageHolder->layout())->insertWidget(1, m_page.get());
        // The launch follows every click on the page.
        connect(m_page.get(), &GamePage::changed, m_launch, [this] { showLaunch(); });
    }
    showLaunch();

    m_findings = m_lint ? m_lint(m_source.gameDataPath) : lint::Findings{};
    const QSignalBlocker quiet(m_list);
    m_list->clear();
    for (const lint::Finding& finding : m_findings)
        m_list->addItem(findingText(finding));
    const int count = int(m_findings.size());
    m_summary->setText(count == 0   ? tr("No findings")
                       : count == 1 ? tr("1 finding: pick it to see its widget")
                                    : tr("%1 findings: pick one to see its widget").arg(count));

    watchFiles();
    if (wasShown)
        setGeometry(placed);
    emit rebuilt();
}

// A file saved by renaming a new one over it leaves the watcher: watch it
// again, and watch the folders so a file that comes back is noticed.
void PreviewWindow::watchFiles()
{
    const QStringList paths = watchedPaths(m_source);
    const QStringList watched = m_watcher->files() + m_watcher->directories();
    QStringList missing;
    for (const QString& path : paths)
        if (!watched.contains(path) && QFileInfo::exists(path))
            missing.append(path);
    if (!missing.isEmpty())
        m_watcher->addPaths(missing);
}

void PreviewWindow::fileSaved(const QString&)
{
    m_rebuildSoon->start();
}

void PreviewWindow::showLaunch()
{
    m_launch->setText(m_page ? launchLine(*m_page) : QString());
    m_launch->setCursorPosition(0); // the program first
}

QString PreviewWindow::launchText() const
{
    return m_launch->text();
}

bool PreviewWindow::showFinding(int row)
{
    delete m_highlight;
    m_highlight = nullptr;
    if (!m_page || row < 0 || row >= int(m_findings.size()))
        return false;
    const Widget* model = entryWidget(m_source.gameDataPath, m_findings[size_t(row)].entry,
                                      m_page->control().widgets());
    ControlView* view = controlView(*m_page);
    QWidget* shown = model ? view->viewOf(*model) : nullptr;
    if (!shown)
        return false;
    m_highlight = new QFrame(view);
    m_highlight->setObjectName(QStringLiteral("findingHighlight"));
    m_highlight->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_highlight->setStyleSheet(QStringLiteral("border: 2px solid #e0301e;"));
    const QRect around(shown->mapTo(view, QPoint(0, 0)), shown->size());
    m_highlight->setGeometry(around.adjusted(-3, -3, 3, 3));
    m_highlight->show();
    m_highlight->raise();
    return true;
}

} // namespace qf::preview
