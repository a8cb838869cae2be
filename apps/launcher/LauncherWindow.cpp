#include "LauncherWindow.h"

#include "GamePage.h"
#include "control/qForms.h"
#include "platform/SettingsStore.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

QIcon statusIcon(const QString& colourName)
{
    QPixmap pixmap(14, 14);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::darkGray);
    painter.setBrush(colourName.isEmpty() ? QColor(Qt::lightGray) : QColor(colourName));
    painter.drawEllipse(1, 1, 12, 12);
    return QIcon(pixmap);
}

} // namespace

LauncherWindow::LauncherWindow(const QString& hostFolder, const QList<GameEntry>& games,
                               std::shared_ptr<qf::SettingsStore> store, QWidget* parent)
    : QMainWindow(parent), m_store(std::move(store))
{
    setWindowTitle(QStringLiteral("Quillmarsh 2"));
    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);

    auto* header = new QHBoxLayout;
    header->addWidget(new QLabel(tr("Games"), central));
    header->addStretch();
    header->addWidget(new QLabel(tr("Language:"), central));
    m_language = new QComboBox(central);
    m_language->addItem(QStringLiteral("English"), 0);
    m_language->addItem(QStringLiteral("Deutsch"), 1);
    header->addWidget(m_language);
    layout->addLayout(header);

    auto* body = new QHBoxLayout;
    m_games = new QListWidget(central);
    m_games->setFixedWidth(150);
    m_pages = new QStackedWidget(central);
    for (const GameEntry& game : games) {
        auto* page = new GamePage(game, hostFolder, m_store, m_pages);
        const int row = m_pages->addWidget(page);
        m_games->addItem(new QListWidgetItem(statusIcon({}), game.name));
        connect(page, &GamePage::changed, this, [this, row] {
            updateGameItem(row);
            if (row == m_pages->currentIndex())
                updateCommandLine();
        });
    }
    body->addWidget(m_games);
    body->addWidget(m_pages, 1);
    layout->addLayout(body);

    auto* commandRow = new QHBoxLayout;
    commandRow->addWidget(new QLabel(tr("Command:"), central));
    m_commandLine = new QLineEdit(central);
    m_commandLine->setReadOnly(true);
    m_commandLine->setObjectName(QStringLiteral("commandLine"));
    commandRow->addWidget(m_commandLine);
    layout->addLayout(commandRow);

    m_saveFailure = new QLabel(central);
    m_saveFailure->setObjectName(QStringLiteral("saveFailure"));
    m_saveFailure->setStyleSheet(QStringLiteral("color: #b00000"));
    m_saveFailure->setWordWrap(true);
    m_saveFailure->hide();
    layout->addWidget(m_saveFailure);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, central);
    connect(buttons, &QDialogButtonBox::accepted, this, &LauncherWindow::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    layout->addWidget(buttons);
    setCentralWidget(central);

    connect(m_games, &QListWidget::currentRowChanged, this, &LauncherWindow::showGame);
    connect(m_language, &QComboBox::currentIndexChanged, this, [this] {
        for (int row = 0; row < m_pages->count(); ++row)
            page(row)->setLanguage(languageIndex());
    });
    // Every page opens at once, so the list shows each game's status from the start.
    for (int row = 0; row < m_pages->count(); ++row)
        page(row)->open(languageIndex());
    if (!games.isEmpty())
        m_games->setCurrentRow(0);
}

LauncherWindow::~LauncherWindow() = default;

GamePage* LauncherWindow::page(int row) const
{
    return qobject_cast<GamePage*>(m_pages->widget(row));
}

int LauncherWindow::languageIndex() const
{
    return m_language->currentData().toInt();
}

void LauncherWindow::setLanguageIndex(int index)
{
    m_language->setCurrentIndex(m_language->findData(index));
}

void LauncherWindow::showGame(int row)
{
    GamePage* shown = page(row);
    if (!shown)
        return;
    if (m_games->currentRow() != row)
        m_games->setCurrentRow(row);
    m_pages->setCurrentIndex(row);
    shown->open(languageIndex());
    updateGameItem(row);
    updateCommandLine();
}

void LauncherWindow::accept()
{
    // The pages share one store, so a failed write fails again for each page.
    QStringList failures;
    for (int row = 0; row < m_pages->count(); ++row)
        if (const QString failure = page(row)->save(); !failure.isEmpty())
            failures.append(failure);
    failures.removeDuplicates();
    if (failures.isEmpty()) {
        m_saveFailure->hide();
        close();
        return;
    }
    m_saveFailure->setText(
        tr("Your choices were not kept. %1\nPress OK to try again.").arg(failures.join(u'\n')));
    m_saveFailure->show();
}

void LauncherWindow::updateGameItem(int row)
{
    if (QListWidgetItem* item = m_games->item(row))
        item->setIcon(statusIcon(page(row)->control().qpGameStatusColour()));
}

void LauncherWindow::updateCommandLine()
{
    if (GamePage* current = page(m_pages->currentIndex()))
        m_commandLine->setText(current->commandLine());
}
