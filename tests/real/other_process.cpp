// Another program on the same display:
//
//     drag FORMAT FILE   shows a window at (700, 100), 100 points wide and high, from which the file's
//     content
//                        is dragged in that format. Says what the target answers: "would copy" or
//                        "would ignore" when that changes, at the end "copied" or "ignored".
//     clipboard          says what it finds on the clipboard: the formats, and the two that it knows.

#include "support/RawData.h"

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QFile>
#include <QMouseEvent>
#include <QWidget>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <xcb/xcb.h>

namespace
{

void say(const QByteArray& line)
{
    std::printf("%s\n", line.constData());
    std::fflush(stdout);
}

/// Hears from the target whether it took what was dropped, which Qt keeps to itself.
class Answer final : public QAbstractNativeEventFilter
{
public:
    Answer()
    {
        constexpr QByteArrayView kName = "XdndFinished";
        xcb_connection_t* display = qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
        const auto request =
            xcb_intern_atom(display, 0, static_cast<std::uint16_t>(kName.size()), kName.data());
        xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(display, request, nullptr);
        _finished = reply->atom;
        std::free(reply);
    }

private:
    bool nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) override
    {
        const auto& event = *static_cast<xcb_client_message_event_t*>(message);
        constexpr int kSentBit = 0x80;
        if ((event.response_type & ~kSentBit) == XCB_CLIENT_MESSAGE && event.type == _finished) {
            say((event.data.data32[1] & 1U) != 0 ? "copied" : "ignored");
            QCoreApplication::quit();
        }
        return false;
    }

    xcb_atom_t _finished;
};

class Source final : public QWidget
{
public:
    Source(QString format, QByteArray content) : _format(std::move(format)), _content(std::move(content))
    {
        setWindowFlag(Qt::FramelessWindowHint);
        setGeometry(700, 100, 100, 100);
    }

private:
    void paintEvent(QPaintEvent* /*event*/) override { say("ready"); }

    void mousePressEvent(QMouseEvent* /*event*/) override
    {
        auto* drag = new QDrag(this);
        drag->setMimeData(new RawData(_format, _content));
        connect(drag, &QDrag::actionChanged, this,
                [](Qt::DropAction action) { say(action == Qt::CopyAction ? "would copy" : "would ignore"); });
        if (drag->exec(Qt::CopyAction | Qt::MoveAction) == Qt::IgnoreAction) {
            say("ignored"); // nothing was dropped, and no answer will come
            QCoreApplication::quit();
        }
    }

    QString _format;
    QByteArray _content;
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("clipboard")) {
        const QMimeData* data = QGuiApplication::clipboard()->mimeData();
        say(data->formats().join(u' ').toUtf8());
        say(data->data("text/uri-list").trimmed());
        say(data->text().toUtf8());
        return 0;
    }
    QFile file(arguments.value(3));
    if (arguments.value(1) != QLatin1String("drag") || !file.open(QIODevice::ReadOnly)) {
        return 2;
    }
    Answer answer;
    qApp->installNativeEventFilter(&answer);
    Source source(arguments.value(2), file.readAll());
    source.show();
    return QApplication::exec();
}
