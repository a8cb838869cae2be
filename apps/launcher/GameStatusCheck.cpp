#include "GameStatusCheck.h"

#include "GamePage.h"
#include "control/qForms.h"
#include "platform/MessageBox.h"

namespace {

// A check without a view has nobody to show a message to.
class Silent : public qf::MessageBox {
public:
    void show(const QString&, int, const QString&) override {}
};

} // namespace

GameStatusCheck::GameStatusCheck(QString hostFolder, std::shared_ptr<qf::SettingsStore> store)
    : m_hostFolder(std::move(hostFolder)), m_control(std::make_unique<qForms>())
{
    m_control->setSettingsStore(std::move(store));
    m_control->setComponentFolder(m_hostFolder);
    m_control->setMessageBox(std::make_shared<Silent>());
    QObject::connect(m_control.get(), &qForms::StatusChange, [this] { ++m_statusChanges; });
}

GameStatusCheck::~GameStatusCheck() = default;

QString GameStatusCheck::colourOf(const GameEntry& game)
{
    m_control->qClear();
    GamePage::configure(*m_control, game, m_hostFolder);
    const int before = m_statusChanges;
    m_control->qLoadSettings();
    // Restoring a folder that equals the box's text (the previous game's) runs
    // no check.
    if (m_statusChanges == before)
        m_control->qCheckGame();
    return m_control->qpGameStatusColour();
}
