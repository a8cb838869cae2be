#include "DesignerWindow.h"

#include "gamedata/GameDataKeys.h"

#include "EntryEdits.h"
#include "GameDataDocument.h"
#include "GamePage.h"
#include "Lint.h"
#include "PageEntries.h"
#include "PropertyEditors.h"
#include "ScratchSettingsStore.h"
#include "context/ControlWidgets.h"
#include "control/qForms.h"
#include "platform/FileReplacement.h"
#include "platform/MessageBox.h"
#include "view/ControlView.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QDockWidget>
#include <QFile>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QStatusBar>
#include <QTextStream>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>
#include <cstring>

namespace qf::designer {

namespace {

using editing::GameDataDocument;

namespace gd = qf::gamedata;

class MessageBoxQuestions : public DesignerQuestions {
public:
    bool reloadOverEdits(QWidget* parent, const QString& path) override
    {
        QMessageBox box(QMessageBox::Question, QObject::tr("File changed"),
                        QObject::tr("%1 changed on disk, and your edits are not saved.")
                            .arg(QFileInfo(path).fileName()),
                        QMessageBox::NoButton, parent);
        QPushButton* reload = box.addButton(QObject::tr("&Reload"), QMessageBox::DestructiveRole);
        box.addButton(QObject::tr("&Keep mine"), QMessageBox::RejectRole);
        box.exec();
        return box.clickedButton() == reload;
    }
    Unsaved closeWithEdits(QWidget* parent, const QString& path) override
    {
        switch (QMessageBox::question(
            parent, QObject::tr("Unsaved edits"),
            QObject::tr("Save your edits of %1?").arg(QFileInfo(path).fileName()),
            QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel)) {
        case QMessageBox::Save:
            return Unsaved::Save;
        case QMessageBox::Discard:
            return Unsaved::Discard;
        default:
            return Unsaved::Cancel;
        }
    }
};

// What the page would tell a player goes to stderr: the author sees the page.
class StderrMessages : public MessageBox {
public:
    void show(const QString& text, int, const QString& title) override
    {
        QTextStream(stderr) << title << ": " << text << '\n';
    }
};

// The entries the author can grab: boxes by Location and Size, lines by
// their ends (X-Location "X1xX2", Y-Location "Y2xY1").
std::vector<EntryBox> entryBoxes(const GameDataDocument& doc)
{
    using editing::numberPair;
    std::vector<EntryBox> boxes;
    for (const auto& [entry, widget] : editing::PageEntries::read(doc).widgets) {
        if (widget.kind == gd::KindLine) {
            const auto xs = numberPair(doc, entry, gd::XLocation);
            const auto ys = numberPair(doc, entry, gd::YLocation);
            if (!xs || !ys)
                continue;
            const int left = std::min(xs->x(), xs->y());
            const int top = std::min(ys->x(), ys->y());
            boxes.push_back({entry, widget.kind,
                             QRect(left, top, std::max(xs->x(), xs->y()) - left,
                                   std::max(ys->x(), ys->y()) - top)});
            continue;
        }
        const auto location = numberPair(doc, entry, gd::Location);
        const auto size = numberPair(doc, entry, gd::Size);
        if (!location || !size)
            continue;
        boxes.push_back(
            {entry, widget.kind, QRect(location->x(), location->y(), size->y(), size->x())});
    }
    return boxes;
}

// A line moved by (dx, dy): both ends of each key shift, in the order written.
QByteArray movedLine(const GameDataDocument& doc, int entry, int dx, int dy)
{
    QByteArray bytes = doc.bytes();
    for (const auto& [suffix, by] : {std::pair{gd::XLocation, dx}, std::pair{gd::YLocation, dy}}) {
        const GameDataDocument current = GameDataDocument::parse(bytes);
        const auto ends = editing::numberPair(current, entry, suffix);
        if (!ends)
            continue;
        bytes = editing::setKey(current, gd::entryKey(entry, suffix),
                                QStringLiteral("%1x%2").arg(ends->x() + by).arg(ends->y() + by))
                    .bytes;
    }
    return bytes;
}

QRect twipsOf(std::initializer_list<const Widget*> widgets)
{
    QRect area;
    for (const Widget* widget : widgets)
        area |= QRect(int(widget->left()), int(widget->top()), int(widget->width()),
                      int(widget->height()));
    return area;
}

QString findingText(const lint::Finding& finding)
{
    const char* words[] = {"error", "warning", "note"};
    return QStringLiteral("%1: %2: %3 [%4]")
        .arg(finding.line)
        .arg(QLatin1String(words[int(finding.severity)]), finding.message, finding.check);
}

} // namespace

std::shared_ptr<DesignerQuestions> messageBoxQuestions()
{
    return std::make_shared<MessageBoxQuestions>();
}

DesignerWindow::DesignerWindow(preview::PageSource source,
                               std::shared_ptr<DesignerQuestions> questions, QWidget* parent)
    : QMainWindow(parent), m_source(std::move(source)), m_questions(std::move(questions)),
      m_scratch(m_source.appPath, m_source.gameDataPath), m_history(QByteArray()),
      m_lintSoon(new QTimer(this)), m_watcher(new QFileSystemWatcher(this)),
      m_reloadSoon(new QTimer(this))
{
    QFile file(m_source.gameDataPath);
    if (!file.open(QIODevice::ReadOnly))
        throw editing::EditError(
            QStringLiteral("%1: %2").arg(m_source.gameDataPath, file.errorString()));
    m_saved = file.readAll();
    GameDataDocument::parse(m_saved); // refuses what cannot be written back
    m_history = editing::EditHistory(m_saved);
    setWindowTitle(tr("%1[*] - qforms design").arg(QFileInfo(m_source.gameDataPath).fileName()));

    auto* scroll = new QScrollArea(this);
    m_canvas = new QWidget;
    scroll->setWidget(m_canvas);
    setCentralWidget(scroll);
    m_overlay = new PageOverlay(m_canvas);
    m_overlay->setObjectName(QStringLiteral("overlay"));
    connect(m_overlay, &PageOverlay::placed, this, &DesignerWindow::place);
    connect(m_overlay, &PageOverlay::selectionChanged, this, &DesignerWindow::showProperties);

    buildActions();
    buildDocks();
    m_lintSoon->setSingleShot(true);
    m_lintSoon->setInterval(300);
    connect(m_lintSoon, &QTimer::timeout, this, &DesignerWindow::runLint);
    // Editors write in several steps: look once they are done.
    m_reloadSoon->setSingleShot(true);
    m_reloadSoon->setInterval(150);
    connect(m_reloadSoon, &QTimer::timeout, this, &DesignerWindow::fileChanged);
    connect(m_watcher, &QFileSystemWatcher::fileChanged, m_reloadSoon, qOverload<>(&QTimer::start));
    connect(m_watcher, &QFileSystemWatcher::directoryChanged, m_reloadSoon,
            qOverload<>(&QTimer::start));
    watchFile();
    refresh();
    // The whole page and readable panels beside it.
    resize(std::max(m_canvas->width() + 560, 1000), std::max(m_canvas->height() + 140, 560));
}

DesignerWindow::~DesignerWindow() = default;

void DesignerWindow::buildActions()
{
    QMenu* fileMenu = menuBar()->addMenu(tr("&File"));
    QAction* saveAction = fileMenu->addAction(tr("&Save"), this, &DesignerWindow::save);
    saveAction->setShortcut(QKeySequence::Save);
    fileMenu->addAction(tr("&Close"), QKeySequence::Close, this, &QWidget::close);

    QMenu* editMenu = menuBar()->addMenu(tr("&Edit"));
    m_undo = editMenu->addAction(tr("&Undo"), QKeySequence::Undo, this, &DesignerWindow::undo);
    m_redo = editMenu->addAction(tr("&Redo"), QKeySequence(tr("Ctrl+Shift+Z")), this,
                                 &DesignerWindow::redo);
    QAction* remove = editMenu->addAction(tr("&Delete entry"), QKeySequence::Delete, this,
                                          &DesignerWindow::deleteSelected);
    m_editActions = {m_undo, m_redo, remove};

    QMenu* viewMenu = menuBar()->addMenu(tr("&View"));
    // The groups the host shows for this game; all of them for a game it does
    // not list, so nothing is placed where a host may show one.
    const QString name = QDir(m_scratch.appPath() + QStringLiteral("/Data"))
                             .relativeFilePath(m_scratch.gameDataPath());
    std::optional<GameEntry> known;
    for (const GameEntry& game :
         readLauncherConfig(m_source.appPath + QStringLiteral("/launcher.ini")).games)
        if (!known && game.gameData.compare(name, Qt::CaseInsensitive) == 0)
            known = game;
    const std::pair<QString, bool> groups[] = {
        {tr("Mod selection"), !known || known->modSelection},
        {tr("Command-line parameters"), !known || known->commandLineParameters},
        {tr("Configs"), !known || known->configs}};
    for (const auto& [label, on] : groups) {
        QAction* group = viewMenu->addAction(label);
        group->setCheckable(true);
        group->setChecked(on);
        connect(group, &QAction::toggled, this, &DesignerWindow::rebuildPage);
        m_groups.append(group);
    }

    QToolBar* tools = addToolBar(tr("Design"));
    tools->setObjectName(QStringLiteral("designTools"));
    tools->addAction(saveAction);
    tools->addAction(m_undo);
    tools->addAction(m_redo);
    tools->addSeparator();
    tools->addWidget(new QLabel(tr("Grid: "), tools));
    m_grid = new QSpinBox(tools);
    m_grid->setRange(0, 1440);
    m_grid->setSingleStep(15);
    m_grid->setSuffix(tr(" twips"));
    m_grid->setSpecialValueText(tr("off"));
    connect(m_grid, &QSpinBox::valueChanged, m_overlay, &PageOverlay::setGrid);
    m_grid->setValue(120);
    tools->addWidget(m_grid);
    tools->addSeparator();
    m_testing = tools->addAction(tr("&Test rules"));
    m_testing->setCheckable(true);
    m_testing->setShortcut(QKeySequence(tr("Ctrl+T")));
    m_testing->setToolTip(tr("Click the page's widgets to run their rules; editing is off"));
    connect(m_testing, &QAction::toggled, this, &DesignerWindow::setTesting);
    viewMenu->addSeparator();
    viewMenu->addAction(m_testing);

    QToolBar* palette = new QToolBar(tr("Add"), this);
    palette->setObjectName(QStringLiteral("palette"));
    addToolBar(Qt::LeftToolBarArea, palette);
    palette->addWidget(new QLabel(tr("Add:"), palette));
    const std::pair<QString, QString> kinds[] = {
        {QStringLiteral("checkbox"), tr("Check box")},
        {QStringLiteral("option button"), tr("Option button")},
        {QStringLiteral("frame"), tr("Frame")},
        {QStringLiteral("combo"), tr("Combo box")},
        {QStringLiteral("label"), tr("Label")},
        {QStringLiteral("line"), tr("Line")},
        {QStringLiteral("text"), tr("Text box")}};
    for (const auto& [kind, label] : kinds) {
        QAction* add = palette->addAction(label, this, [this, kind] { addEntry(kind); });
        add->setObjectName(QStringLiteral("add ") + kind);
        m_editActions.append(add);
    }
    m_palette = palette;
}

void DesignerWindow::buildDocks()
{
    auto* properties = new QDockWidget(tr("Properties"), this);
    properties->setObjectName(QStringLiteral("properties"));
    m_propertyScroll = new QScrollArea(properties);
    m_propertyScroll->setWidgetResizable(true);
    m_properties = new QWidget;
    m_propertyScroll->setWidget(m_properties);
    properties->setWidget(m_propertyScroll);
    addDockWidget(Qt::RightDockWidgetArea, properties);

    auto* findings = new QDockWidget(tr("Findings"), this);
    findings->setObjectName(QStringLiteral("findings"));
    m_findingList = new QListWidget(findings);
    m_findingList->setWordWrap(true);
    findings->setWidget(m_findingList);
    addDockWidget(Qt::RightDockWidgetArea, findings);
    connect(m_findingList, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        const int row = m_findingList->row(item);
        if (row >= 0 && row < int(m_findings.size()) && m_findings[size_t(row)].entry > 0)
            select(m_findings[size_t(row)].entry);
    });
}

