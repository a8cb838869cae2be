#include "control/qForms.h"

#include "context/ControlContext.h"
#include "detect/Detect.h"
#include "dialogs/Dialogs.h"
#include "gamedata/GameData.h"
#include "gamedata/ValueSyntax.h"
#include "mods/Mods.h"
#include "rules/Rules.h"
#include "settings/Settings.h"

#include <QPointer>

// Holds back the choices' change signals while a public method runs.
class qForms::ChoiceBatch {
public:
    explicit ChoiceBatch(qForms& control) : m_control(control) { ++m_control.m_choiceBatchDepth; }
    ~ChoiceBatch()
    {
        if (--m_control.m_choiceBatchDepth == 0)
            m_control.announceChoices();
    }
    ChoiceBatch(const ChoiceBatch&) = delete;
    ChoiceBatch& operator=(const ChoiceBatch&) = delete;

private:
    qForms& m_control;
};

qForms::qForms(QObject* parent) : QObject(parent), m_context(std::make_unique<qf::ControlContext>())
{
    auto& w = m_context->widgets;
    w.lblStatus.change.connect([this] { lblStatus_Change(); });
    w.txtPath.change.connect([this] { txtPath_Change(); });
    w.cmdBrowse.click.connect([this] { cmdBrowse_Click(); });
    w.Check1.click.connect([this](int index) { Check1_Click(qint16(index)); });
    w.Option1.click.connect([this](int index) { Option1_Click(qint16(index)); });
    w.comModSelect.click.connect([this] { comModSelect_Click(); });
    w.cmdEdit.click.connect([this] { cmdEdit_Click(); });
    m_context->editorFailed = [self = QPointer<qForms>(this)](const QString& file,
                                                              const QString& reason) {
        if (self)
            emit self->editorStartFailed(file, reason);
    };
    for (qf::Widget* choice :
         std::initializer_list<qf::Widget*>{&w.comModSelect, &w.lstConfig, &w.txtCLP})
        choice->changed.connect([this](qf::Property) { announceChoices(); });
}

QString qForms::chosenMod() const
{
    return m_context->bolUseModSelection ? m_context->widgets.comModSelect.text() : QString();
}

QString qForms::chosenConfig() const
{
    return m_context->bolUseConfigs ? m_context->widgets.lstConfig.fileName() : QString();
}

QString qForms::additionalParameters() const
{
    return m_context->bolUseAdditionalCommandLineParameters ? m_context->widgets.txtCLP.text()
                                                            : QString();
}

QString qForms::programPath() const
{
    return m_context->programPath;
}

QMap<QString, QString> qForms::optionValues() const
{
    const qf::RoutineScope routine(*m_context, "optionValues");
    return qf::settings::optionValues(*m_context);
}

void qForms::announceChoices()
{
    if (m_choiceBatchDepth > 0)
        return;
    const auto announce = [this](QString& said, const QString& now,
                                 void (qForms::*signal)(const QString&)) {
        if (said == now)
            return;
        said = now;
        emit(this->*signal)(now);
    };
    announce(m_announcedMod, chosenMod(), &qForms::chosenModChanged);
    announce(m_announcedConfig, chosenConfig(), &qForms::chosenConfigChanged);
    announce(m_announcedParameters, additionalParameters(), &qForms::additionalParametersChanged);
    announce(m_announcedProgram, programPath(), &qForms::programPathChanged);
}

qForms::~qForms() = default;

QString qForms::qpGameName() const
{
    return m_context->strGameName;
}

void qForms::setQpGameName(const QString& strGameName2)
{
    m_context->strGameName = strGameName2;
}

QString qForms::qpGamePath() const
{
    return m_context->strGamePath;
}

void qForms::setQpGamePath(const QString& strGamePath2)
{
    m_context->strGamePath = strGamePath2;
}

qint16 qForms::qpLanguageIndex() const
{
    return m_context->intLanguageIndex;
}

