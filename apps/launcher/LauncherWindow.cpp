#include "LauncherWindow.h"

#include "control/qForms.h"
#include "toolkit/qt/ControlView.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QVBoxLayout>

namespace {
const QString SampleGame = QStringLiteral("Emberfall");
}

LauncherWindow::LauncherWindow(const QString& hostFolder, QWidget* parent)
    : QMainWindow(parent), m_control(std::make_unique<qForms>())
{
    setWindowTitle(QStringLiteral("Quillmarsh 2"));

    m_control->setAppPath(hostFolder);
    m_control->setQpUseModSelection(false);
    m_control->setQpUseAdditionalCommandLineParameters(false);
    m_control->setQpUseConfigs(true);

    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    auto* header = new QHBoxLayout;
    auto* title = new QLabel(SampleGame, page);
    QFont titleFont = title->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.4);
    titleFont.setBold(true);
    title->setFont(titleFont);
    header->addWidget(title);
    header->addStretch();
    header->addWidget(new QLabel(tr("Language:"), page));
    m_language = new QComboBox(page);
    m_language->addItem(QStringLiteral("English"), 0);
    m_language->addItem(QStringLiteral("Deutsch"), 1);
    header->addWidget(m_language);
    layout->addLayout(header);

    m_view = new qf::ControlView(*m_control, page);
    layout->addWidget(m_view);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, page);
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    layout->addWidget(buttons);
    setCentralWidget(page);

    connect(m_language, &QComboBox::currentIndexChanged, this,
            [this](int row) { setLanguage(m_language->itemData(row).toInt()); });
    setLanguage(0);
}

LauncherWindow::~LauncherWindow()
{
    // The view goes before the control it shows.
    delete m_view;
}

void LauncherWindow::setLanguage(int index)
{
    // The option widgets take their captions when they are built, so the page
    // is built anew in the new language.
    m_control->qClear();
    m_control->setQpGameName(SampleGame);
    m_control->setQpQGD(QStringLiteral("emberfall.qgd"));
    m_control->setQpGameApplication(QStringLiteral("emberfall.exe"));
    m_control->setQpGameBase(QStringLiteral("base"));
    m_control->setQpVersionType(QStringLiteral("0"));
    try {
        m_control->setQpLanguageIndex(qint16(index));
    } catch (const std::exception& error) {
        QMessageBox::warning(this, windowTitle(),
                             tr("The texts of this language could not be loaded:\n%1")
                                 .arg(QString::fromUtf8(error.what())));
    }
    m_control->qInitCustomControls();
}