void DesignerWindow::apply(const QByteArray& bytes, bool record, const QStringList& notes)
{
    if (record) {
        if (bytes == m_history.current())
            return;
        m_history.record(bytes);
    }
    refresh();
    if (!notes.isEmpty())
        statusBar()->showMessage(notes.join(u' '));
}

void DesignerWindow::refresh()
{
    if (!m_scratch.write(bytes()))
        statusBar()->showMessage(tr("cannot write the scratch copy of the file"));
    const GameDataDocument doc = GameDataDocument::parse(bytes());
    const int count = editing::PageEntries::read(doc).count.value_or(0);
    if (m_overlay->selected() > count)
        m_overlay->select(0);
    m_overlay->setEntries(entryBoxes(doc));
    rebuildPage();
    showProperties();
    setWindowModified(isModified());
    updateActions();
    m_lintSoon->start();
}

void DesignerWindow::rebuildPage()
{
    m_page.reset();
    preview::PageSource scratch{m_scratch.gameDataPath(), m_scratch.appPath(), m_source.language};
    const QString problem = preview::checkSource(scratch);
    if (!problem.isEmpty()) {
        statusBar()->showMessage(problem);
        m_overlay->hide();
        return;
    }
    GameEntry game = preview::previewGame(scratch);
    game.modSelection = m_groups[0]->isChecked();
    game.commandLineParameters = m_groups[1]->isChecked();
    game.configs = m_groups[2]->isChecked();
    PageServices services;
    services.store = std::make_shared<preview::ScratchSettingsStore>();
    services.messages = std::make_shared<StderrMessages>();
    m_page = std::make_unique<GamePage>(game, m_scratch.appPath(), services, m_canvas);
    m_page->open(m_source.language);
    m_page->adjustSize();
    m_page->show();
    m_canvas->resize(m_page->size());
    m_canvas->setMinimumSize(m_page->size());

    ControlView& view = m_page->view();
    m_overlay->setGeometry(QRect(view.mapTo(m_canvas, QPoint(0, 0)), view.size()));
    m_overlay->setPixelsPerTwip(view.scale().pixels(1440) / 1440.0);
    const ControlWidgets& w = m_page->control().widgets();
    std::vector<LockedArea> locked{
        {tr("Game folder"), twipsOf({&w.lblPath, &w.txtPath, &w.cmdBrowse})},
        {tr("Status"), twipsOf({&w.frameStatus})}};
    if (game.modSelection)
        locked.push_back(
            {m_groups[0]->text(), twipsOf({&w.chkModCheck, &w.comModSelect, &w.lblModName})});
    if (game.commandLineParameters)
        locked.push_back({m_groups[1]->text(), twipsOf({&w.lblCLP, &w.txtCLP})});
    if (game.configs)
        locked.push_back(
            {m_groups[2]->text(), twipsOf({&w.lblSelectConfig, &w.lstConfig, &w.cmdEdit})});
    m_overlay->setLockedAreas(std::move(locked));
    m_overlay->setVisible(!m_testing->isChecked());
    m_overlay->raise();
    emit rebuilt();
}

