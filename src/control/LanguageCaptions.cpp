#include "control/qForms.h"

#include "platform/IniLanguageTextProvider.h"

qf::LanguageTextProvider& qForms::languageTextProvider()
{
    if (!m_languageTextProvider)
        m_languageTextProvider = std::make_shared<qf::IniLanguageTextProvider>();
    return *m_languageTextProvider;
}

void qForms::setLanguageTextProvider(std::shared_ptr<qf::LanguageTextProvider> provider)
{
    m_languageTextProvider = std::move(provider);
}

QString qForms::languageText(const QString& textNumber)
{
    return languageTextProvider().text(QString::number(intLanguageIndex) + textNumber, strAppPath);
}

void qForms::setQpLanguageIndex(qint16 intL1)
{
    intLanguageIndex = intL1;
    auto& w = *m_widgets;
    // One row at a time: a failed lookup leaves the rows after it as they were.
    w.lblPath.setCaption(strGameName + languageText(QStringLiteral("053")));
    w.cmdBrowse.setCaption(languageText(QStringLiteral("038")));
    w.chkModCheck.setCaption(languageText(QStringLiteral("055")));
    w.lblCLP.setCaption(languageText(QStringLiteral("026")));
    w.lblSelectConfig.setCaption(languageText(QStringLiteral("050")));
    w.cmdEdit.setCaption(languageText(QStringLiteral("049")));
    w.frameStatus.setCaption(strGameName + languageText(QStringLiteral("054")));
}
