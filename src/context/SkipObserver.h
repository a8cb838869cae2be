#pragma once

#include <QString>
#include <QStringView>

namespace qf {

// Where a routine was when it skipped a step: the custom control entry (0 for
// none), the key it had read (for entries the suffix, "Location") and the
// value as the routine saw it.
struct StepSite {
    int entry = 0;
    QStringView key;
    QStringView value;
};

// A step a routine skipped, or a value it left without effect.
struct SkippedStep {
    QString routine; // the public method or handler that was running
    int entry = 0;
    QString key;
    QString value;
    QString reason; // what happened instead, in words
};

// Told of every step the control's routines skip. The control works the same
// with or without one; tools such as the game data lint install one to see
// what a game data file makes the control skip.
class SkipObserver {
public:
    virtual ~SkipObserver() = default;
    virtual void stepSkipped(const SkippedStep& step) = 0;
    // The builder made entry `entry` element `element` of the array of
    // `kind` (the lower-cased Type word).
    virtual void entryBuilt(int /*entry*/, const QString& /*kind*/, int /*element*/) {}
};

} // namespace qf
