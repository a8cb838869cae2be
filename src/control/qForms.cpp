#include "control/qForms.h"

#include "gamedata/ValueSyntax.h"

qForms::qForms(QObject* parent) : QObject(parent), m_widgets(std::make_unique<qf::ControlWidgets>())
{
    m_widgets->lblStatus.change.connect([this] { lblStatus_Change(); });
    m_widgets->txtPath.change.connect([this] { txtPath_Change(); });
    m_widgets->cmdBrowse.click.connect([this] { cmdBrowse_Click(); });
    m_widgets->Check1.click.connect([this](int index) { Check1_Click(qint16(index)); });
    m_widgets->Option1.click.connect([this](int index) { Option1_Click(qint16(index)); });
    m_widgets->comModSelect.click.connect([this] { comModSelect_Click(); });
    m_widgets->cmdEdit.click.connect([this] { cmdEdit_Click(); });
}

qForms::~qForms() = default;

void qForms::setQpGameName(const QString& strGameName2)
{
    strGameName = strGameName2;
}

void qForms::setQpGamePath(const QString& strGamePath2)
{
    strGamePath = strGamePath2;
}

void qForms::switchGroup(std::initializer_list<qf::Widget*> group, bool visible)
{
    for (qf::Widget* widget : group)
        widget->setVisible(visible);
}

void qForms::setQpUseModSelection(bool strUseModSelection2)
{
    auto& w = *m_widgets;
    switchGroup({&w.chkModCheck, &w.comModSelect, &w.lblModName}, strUseModSelection2);
    bolUseModSelection = strUseModSelection2;
}

void qForms::setQpUseAdditionalCommandLineParameters(bool strUseAdditionalCommandLineParameters2)
{
    auto& w = *m_widgets;
    switchGroup({&w.txtCLP, &w.lblCLP}, strUseAdditionalCommandLineParameters2);
    bolUseAdditionalCommandLineParameters = strUseAdditionalCommandLineParameters2;
}

void qForms::setQpUseConfigs(bool bolUseConfigs2)
{
    auto& w = *m_widgets;
    switchGroup({&w.lblSelectConfig, &w.cmdEdit, &w.lstConfig}, bolUseConfigs2);
    bolUseConfigs = bolUseConfigs2;
}

QString qForms::qpGameStatus() const
{
    return m_widgets->lblStatus.caption();
}

void qForms::setQpGameBase(const QString& strGameBase2)
{
    strGameBase = strGameBase2;
}

void qForms::setQpVersionType(const QString& strVersionType2)
{
    strVersionType = strVersionType2;
    // Types 3 and up do not exist; they read back as "none" so that the game
    // check shows no version for them.
    if (qf::syntax::parseNumber(strVersionType2) >= 3.0)
        strVersionType = QStringLiteral("none");
}

void qForms::setQpQGD(const QString& strQGDFile2)
{
    strQGDFile = strQGDFile2;
}

void qForms::setAppPath(const QString& strAppPath2)
{
    strAppPath = strAppPath2;
}

void qForms::lblStatus_Change()
{
    emit StatusChange();
}
