#pragma once

#include <QMainWindow>

#include <memory>

class QComboBox;
class qForms;

namespace qf {
class ControlView;
}

// A small host launcher: one game page with the options control on it, and a
// switch for the language of the control's texts.
class LauncherWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit LauncherWindow(const QString& hostFolder, QWidget* parent = nullptr);
    ~LauncherWindow() override;

private:
    void setLanguage(int index);

    std::unique_ptr<qForms> m_control;
    qf::ControlView* m_view = nullptr;
    QComboBox* m_language = nullptr;
};
