#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace qf {

// A synchronous event with any number of handlers, raised on the caller's
// thread. Handlers may connect or disconnect others while it is raised; each
// raise calls the handlers that were connected when it began.
// Copying a widget does not copy who listens to it, so copies start empty.
template <typename... Args> class Event {
public:
    using Handler = std::function<void(Args...)>;

    Event() = default;
    Event(const Event&) {}
    Event& operator=(const Event&) { return *this; }

    int connect(Handler handler)
    {
        m_handlers.push_back({++m_lastId, std::move(handler)});
        return m_lastId;
    }

    void disconnect(int id)
    {
        std::erase_if(m_handlers, [id](const Slot& slot) { return slot.id == id; });
    }

    bool hasHandlers() const { return !m_handlers.empty(); }

    void raise(Args... args) const
    {
        if (m_handlers.empty())
            return;
        if (m_handlers.size() == 1) {
            // The handler may destroy the object that owns this event.
            Handler only = m_handlers.front().handler;
            only(args...);
            return;
        }
        const std::vector<Slot> snapshot = m_handlers;
        for (const Slot& slot : snapshot)
            slot.handler(args...);
    }

private:
    struct Slot {
        int id;
        Handler handler;
    };
    std::vector<Slot> m_handlers;
    int m_lastId = 0;
};

} // namespace qf
