#pragma once

// The window of a pop-over. Private to the platform layer.

#include <QFrame>
#include <QPointer>
#include <QTimer>

class NSPopover;

/// The desktop's window behind a pop-over, with a frame around its content. Belongs to the pop-over.
class PopoverPeer final : public QFrame
{
public:
    explicit PopoverPeer(NSPopover& popover);

    /// Called by the pop-over's destructor: gives up what is in it, and is destroyed.
    void abandon();

    /// Shows `content` beside `anchor`, which is a part of the widget `beside`, on the side that is
    /// preferred.
    void showBeside(QWidget& content, QWidget& beside, const QRect& anchor, Qt::Edge side);
    /// Gives up what is in it.
    void release();

    /// Tells the pop-over that it is closed, once it is.
    void setVisible(bool visible) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    NSPopover* _popover; // null once it is gone
    QPointer<QWidget> _beside;
    QTimer _closing; // in the next turn of the event loop, while it is active
};
