#pragma once

#include <QList>
#include <QString>

// The languages the launcher offers: the index of the control's language
// texts, and the launcher's own translation of its window.
struct LauncherLanguage {
    int index;
    QString name;
    // Suffix of the launcher's translation; empty for the texts as written.
    QString translation;
};

const QList<LauncherLanguage>& launcherLanguages();
bool isLauncherLanguage(int index);

// Puts the launcher's own texts into that language; widgets follow through
// their LanguageChange event.
void applyLauncherLanguage(int index);