void qForms::setQpLanguageIndex(qint16 intL1)
{
    auto& c = *m_context;
    c.intLanguageIndex = intL1;
    auto& w = c.widgets;
    // One row at a time: a failed lookup leaves the rows after it as they were.
    w.lblPath.setCaption(c.strGameName + c.languageText(QStringLiteral("053")));
    w.cmdBrowse.setCaption(c.languageText(QStringLiteral("038")));
    w.chkModCheck.setCaption(c.languageText(QStringLiteral("055")));
    w.lblCLP.setCaption(c.languageText(QStringLiteral("026")));
    w.lblSelectConfig.setCaption(c.languageText(QStringLiteral("050")));
    w.cmdEdit.setCaption(c.languageText(QStringLiteral("049")));
    w.frameStatus.setCaption(c.strGameName + c.languageText(QStringLiteral("054")));
}

namespace {

void switchGroup(std::initializer_list<qf::Widget*> group, bool visible)
{
    for (qf::Widget* widget : group)
        widget->setVisible(visible);
}

} // namespace

bool qForms::qpUseModSelection() const
{
    return m_context->bolUseModSelection;
}

void qForms::setQpUseModSelection(bool strUseModSelection2)
{
    auto& w = m_context->widgets;
    switchGroup({&w.chkModCheck, &w.comModSelect, &w.lblModName}, strUseModSelection2);
    m_context->bolUseModSelection = strUseModSelection2;
    announceChoices();
}

bool qForms::qpUseAdditionalCommandLineParameters() const
{
    return m_context->bolUseAdditionalCommandLineParameters;
}

void qForms::setQpUseAdditionalCommandLineParameters(bool strUseAdditionalCommandLineParameters2)
{
    auto& w = m_context->widgets;
    switchGroup({&w.txtCLP, &w.lblCLP}, strUseAdditionalCommandLineParameters2);
    m_context->bolUseAdditionalCommandLineParameters = strUseAdditionalCommandLineParameters2;
    announceChoices();
}

bool qForms::qpUseConfigs() const
{
    return m_context->bolUseConfigs;
}

void qForms::setQpUseConfigs(bool bolUseConfigs2)
{
    auto& w = m_context->widgets;
    switchGroup({&w.lblSelectConfig, &w.cmdEdit, &w.lstConfig}, bolUseConfigs2);
    m_context->bolUseConfigs = bolUseConfigs2;
    announceChoices();
}

QString qForms::qpGameApplication() const
{
    return m_context->strGameApplication;
}

void qForms::setQpGameApplication(const QString& strGameApplication2)
{
    const qf::RoutineScope routine(*m_context, "qpGameApplication");
    m_context->strGameApplication = strGameApplication2;
    qf::settings::showConfigFolder(*m_context);
}

QString qForms::qpGameStatus() const
{
    return m_context->widgets.lblStatus.caption();
}

QString qForms::qpGameStatusColour() const
{
    return m_context->strGameStatusColour;
}

QString qForms::qpGameBase() const
{
    return m_context->strGameBase;
}

void qForms::setQpGameBase(const QString& strGameBase2)
{
    m_context->strGameBase = strGameBase2;
}

QString qForms::qpVersionType() const
{
    return m_context->strVersionType;
}

void qForms::setQpVersionType(const QString& strVersionType2)
{
    m_context->strVersionType = strVersionType2;
    // Types 3 and up do not exist; they read back as "none" so that the game
    // check shows no version for them.
    if (qf::syntax::parseNumber(strVersionType2) >= 3.0)
        m_context->strVersionType = QStringLiteral("none");
}

QString qForms::qpQGD() const
{
    return m_context->strQGDFile;
}

void qForms::setQpQGD(const QString& strQGDFile2)
{
    m_context->strQGDFile = strQGDFile2;
}

QString qForms::AppPath() const
{
    return m_context->strAppPath;
}

void qForms::setAppPath(const QString& strAppPath2)
{
    m_context->strAppPath = strAppPath2;
}

QVariant qForms::qInitCustomControls()
{
    const qf::RoutineScope routine(*m_context, "qInitCustomControls");
    const ChoiceBatch batch(*this);
    qf::gamedata::qInitCustomControls(*m_context);
    return {};
}

QVariant qForms::qClear()
{
    const qf::RoutineScope routine(*m_context, "qClear");
    const ChoiceBatch batch(*this);
    qf::gamedata::qClear(*m_context);
    return {};
}

QVariant qForms::qCheckGame()
{
    const qf::RoutineScope routine(*m_context, "qCheckGame");
    const ChoiceBatch batch(*this);
    qf::detect::qCheckGame(*m_context);
    return {};
}

