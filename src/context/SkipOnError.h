#pragma once

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

} // namespace qf
