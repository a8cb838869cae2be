#pragma once

#include <QLoggingCategory>
#include <QStringList>

// Collects the game check's trace messages from the qforms.trace logging
// category while it exists.
class TraceRecorder {
public:
    TraceRecorder();
    ~TraceRecorder();
    TraceRecorder(const TraceRecorder&) = delete;
    TraceRecorder& operator=(const TraceRecorder&) = delete;

    QStringList messages;

private:
    QtMessageHandler m_previous;
};
