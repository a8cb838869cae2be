#include "view/QtMessageBox.h"

#include <QMessageBox>

namespace qf {

namespace {

QMessageBox::StandardButtons buttonsOf(int style)
{
    switch (style & 0x7) {
    case 1:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case 2:
        return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
    case 3:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case 4:
        return QMessageBox::Yes | QMessageBox::No;
    case 5:
        return QMessageBox::Retry | QMessageBox::Cancel;
    default:
        return QMessageBox::Ok;
    }
}

QMessageBox::Icon iconOf(int style)
{
    switch (style & 0x70) {
    case 16:
        return QMessageBox::Critical;
    case 32:
        return QMessageBox::Question;
    case 48:
        return QMessageBox::Warning;
    case 64:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

} // namespace

void QtMessageBox::show(const QString& text, int style, const QString& title)
{
    QMessageBox box(iconOf(style), title, text, buttonsOf(style), m_parent);
    box.exec();
}

} // namespace qf
