#include "control/qForms.h"

qf::FileDialog& qForms::fileDialog()
{
    if (!m_fileDialog)
        throw qf::Error(
            QStringLiteral("No file dialog: the host gave none and no view installed one"));
    return *m_fileDialog;
}

void qForms::setFileDialog(std::shared_ptr<qf::FileDialog> dialog)
{
    m_fileDialog = std::move(dialog);
}

bool qForms::hasFileDialog() const
{
    return m_fileDialog != nullptr;
}
