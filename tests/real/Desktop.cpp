#include "real/Desktop.h"

#include <QColor>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QThread>

namespace desktop
{

std::string xdotool(const std::vector<std::string>& arguments)
{
    QStringList list;
    for (const std::string& argument : arguments) {
        list << QString::fromStdString(argument);
    }
    QProcess process;
    process.start("xdotool", list);
    process.waitForFinished();
    return process.readAllStandardOutput().trimmed().toStdString();
}

void movePointer(QPoint place)
{
    xdotool({"mousemove", std::to_string(place.x()), std::to_string(place.y())});
}

void press()
{
    xdotool({"mousedown", "1"});
}

void release()
{
    xdotool({"mouseup", "1"});
}

void focus(unsigned long window)
{
    xdotool({"windowfocus", "--sync", std::to_string(window)});
}

QColor colorOnScreen(QPoint place)
{
    return pictureOfScreen(QRect(place, QSize(1, 1))).pixelColor(0, 0);
}

QImage pictureOfScreen(QRect rect)
{
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, rect.x(), rect.y(), rect.width(), rect.height())
        .toImage();
}

bool waitUntil(const std::function<bool()>& condition)
{
    for (const QDeadlineTimer deadline(20'000); !deadline.hasExpired(); QThread::msleep(5)) {
        QCoreApplication::processEvents();
        if (condition()) {
            return true;
        }
    }
    return false;
}

} // namespace desktop
