#pragma once

#include "context/ControlContext.h"
#include "platform/Errors.h"

namespace qf {

// Runs one step of a routine that skips what fails and goes on with its next
// step; what the failed step was to change keeps its old value.
template <typename Step> void skipOnError(Step&& step)
{
    try {
        step();
    } catch (const Error&) {
    }
}

// The same, telling the context's skip observer what was skipped and why.
template <typename Step>
void skipOnError(const ControlContext& context, const StepSite& site, Step&& step)
{
    try {
        step();
    } catch (const Error& error) {
        context.reportSkip(site, error.message());
    }
}

} // namespace qf
