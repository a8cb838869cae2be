#include "toolkit/UnloadBatch.h"

namespace qf {

namespace {
int depth = 0;
}

UnloadBatch::UnloadBatch()
{
    ++depth;
}

UnloadBatch::~UnloadBatch()
{
    if (--depth == 0)
        ended().raise();
}

bool UnloadBatch::active()
{
    return depth > 0;
}

Event<>& UnloadBatch::ended()
{
    static Event<> event;
    return event;
}

} // namespace qf
