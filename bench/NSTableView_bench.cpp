// Tables beside the toolkit's own item view with its own delegate, which shows the same content: a viewport
// of 40 rows with check and name, number, and picture with caption. Rows a second are what counts.

#include "ItemView.h"

#include "platform/appkit/NSScrollView.h"
#include "platform/appkit/NSTableColumn.h"
#include "platform/appkit/NSTableView.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"
#include "window/ZuCenterTextFieldCell.h"
#include "window/ZuImageCell.h"
#include "window/ZuTableCheckImageCell.h"

#include <benchmark/benchmark.h>

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QPainter>
#include <QPixmap>
#include <QTableView>

#include <array>
#include <cstdint>
#include <string>

namespace
{

constexpr int kRows = 40; // that show
constexpr int kRowHeight = 24;
constexpr int kHeaderHeight = 24;
constexpr int kPicture = 16;
constexpr std::array kWidths{220, 120, 220};
constexpr QSize kSize(kWidths[0] + kWidths[1] + kWidths[2] + 20, kHeaderHeight + kRows * kRowHeight);

// What both show.

bool isChecked(std::int64_t row)
{
    return row % 3 == 0;
}

std::string name(std::int64_t row)
{
    return "Contact " + std::to_string(row);
}

std::string number(std::int64_t row)
{
    return "+49 30 " + std::to_string(1000000 + row);
}

std::string caption(std::int64_t row)
{
    return "Group " + std::to_string(row % 10);
}

class Contacts final : public NSObject, public NSTableViewDataSource, public NSTableViewDelegate
{
public:
    explicit Contacts(std::int64_t rows) : _rows(rows) {}

    std::int64_t numberOfRowsInTableView(NSTableView* /*view*/) override { return _rows; }
    void tableView_willDisplayCell_forTableColumn_row(NSTableView* /*view*/, NSCell* cell,
                                                      NSTableColumn* /*column*/, std::int64_t row) override
    {
        if (auto* check = dynamic_cast<ZuTableCheckImageCell*>(cell)) {
            check->setIsChecked(isChecked(row) ? 1 : 0);
            check->setStringValue(NSString::stringWithUTF8String(name(row).c_str()));
        } else if (auto* group = dynamic_cast<ZuImageCell*>(cell)) {
            _caption = NSString::stringWithUTF8String(caption(row).c_str());
            group->setDescription(_caption.get());
        } else {
            cell->setStringValue(NSString::stringWithUTF8String(number(row).c_str()));
        }
    }

private:
    std::int64_t _rows;
    Ref<NSString> _caption;
};

/// A table with its content, and the images that its cells do not keep alive.
struct OurTable {
    explicit OurTable(std::int64_t rows) : contacts(make<Contacts>(rows))
    {
        const Ref<ZuTableCheckImageCell> check = make<ZuTableCheckImageCell>();
        check->awakeFromNib();
        check->loadImage_withSecond_withThird(images[0].get(), images[1].get(), images[2].get());
        const Ref<ZuImageCell> group = make<ZuImageCell>();
        group->setImage(images[3]);
        group->setImageAlignment(NSImageAlignment::Left);
        group->setOffset(kPicture + 6);
        const std::array<Ref<NSCell>, 3> cells{check, make<ZuCenterTextFieldCell>(), group};
        for (std::size_t place = 0; place < cells.size(); ++place) {
            const Ref<NSTableColumn> column = make<NSTableColumn>();
            column->setWidth(kWidths[place]);
            column->setDataCell(cells[place]);
            table->addTableColumn(column);
        }
        table->setRowHeight(kRowHeight);
        table->setFont(NSFont::fontWithName_size("Arial", 12.0));
        table->setDelegate(contacts.get());
        table->setDataSource(contacts.get());
        scrollView->setFrame(NSMakeRect(0.0, 0.0, kSize.width(), kSize.height()));
        scrollView->setDocumentView(table);
    }

    std::array<Ref<NSImage>, 4> images{image(0xffe0e0e0, kPicture), image(0xff20baea, kPicture),
                                       image(0xffa0a0a0, kPicture), image(0xff808000, kPicture)};
    Ref<Contacts> contacts;
    Ref<NSTableView> table = make<NSTableView>();
    Ref<NSScrollView> scrollView = make<NSScrollView>();
};

class ContactsModel final : public QAbstractTableModel
{
public:
    explicit ContactsModel(std::int64_t rows) : _rows(static_cast<int>(rows)) {}

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : _rows; }
    int columnCount(const QModelIndex& /*parent*/ = {}) const override { return kWidths.size(); }
    QVariant data(const QModelIndex& index, int role) const override
    {
        const std::int64_t row = index.row();
        if (role == Qt::CheckStateRole && index.column() == 0) {
            return isChecked(row) ? Qt::Checked : Qt::Unchecked;
        }
        if (role == Qt::DecorationRole && index.column() == 2) {
            return _picture;
        }
        if (role == Qt::DisplayRole) {
            const std::string text = index.column() == 0   ? name(row)
                                     : index.column() == 1 ? number(row)
                                                           : caption(row);
            return QString::fromStdString(text);
        }
        return {};
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        return QAbstractTableModel::flags(index) |
               (index.column() == 0 ? Qt::ItemIsUserCheckable : Qt::NoItemFlags);
    }

private:
    int _rows;
    QPixmap _picture = QPixmap::fromImage(picture(0xff808000, kPicture));
};

struct StockTable {
    explicit StockTable(std::int64_t rows) : model(rows)
    {
        view.setFrameShape(QFrame::NoFrame);
        view.setShowGrid(false);
        view.verticalHeader()->hide();
        view.verticalHeader()->setDefaultSectionSize(kRowHeight);
        view.horizontalHeader()->setFixedHeight(kHeaderHeight);
        view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        view.setFont(QFont("Liberation Sans", 9));
        view.setModel(&model);
        for (int column = 0; column < static_cast<int>(kWidths.size()); ++column) {
            view.horizontalHeader()->resizeSection(column, kWidths[static_cast<std::size_t>(column)]);
        }
        view.resize(kSize);
    }

    ContactsModel model;
    QTableView view;
};

template <class Next> void paintOurs(benchmark::State& state, Next next)
{
    const OurTable ours(state.range(0));
    paint(state, *ours.scrollView->widget()->findChild<QAbstractScrollArea*>(), kRows, next);
}

template <class Next> void paintStock(benchmark::State& state, Next next)
{
    paint(state, StockTable(state.range(0)).view, kRows, next);
}

void redrawTable(benchmark::State& state)
{
    paintOurs(state, Still());
}
void redrawStockTable(benchmark::State& state)
{
    paintStock(state, Still());
}
void scrollTable(benchmark::State& state)
{
    paintOurs(state, Random());
}
void scrollStockTable(benchmark::State& state)
{
    paintStock(state, Random());
}
BENCHMARK(redrawTable)->Arg(100)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(redrawStockTable)->Arg(100)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(scrollTable)->Arg(100)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(scrollStockTable)->Arg(100)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

} // namespace
