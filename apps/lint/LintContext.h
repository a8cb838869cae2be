#pragma once

#include "Finding.h"

#include "context/SkipObserver.h"
#include "platform/IniDocument.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace qf::lint {

// What the checks share about one game data file.
struct LintContext {
    QString path;    // as the user named it, for the findings
    QString appPath; // the host folder
    QString qgdName; // the file's name below AppPath/Data
    QString gameName;
    std::shared_ptr<const IniDocument> document;
    // Count as the routines read it; 0 when it cannot be read.
    int count = 0;
    // Entry -> its Type, lower-cased, for the entries 1..count.
    std::map<int, QString> kinds;
    // Entry -> the array element the builder made of it.
    std::map<int, int> elements;
    // Entry -> where its first key line is, for findings about the entry.
    std::map<int, IniDocument::Position> firstKeys;
    // (kind, element) -> entry, the other way round.
    std::map<std::pair<QString, int>, int> entriesByElement;
    // The fixed groups the host switches on for this file's game, as the
    // launcher.ini of the host folder says; nullopt when no game there names
    // the file.
    struct HostGroups {
        QString game;
        bool modSelection = false;
        bool parameters = false;
        bool configs = false;
    };
    std::optional<HostGroups> hostGroups;
    Findings findings;

    // The value of a key of section "Custom Controls", quotes stripped.
    std::optional<QString> value(const QString& key) const;
    std::optional<QString> entryValue(int entry, const QString& suffix) const;

    // Adds a finding placed at a key of "Custom Controls" (at its value when
    // atValue and it has one), or at the section when the key is missing.
    void add(Severity severity, const QString& check, const QString& message, int entry,
             const QString& key, bool atValue = false);
    // Adds a finding placed elsewhere.
    void addAt(Severity severity, const QString& check, const QString& message, int entry,
               const QString& path, std::optional<IniDocument::Position> position);

    // The entry that element `element` of the array of `kind` was built from; 0 for none.
    int entryOf(const QString& kind, int element) const;
    // How many widgets of `kind` the builder made.
    int countOf(const QString& kind) const;
    // "the 9th check box (entry 14)", as the author counts: element 9 of the
    // check boxes and the entry it was built from.
    QString elementInWords(const QString& kind, int element) const;
};

// Records what the control's routines report.
class RecordingObserver : public SkipObserver {
public:
    void stepSkipped(const SkippedStep& step) override { steps.push_back(step); }
    void entryBuilt(int entry, const QString& kind, int element) override
    {
        built.push_back({entry, kind, element});
    }

    struct Built {
        int entry;
        QString kind;
        int element;
    };
    std::vector<SkippedStep> steps;
    std::vector<Built> built;
};

// The words Type takes.
const QStringList& kindWords();
// "the 9th check box": the widget of a kind at a place in the page's order.
QString widgetInWords(const QString& kind, int element);
// "Control3Caption".
QString entryKeyName(int entry, const QString& suffix);

// A locked text box shows a text the player cannot change: storing it is
// not expected.
bool isDisplayOnly(const LintContext& lint, int entry);

// The checks, each in its own file.
void checkCount(LintContext& lint);
void checkKeys(LintContext& lint);
void checkValues(LintContext& lint);
void checkStorage(LintContext& lint);
void checkGameApplication(LintContext& lint);
void checkGameLists(LintContext& lint);
// The routes of section "Launch": what the game receives for each option.
void checkRoutes(LintContext& lint);
// Turns what the routines reported in one language run into findings.
void reportSkippedSteps(LintContext& lint, const std::vector<SkippedStep>& steps, int language);

} // namespace qf::lint