void DesignerWindow::showProperties()
{
    // The panel is rebuilt from inside its own editors' signals.
    QWidget* old = m_properties;
    auto* panel = new QWidget;
    auto* form = new QFormLayout(panel);
    const int entry = m_overlay->selected();
    const GameDataDocument doc = GameDataDocument::parse(bytes());
    const auto header = doc.section(gd::Section);
    // Every entry can be chosen here, lines too, which the page cannot pick.
    auto* entries = new QComboBox(panel);
    entries->setObjectName(QStringLiteral("entry"));
    entries->addItem(tr("(none)"), 0);
    const int count = editing::PageEntries::read(doc).count.value_or(0);
    for (int n = 1; n <= count; ++n) {
        const QString type = editing::PageEntries::kindOf(doc, n);
        entries->addItem(tr("%1: %2").arg(n).arg(type.isEmpty() ? tr("no type") : type), n);
    }
    entries->setCurrentIndex(std::max(0, entries->findData(entry)));
    connect(entries, &QComboBox::activated, this,
            [this, entries](int row) { select(entries->itemData(row).toInt()); });
    form->addRow(tr("Entry"), entries);
    if (entry > 0 && header) {
        const editing::PageEntries page = editing::PageEntries::read(doc);
        const QString kind = editing::PageEntries::kindOf(doc, entry);
        for (const int index : doc.keyLines(*header)) {
            const GameDataDocument::Line& line = doc.lines()[size_t(index)];
            const auto key = editing::parseEntryKey(line.name);
            if (!key || key->entry != entry || doc.keyLine(gd::Section, line.name) != index)
                continue;
            const QString suffix = editing::knownSuffix(key->suffix);
            const QString name = line.name;
            // Applied once the panel that raised it is replaced.
            const Commit commit = [this, name](const QString& value) {
                QTimer::singleShot(0, this, [this, name, value] { setKeyValue(name, value); });
            };
            QWidget* edit = keyEditor(suffix.isEmpty() ? key->suffix : suffix, kind, line.value,
                                      page, commit, panel);
            edit->setObjectName(line.name);
            form->addRow(key->suffix, edit);
        }
    } else {
        form->addRow(new QLabel(tr("Click a widget on the page to see its keys."), panel));
    }
    m_propertyScroll->takeWidget();
    m_propertyScroll->setWidget(panel);
    m_properties = panel;
    panel->setEnabled(!m_testing->isChecked());
    old->deleteLater();
}

