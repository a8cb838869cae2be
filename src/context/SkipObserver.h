#pragma once

#include <QString>
#include <QStringView>

namespace qf {

/// Where a routine was when it skipped a step.
struct StepSite {
    int entry = 0;     ///< The custom control entry; 0 for none.
    QStringView key;   ///< The key it had read (for entries the suffix, "Location").
    QStringView value; ///< The value as the routine saw it.
};

/// A step a routine skipped, or a value it left without effect.
struct SkippedStep {
    QString routine; ///< The public method or handler that was running.
    int entry = 0;   ///< The custom control entry; 0 for none.
    QString key;     ///< The key it had read.
    QString value;   ///< The value as the routine saw it.
    QString reason;  ///< What happened instead, in words.
};

/// Told of every step the control's routines skip. The control works the same
/// with or without one; tools such as the game data lint install one to see
/// what a game data file makes the control skip.
class SkipObserver {
public:
    virtual ~SkipObserver() = default;
    /// A step was skipped. @param step What, where and why.
    virtual void stepSkipped(const SkippedStep& step) = 0;
    /// The builder made entry `entry` element `element` of the array of
    /// `kind` (the lower-cased Type word); does nothing by default.
    virtual void entryBuilt(int /*entry*/, const QString& /*kind*/, int /*element*/) {}
};

} // namespace qf
