#pragma once

#include "support/TemporaryFolder.h"

#include <QByteArray>
#include <QPoint>
#include <QProcess>

#include <functional>
#include <string>

namespace desktop
{

/// Another program on the display, which copies for others and drags (see other_process.cpp).
class OtherProcess
{
public:
    void start(const QStringList& arguments);
    /// Whether it says, or has said since it was started, that text.
    bool says(const char* part);
    const QByteArray& said() const { return _said; }

    /// Has it drag `bytes` over a place of the screen, until `arrived`, where they are not dropped yet.
    void drag(const std::string& bytes, const char* format, QPoint place,
              const std::function<bool()>& arrived);
    /// Drops that. Whether it ends with that answer.
    bool drops(const char* answer);
    void kill();

private:
    TemporaryFolder _folder;
    QProcess _process;
    QByteArray _said;
};

} // namespace desktop
