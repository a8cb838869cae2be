#pragma once

#include <QString>

namespace qf {

/// A modal message to the user, shown until the user closes it. Hosts, the Qt
/// view and tests may substitute their own implementation.
class MessageBox {
public:
    virtual ~MessageBox() = default;

    /// Shows a message.
    /// @param style The buttons (0 OK, 1 OK/Cancel, 2 Abort/Retry/Ignore, 3 Yes/No/Cancel,
    /// 4 Yes/No, 5 Retry/Cancel) plus the icon (16 critical, 32 question,
    /// 48 warning, 64 information).
    /// @param text The message. @param title The window's title.
    virtual void show(const QString& text, int style, const QString& title) = 0;
};

} // namespace qf
