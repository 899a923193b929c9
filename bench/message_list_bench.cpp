// A list of messages beside the toolkit's own list view, whose delegate draws the same rows with a painter: a
// viewport of 40 rows with picture, title and a text that takes two lines. Rows a second are what counts.

#include "ItemView.h"

#include "platform/appkit/NSScrollView.h"
#include "platform/appkit/NSTableColumn.h"
#include "platform/appkit/NSTableHeaderView.h"
#include "platform/appkit/NSTableView.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSImage.h"
#include "window/ZuSmsImageCell.h"

#include <benchmark/benchmark.h>

#include <QAbstractListModel>
#include <QListView>
#include <QPainter>
#include <QPixmap>
#include <QStyledItemDelegate>

#include <cstdint>
#include <string>

namespace
{

constexpr int kRows = 40; // that show
constexpr int kRowHeight = 56;
constexpr int kPicture = 40;
constexpr int kGap = 4;       // between picture and title
constexpr int kSideRoom = 46; // right of the text
constexpr QSize kSize(320, kRows* kRowHeight);
constexpr QRgb kColor = 0xff20baea;

// What both show.

std::string title(std::int64_t row)
{
    return "Contact " + std::to_string(row);
}

std::string contents(std::int64_t row)
{
    return "Number " + std::to_string(row) + " was delayed, see you at the station at half past eight";
}

class Messages final : public NSObject, public NSTableViewDataSource, public NSTableViewDelegate
{
public:
    explicit Messages(std::int64_t rows) : _rows(rows) {}

    std::int64_t numberOfRowsInTableView(NSTableView* /*view*/) override { return _rows; }
    void tableView_willDisplayCell_forTableColumn_row(NSTableView* /*view*/, NSCell* cell,
                                                      NSTableColumn* /*column*/, std::int64_t row) override
    {
        auto& message = dynamic_cast<ZuSmsImageCell&>(*cell);
        message.setFrontImage(_picture.get());
        message.setStringValue(NSString::stringWithUTF8String(title(row).c_str()));
        message.setButtonContents(NSString::stringWithUTF8String(contents(row).c_str()));
    }

private:
    std::int64_t _rows;
    Ref<NSImage> _picture = image(kColor, kPicture);
};

struct OurList {
    explicit OurList(std::int64_t rows) : messages(make<Messages>(rows))
    {
        const Ref<NSTableColumn> column = make<NSTableColumn>();
        column->setWidth(kSize.width());
        column->setDataCell(make<ZuSmsImageCell>());
        table->addTableColumn(column);
        table->setHeaderView(nullptr);
        table->setRowHeight(kRowHeight);
        table->setDelegate(messages.get());
        table->setDataSource(messages.get());
        scrollView->setFrame(NSMakeRect(0.0, 0.0, kSize.width(), kSize.height()));
        scrollView->setDocumentView(table);
    }

    Ref<Messages> messages;
    Ref<NSTableView> table = make<NSTableView>();
    Ref<NSScrollView> scrollView = make<NSScrollView>();
};

class MessagesModel final : public QAbstractListModel
{
public:
    static constexpr int kContentsRole = Qt::UserRole;

    explicit MessagesModel(std::int64_t rows) : _rows(static_cast<int>(rows)) {}

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : _rows; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        switch (role) {
        case Qt::DecorationRole:
            return _picture;
        case Qt::DisplayRole:
            return QString::fromStdString(title(index.row()));
        case kContentsRole:
            return QString::fromStdString(contents(index.row()));
        default:
            return {};
        }
    }

private:
    int _rows;
    QPixmap _picture = QPixmap::fromImage(picture(kColor, kPicture));
};

class MessageDelegate final : public QStyledItemDelegate
{
public:
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const QRect picture(option.rect.x(), option.rect.y() + (kRowHeight - kPicture) / 2, kPicture,
                            kPicture);
        painter->drawPixmap(picture, index.data(Qt::DecorationRole).value<QPixmap>());
        const int left = picture.right() + 1 + kGap;
        const int lineHeight = option.fontMetrics.height();
        painter->setFont(option.font);
        painter->setPen(Qt::black);
        painter->drawText(QRect(left, picture.top(), option.rect.right() - left, lineHeight), Qt::AlignLeft,
                          index.data(Qt::DisplayRole).toString());
        const int top = picture.top() + lineHeight;
        painter->setPen(Qt::gray);
        painter->drawText(
            QRect(left, top, option.rect.right() - left - kSideRoom, option.rect.bottom() - top),
            Qt::TextWordWrap, index.data(MessagesModel::kContentsRole).toString());
    }
    QSize sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const override
    {
        return {kSize.width(), kRowHeight};
    }
};

struct StockList {
    explicit StockList(std::int64_t rows) : model(rows)
    {
        view.setFrameShape(QFrame::NoFrame);
        view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // leaves the rows the whole width
        view.setUniformItemSizes(true);
        view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        view.setFont(QFont("Liberation Sans", 9));
        view.setItemDelegate(&delegate);
        view.setModel(&model);
        view.resize(kSize);
        view.grab(); // gives the viewport its size
        view.doItemsLayout();
    }

    MessagesModel model;
    MessageDelegate delegate;
    QListView view;
};

template <class Next> void paintOurs(benchmark::State& state, Next next)
{
    const OurList ours(state.range(0));
    paint(state, *ours.scrollView->widget()->findChild<QAbstractScrollArea*>(), kRows, next);
}

template <class Next> void paintStock(benchmark::State& state, Next next)
{
    paint(state, StockList(state.range(0)).view, kRows, next);
}

void redrawMessages(benchmark::State& state)
{
    paintOurs(state, Still());
}
void redrawStockMessages(benchmark::State& state)
{
    paintStock(state, Still());
}
void scrollMessages(benchmark::State& state)
{
    paintOurs(state, Onward{kRowHeight});
}
void scrollStockMessages(benchmark::State& state)
{
    paintStock(state, Onward{kRowHeight});
}
void jumpMessages(benchmark::State& state)
{
    paintOurs(state, Random());
}
void jumpStockMessages(benchmark::State& state)
{
    paintStock(state, Random());
}
BENCHMARK(redrawMessages)->Arg(1000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(redrawStockMessages)->Arg(1000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(scrollMessages)->Arg(1000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(scrollStockMessages)->Arg(1000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(jumpMessages)->Arg(1000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(jumpStockMessages)->Arg(1000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

} // namespace