void DesignerWindow::runLint()
{
    lint::Options options;
    options.appPath = m_scratch.appPath();
    try {
        m_findings = lint::lintFile(m_scratch.gameDataPath(), options);
    } catch (const Error& error) {
        m_findings = {{m_scratch.gameDataPath(), 0, 0, lint::Severity::Error, error.message(),
                       QStringLiteral("lint"), 0}};
    }
    m_findingList->clear();
    for (const lint::Finding& finding : m_findings)
        m_findingList->addItem(findingText(finding));
    if (m_findings.empty())
        m_findingList->addItem(tr("No findings"));
    emit linted();
}

void DesignerWindow::place(int entry, const QRect& twips)
{
    try {
        GameDataDocument doc = GameDataDocument::parse(bytes());
        QByteArray result = doc.bytes();
        EntryBox had;
        for (const EntryBox& box : entryBoxes(doc))
            if (box.entry == entry)
                had = box;
        const QRect old = had.twips;
        if (had.kind == u"line") {
            // A line has no handles: a gesture only moves its ends.
            apply(movedLine(doc, entry, twips.x() - old.x(), twips.y() - old.y()), true);
            return;
        }
        if (twips.topLeft() != old.topLeft()) {
            result = editing::moveEntry(doc, entry,
                                        QStringLiteral("%1x%2").arg(twips.x()).arg(twips.y()))
                         .bytes;
            doc = GameDataDocument::parse(result);
        }
        if (twips.size() != old.size())
            result = editing::resizeEntry(
                         doc, entry, QStringLiteral("%1x%2").arg(twips.height()).arg(twips.width()))
                         .bytes;
        apply(result, true);
    } catch (const editing::EditError& error) {
        statusBar()->showMessage(error.message());
        refresh();
    }
}