QVariant qForms::qScanForMods()
{
    const qf::RoutineScope routine(*m_context, "qScanForMods");
    const ChoiceBatch batch(*this);
    qf::mods::qScanForMods(*m_context);
    return {};
}

QVariant qForms::qModInit()
{
    const qf::RoutineScope routine(*m_context, "qModInit");
    const ChoiceBatch batch(*this);
    qf::mods::qModInit(*m_context);
    return {};
}

QVariant qForms::qSelectMod()
{
    const qf::RoutineScope routine(*m_context, "qSelectMod");
    const ChoiceBatch batch(*this);
    qf::mods::qSelectMod(*m_context);
    return {};
}

QVariant qForms::qSaveSettings()
{
    const qf::RoutineScope routine(*m_context, "qSaveSettings");
    const qf::settings::SaveOutcome outcome = qf::settings::qSaveSettings(*m_context);
    for (const QString& copy : outcome.damagedCopies)
        emit settingsFileDamaged(copy);
    if (outcome.failure)
        emit settingsSaveFailed(*outcome.failure);
    return {};
}

QVariant qForms::qLoadSettings()
{
    const qf::RoutineScope routine(*m_context, "qLoadSettings");
    const ChoiceBatch batch(*this);
    qf::settings::qLoadSettings(*m_context);
    return {};
}

void qForms::lblStatus_Change()
{
    emit StatusChange();
}

void qForms::cmdBrowse_Click()
{
    const qf::RoutineScope routine(*m_context, "cmdBrowse_Click");
    const ChoiceBatch batch(*this);
    qf::dialogs::cmdBrowse_Click(*m_context);
}

void qForms::txtPath_Change()
{
    const qf::RoutineScope routine(*m_context, "txtPath_Change");
    const ChoiceBatch batch(*this);
    qf::detect::qCheckGame(*m_context);
}

void qForms::comModSelect_Click()
{
    const qf::RoutineScope routine(*m_context, "comModSelect_Click");
    const ChoiceBatch batch(*this);
    qf::mods::comModSelect_Click(*m_context);
}

void qForms::cmdEdit_Click()
{
    const qf::RoutineScope routine(*m_context, "cmdEdit_Click");
    qf::settings::cmdEdit_Click(*m_context);
}

void qForms::Check1_Click(qint16 Index)
{
    const qf::RoutineScope routine(*m_context, "Check1_Click");
    const ChoiceBatch batch(*this);
    qf::rules::Check1_Click(*m_context, Index);
}

void qForms::Option1_Click(qint16 Index)
{
    const qf::RoutineScope routine(*m_context, "Option1_Click");
    const ChoiceBatch batch(*this);
    qf::rules::Option1_Click(*m_context, Index);
}

void qForms::setLanguageTextProvider(std::shared_ptr<qf::LanguageTextProvider> provider)
{
    m_context->setLanguageTextProvider(std::move(provider));
}

void qForms::setSettingsStore(std::shared_ptr<qf::SettingsStore> store)
{
    m_context->setSettingsStore(std::move(store));
}

void qForms::setProgramStarter(std::shared_ptr<qf::ProgramStarter> starter)
{
    m_context->setProgramStarter(std::move(starter));
}

void qForms::setMessageBox(std::shared_ptr<qf::MessageBox> box)
{
    m_context->setMessageBox(std::move(box));
}

bool qForms::hasMessageBox() const
{
    return m_context->hasMessageBox();
}

void qForms::setFileDialog(std::shared_ptr<qf::FileDialog> dialog)
{
    m_context->setFileDialog(std::move(dialog));
}

bool qForms::hasFileDialog() const
{
    return m_context->hasFileDialog();
}

QString qForms::componentFolder() const
{
    return m_context->componentFolder();
}

void qForms::setComponentFolder(const QString& folder)
{
    m_context->setComponentFolder(folder);
}

void qForms::setSkipObserver(std::shared_ptr<qf::SkipObserver> observer)
{
    m_context->setSkipObserver(std::move(observer));
}

qf::ControlWidgets& qForms::widgets()
{
    return m_context->widgets;
}

const qf::ControlWidgets& qForms::widgets() const
{
    return m_context->widgets;
}
