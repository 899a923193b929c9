#include "real/OtherProcess.h"

#include "real/Desktop.h"

#include <gtest/gtest.h>

namespace desktop
{

void OtherProcess::start(const QStringList& arguments)
{
    _said.clear();
    _process.start(OTHER_PROCESS, arguments);
}

bool OtherProcess::says(const char* part)
{
    return waitUntil([&] {
        _said += _process.readAllStandardOutput();
        return _said.contains(part);
    });
}

void OtherProcess::drag(const std::string& bytes, const char* format, QPoint place,
                        const std::function<bool()>& arrived)
{
    _folder.write("dragged", bytes);
    start({"drag", format, QString::fromStdString((_folder.path() / "dragged").string())});
    EXPECT_TRUE(says("ready\n"));
    movePointer(QPoint(750, 150));
    press();
    // It takes moves for a drag to begin, and one to get there.
    int step = 0;
    EXPECT_TRUE(waitUntil([&] {
        movePointer(place + QPoint(++step % 20, 0));
        return arrived();
    }));
}

bool OtherProcess::drops(const char* answer)
{
    release();
    const bool answered = says(answer);
    _process.waitForFinished();
    return answered;
}

void OtherProcess::kill()
{
    _process.kill();
    _process.waitForFinished();
}

} // namespace desktop