void DesignerWindow::addEntry(const QString& kind)
{
    try {
        const editing::EditResult result =
            editing::addEntry(GameDataDocument::parse(bytes()), kind);
        apply(result.bytes, true, result.notes);
        select(editing::PageEntries::read(GameDataDocument::parse(bytes())).count.value_or(0));
    } catch (const editing::EditError& error) {
        statusBar()->showMessage(error.message());
    }
}

void DesignerWindow::setKeyValue(const QString& key, const QString& value)
{
    try {
        const editing::EditResult result =
            editing::setKey(GameDataDocument::parse(bytes()), key, value);
        apply(result.bytes, true, result.notes);
    } catch (const editing::EditError& error) {
        statusBar()->showMessage(error.message());
        showProperties();
    }
}

void DesignerWindow::deleteSelected()
{
    const int entry = m_overlay->selected();
    if (entry <= 0)
        return;
    try {
        const editing::EditResult result =
            editing::deleteEntry(GameDataDocument::parse(bytes()), entry);
        m_overlay->select(0);
        apply(result.bytes, true, result.notes);
    } catch (const editing::EditError& error) {
        statusBar()->showMessage(error.message());
    }
}

void DesignerWindow::select(int entry)
{
    m_overlay->select(entry);
}

void DesignerWindow::setGrid(int twips)
{
    m_grid->setValue(twips);
}

