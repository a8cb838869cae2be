#include "support/TraceRecorder.h"

namespace {
TraceRecorder* active = nullptr;

void record(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (active && type == QtDebugMsg && context.category == QLatin1String("qforms.trace"))
        active->messages.append(message);
}
} // namespace

TraceRecorder::TraceRecorder()
{
    QLoggingCategory::setFilterRules(QStringLiteral("qforms.trace.debug=true"));
    active = this;
    m_previous = qInstallMessageHandler(record);
}

TraceRecorder::~TraceRecorder()
{
    qInstallMessageHandler(m_previous);
    QLoggingCategory::setFilterRules(QStringLiteral("qforms.trace.debug=false"));
    active = nullptr;
}
