#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace qf {

/// A synchronous event with any number of handlers, raised on the caller's
/// thread. Handlers may connect or disconnect others while it is raised; each
/// raise calls the handlers that were connected when it began.
/// Copying a widget does not copy who listens to it, so copies start empty.
/// @tparam Args What a handler receives.
template <typename... Args> class Event {
public:
    /// A function called with the event's arguments.
    using Handler = std::function<void(Args...)>;

    Event() = default;
    /// An event without handlers.
    Event(const Event&) {}
    /// Keeps this event's handlers. @return This event.
    Event& operator=(const Event&) { return *this; }

    /// Adds a handler, called after those connected before it.
    /// @param handler The function. @return The id for disconnect().
    int connect(Handler handler)
    {
        m_handlers.push_back({++m_lastId, std::move(handler)});
        return m_lastId;
    }

    /// Removes a handler; an unknown id is ignored. @param id As connect() gave it.
    void disconnect(int id)
    {
        std::erase_if(m_handlers, [id](const Slot& slot) { return slot.id == id; });
    }

    /// @return Whether any handler is connected.
    bool hasHandlers() const { return !m_handlers.empty(); }

    /// Calls the handlers, in the order they were connected. A handler may
    /// destroy the event's owner when it is the only one.
    /// @param args Passed to each handler.
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