void DesignerWindow::undo()
{
    if (m_history.canUndo() && !m_testing->isChecked()) {
        m_history.undo();
        refresh();
    }
}

void DesignerWindow::redo()
{
    if (m_history.canRedo() && !m_testing->isChecked()) {
        m_history.redo();
        refresh();
    }
}

void DesignerWindow::setTesting(bool on)
{
    if (m_testing->isChecked() != on) {
        m_testing->setChecked(on); // comes back here through toggled
        return;
    }
    m_palette->setEnabled(!on);
    m_properties->setEnabled(!on);
    // Leaving the test puts the page back to its default values.
    if (on)
        m_overlay->hide();
    else
        rebuildPage();
    updateActions();
    statusBar()->showMessage(on ? tr("Testing: click the page; editing is off") : QString());
}

void DesignerWindow::updateActions()
{
    const bool editing = !m_testing->isChecked();
    for (QAction* action : std::as_const(m_editActions))
        action->setEnabled(editing);
    m_undo->setEnabled(editing && m_history.canUndo());
    m_redo->setEnabled(editing && m_history.canRedo());
}

bool DesignerWindow::save()
{
    const QByteArray current = bytes();
    if (const int error = replaceFileContents(m_source.gameDataPath, current)) {
        statusBar()->showMessage(
            tr("cannot save: %1").arg(QString::fromLocal8Bit(strerror(error))));
        return false;
    }
    m_saved = current;
    setWindowModified(false);
    statusBar()->showMessage(tr("Saved"), 3000);
    watchFile();
    return true;
}

// A file saved by renaming a new one over it leaves the watcher: watch it
// again, and the folders so a file that comes back is noticed. The language
// files are watched too: the page shows their texts.
void DesignerWindow::watchFile()
{
    const QStringList paths = preview::watchedPaths(m_source);
    const QStringList watched = m_watcher->files() + m_watcher->directories();
    for (const QString& path : paths)
        if (!watched.contains(path) && QFileInfo::exists(path))
            m_watcher->addPath(path);
}

void DesignerWindow::fileChanged()
{
    watchFile();
    QFile file(m_source.gameDataPath);
    if (!file.open(QIODevice::ReadOnly))
        return; // gone for now; the folder's watch sees it come back
    const QByteArray disk = file.readAll();
    if (disk == m_saved) {
        // A language file, or our own save: the texts may have changed.
        rebuildPage();
        m_lintSoon->start();
        return;
    }
    try {
        GameDataDocument::parse(disk);
    } catch (const editing::EditError& error) {
        statusBar()->showMessage(tr("the file on disk cannot be edited: %1").arg(error.message()));
        m_saved = disk;
        setWindowModified(isModified());
        return;
    }
    if (isModified() && !m_questions->reloadOverEdits(this, m_source.gameDataPath)) {
        m_saved = disk; // Save now writes over the outside change
        setWindowModified(isModified());
        return;
    }
    m_saved = disk;
    m_history = editing::EditHistory(disk);
    refresh();
    statusBar()->showMessage(tr("Reloaded: the file changed on disk"), 3000);
}

void DesignerWindow::closeEvent(QCloseEvent* event)
{
    if (isModified()) {
        switch (m_questions->closeWithEdits(this, m_source.gameDataPath)) {
        case DesignerQuestions::Unsaved::Save:
            if (!save())
                return event->ignore();
            break;
        case DesignerQuestions::Unsaved::Discard:
            break;
        case DesignerQuestions::Unsaved::Cancel:
            return event->ignore();
        }
    }
    event->accept();
}

} // namespace qf::designer
