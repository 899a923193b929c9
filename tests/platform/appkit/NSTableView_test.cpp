#include "platform/appkit/NSTableView.h"

#include "platform/appkit/NSScrollView.h"
#include "platform/appkit/NSTableHeaderView.h"
#include "platform/appkit/NSTextFieldCell.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSIndexSet.h"
#include "support/Accessibility.h"
#include "support/Tables.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include <cmath>
#include <limits>

namespace
{

/// A cell that writes down what happens to it.
class NotingCell final : public NSCell
{
public:
    using Notes = std::vector<std::string>;

    explicit NotingCell(Notes& noted) : notes(noted) {}

    void drawWithFrame_inView(NSRect frame, NSView* /*view*/) override
    {
        note("draw " + NSStringFromRect(frame) + (isHighlighted() ? " highlighted" : ""));
    }
    NSCellHitResult hitTestForEvent_inRect_ofView(NSEvent* /*event*/, NSRect frame, NSView* view) override
    {
        const auto& rows = dynamic_cast<NSTableView&>(*view);
        note("hit " + NSStringFromRect(frame) + " clicked " + std::to_string(rows.clickedColumn()) + ", " +
             std::to_string(rows.clickedRow()));
        return hit;
    }
    bool trackMouse_inRect_ofView_untilMouseUp(NSEvent* /*event*/, NSRect /*frame*/, NSView* /*view*/,
                                               bool /*untilMouseUp*/) override
    {
        note("track");
        return tracked;
    }
    std::optional<bool> accessibilityChecked() const override { return stringValue()->length() > 5; }
    void performCheckOfRow_inView(std::int64_t row, NSTableView* /*view*/) override
    {
        note("check " + std::to_string(row));
    }

    Notes& notes;
    NSCellHitResult hit = NSCellHitNone;
    bool tracked = false;

private:
    void note(const std::string& what) { notes.push_back(utf8(stringValue()) + ": " + what); }
};

/// A table in a scroll view of 200 points by 103, of which the header takes 23, with rows of 20 points.
class NSTableViewTest : public testing::Test
{
protected:
    using Notes = NotingCell::Notes;

    NSTableViewTest()
    {
        owner->onDisplay = [](NSCell& shown, std::int64_t row) {
            shown.setStringValue(text(("r" + std::to_string(row)).c_str()));
        };
        table = tableOf<SelectionHearer>(*owner, cell);
        table->tableColumns()[0]->setWidth(60.0);
        table->setRowHeight(20.0);
        scrollView->setDocumentView(table);
        scrollView->imageOfBounds(1.0); // lays it out
        notes.clear();
    }

    /// A table that counts what its delegate hears of the selection.
    class SelectionHearer : public NSTableView
    {
    public:
        SelectionHearer* initWithFrame(NSRect frame) override
        {
            NSTableView::initWithFrame(frame);
            return this;
        }
        int selections = 0;

    protected:
        void tellOfSelection() override { ++selections; }
    };

    void send(QEvent::Type type, NSPoint point)
    {
        const NSRect visible = table->visibleRect();
        const QPointF place(point.x - visible.origin.x, point.y - visible.origin.y);
        QWidget& widget = *table->widget();
        const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, place, widget.mapToGlobal(place), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
    }
    void click(NSPoint point)
    {
        notes.clear();
        send(QEvent::MouseButtonPress, point);
        send(QEvent::MouseButtonRelease, point);
    }

    QAbstractItemView& itemView() { return *scrollView->widget()->findChild<QAbstractItemView*>(); }

    void key(int code, const char* typed, bool repeated = false)
    {
        QKeyEvent event(QEvent::KeyPress, code, Qt::NoModifier, typed, repeated);
        QCoreApplication::sendEvent(&itemView(), &event);
    }

    std::vector<std::int64_t> selected() const
    {
        std::vector<std::int64_t> rows;
        for (const NSRange& range : table->selectedRowIndexes()->ranges()) {
            for (std::size_t row = range.location; row < NSMaxRange(range); ++row) {
                rows.push_back(static_cast<std::int64_t>(row));
            }
        }
        return rows;
    }

    using Rows = std::vector<std::int64_t>;

    /// Puts the scroll view into a window that is shown.
    Ref<NSWindow> show()
    {
        Ref<NSWindow> window = make<NSWindow>()->initWithContentRect_styleMask(scrollView->frame(), 0);
        window->setContentView(scrollView);
        window->makeKeyAndOrderFront();
        QCoreApplication::processEvents();
        return window;
    }

    Notes notes;
    Ref<TableOwner> owner = make<TableOwner>(100'000);
    Ref<NotingCell> cell = make<NotingCell>(notes);
    Ref<SelectionHearer> table;
    Ref<NSScrollView> scrollView = make<NSScrollView>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 103.0));
};

TEST_F(NSTableViewTest, DrawsTheRowsThatHaveToBeRedrawn)
{
    const Ref<NSTableColumn> second = make<NSTableColumn>();
    second->setDataCell(cell);
    second->setWidth(30.0);
    table->addTableColumn(second);
    table->tableColumns()[0]->setWidth(60.0);
    second->setWidth(126.0);
    table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(50'001).get(), false);
    EXPECT_EQ(
        operationsOf(*table, {{0.0, 50'000.5 * 20.0}, {50.0, 20.0}}),
        (Operations{"fillColor white(1, 1)", "fillRect {{0, 1000010}, {50, 20}}", "save", "restore",
                    "fillColor white(0.55, 1)", "fillRect {{0, 1000020}, {186, 20}}", "save", "restore"}));
    EXPECT_EQ(notes, (Notes{"r50000: draw {{0, 1e+06}, {60, 20}}",
                            "r50001: draw {{0, 1000020}, {60, 20}} highlighted"}))
        << "what begins right of the rectangle is not drawn";
    notes.clear();
    operationsOf(*table, {{70.0, 99'999.0 * 20.0}, {10.0, 200.0}});
    EXPECT_EQ(notes,
              (Notes{"r99999: draw {{0, 1999980}, {60, 20}}", "r99999: draw {{60, 1999980}, {126, 20}}"}))
        << "nothing behind the last row; what begins left of the rectangle may reach into it";

    table->scrollRowToVisible(50'003);
    notes.clear();
    scrollView->imageOfBounds(1.0);
    EXPECT_EQ(notes.size(), 2U * 4U) << "of a hundred thousand";
    EXPECT_EQ(notes.front(), "r50000: draw {{0, 1e+06}, {60, 20}}");
}

TEST_F(NSTableViewTest, KnowsWhatIsWhere)
{
    struct Place {
        NSPoint point;
        std::int64_t row;
        std::int64_t column;
    };
    for (const auto& [point, row, column] : {Place{{0.0, 0.0}, 0, 0},
                                             {{185.5, 19.5}, 0, 0},
                                             {{186.0, 20.0}, 1, -1},
                                             {{-0.5, 1'999'999.5}, 99'999, -1},
                                             {{0.0, 2'000'000.0}, -1, 0},
                                             {{0.0, -0.5}, -1, 0},
                                             {{std::nan(""), std::nan("")}, -1, -1},
                                             {{0.0, std::numeric_limits<double>::infinity()}, -1, 0}}) {
        EXPECT_EQ(table->rowAtPoint(point), row) << point.y;
        EXPECT_EQ(table->columnAtPoint(point), column) << point.x;
    }
    EXPECT_EQ(table->rectOfRow(-1), NSZeroRect);
    EXPECT_EQ(table->rectOfRow(100'000), NSZeroRect);
    EXPECT_EQ(table->rectOfColumn(1), NSZeroRect);
    EXPECT_EQ(table->frameOfCellAtColumn_row(0, 100'000), NSZeroRect);

    table->scrollRowToVisible(12);
    EXPECT_EQ(table->visibleRect(), NSMakeRect(0.0, 180.0, 186.0, 80.0));
    EXPECT_EQ(table->convertPoint_fromView({5.0, 23.5}, scrollView.get()), (NSPoint{5.0, 180.5}));
    EXPECT_EQ(table->headerView()->convertPoint_fromView({5.0, 22.5}, scrollView.get()),
              (NSPoint{5.0, 22.5}));
    table->scrollRowToVisible(11);
    EXPECT_EQ(table->visibleRect().origin.y, 180.0) << "shows already";
    table->scrollRowToVisible(3);
    EXPECT_EQ(table->visibleRect().origin.y, 60.0);
    table->scrollRowToVisible(100'000);
    EXPECT_EQ(table->visibleRect().origin.y, 60.0) << "no such row";
}

TEST_F(NSTableViewTest, StaysAsItIsScrolledAndSized)
{
    const Ref<NSTableColumn> second = make<NSTableColumn>();
    table->addTableColumn(second);
    table->tableColumns()[0]->setWidth(60.0);
    const Ref<NSWindow> window = show();
    second->setWidth(400.0);
    QCoreApplication::processEvents();
    EXPECT_EQ(second->width(), 400.0) << "the scroller that appears changes the height only";
    table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(0).get(), false);
    table->scrollRowToVisible(500);
    itemView().horizontalScrollBar()->setValue(30);
    const NSRect visible = table->visibleRect();
    table->reloadData();
    table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(1).get(), false);
    QCoreApplication::processEvents();
    EXPECT_EQ(table->visibleRect(), visible);

    notes.clear();
    table->setNeedsDisplayInRect(table->rectOfRow(499));
    QCoreApplication::processEvents();
    EXPECT_EQ(notes.at(0), "r499: draw {{0, 9980}, {60, 20}}");
    EXPECT_EQ(pixel(*scrollView->imageOfBounds(1.0), 29, 10), "#ffcccccc") << "the line behind a header";
}

TEST_F(NSTableViewTest, KeepsSubviewsBesideTheirRows)
{
    const Ref<NSView> field = make<NSView>()->initWithFrame(NSMakeRect(10.0, 240.0, 50.0, 20.0));
    table->addSubview(field);
    for (const std::int64_t row : {12, 13, 900, 10}) {
        table->scrollRowToVisible(row);
        const double top = 240.0 - table->visibleRect().origin.y;
        EXPECT_EQ(field->widget()->geometry(), QRect(10, static_cast<int>(top), 50, 20)) << row;
    }
}

TEST_F(NSTableViewTest, LetsACellTakeAPressFirst)
{
    cell->hit = NSCellHitContentArea;
    EXPECT_FALSE(table->needsDisplay());
    click({10.0, 45.0});
    EXPECT_TRUE(table->needsDisplay()) << "the cell may show something new";
    EXPECT_EQ(notes[0], "r2: hit {{0, 40}, {186, 20}} clicked 0, 2");
    EXPECT_EQ(selected(), Rows{}) << "the cell has dealt with it";
    EXPECT_EQ(table->clickedRow(), -1);
    send(QEvent::MouseButtonPress, {10.0, 45.0});
    send(QEvent::MouseMove, {10.0, 65.0});
    send(QEvent::MouseButtonRelease, {10.0, 65.0});
    EXPECT_EQ(selected(), Rows{}) << "nor do its moves select";

    cell->hit = NSCellHitNone;
    click({10.0, 45.0});
    EXPECT_EQ(selected(), Rows{2});
    EXPECT_EQ(notes.size(), 1U) << "no tracking";

    cell->hit = NSCellHitTrackableArea;
    click({10.0, 5.0});
    EXPECT_EQ(notes.back(), "r0: track");
    EXPECT_EQ(selected(), Rows{0});
    cell->tracked = true;
    click({10.0, 45.0});
    EXPECT_EQ(selected(), Rows{0}) << "the press was tracked";

    table->setEnabled(false);
    notes.clear();
    click({10.0, 45.0});
    EXPECT_EQ(notes, Notes{});

    table->setEnabled(true);
    cell->hit = NSCellHitContentArea;
    send(QEvent::MouseButtonPress, {10.0, 45.0});
    cell->hit = NSCellHitNone;
    send(QEvent::MouseButtonDblClick, {10.0, 45.0});
    EXPECT_EQ(selected(), Rows{2}) << "a quick second press is one like any other";
}

TEST_F(NSTableViewTest, SelectsRows)
{
    table->selections = 0;
    click({10.0, 45.0});
    send(QEvent::MouseButtonPress, {10.0, 5.0});
    EXPECT_EQ(selected(), Rows{0});
    EXPECT_EQ(table->selections, 2);
    table->setAllowsMultipleSelection(true);
    const Ref<NSIndexSet> some = NSIndexSet::indexSetWithIndexesInRanges({{99'998, 10}, {4, 1}, {4, 2}});
    table->selectRowIndexes_byExtendingSelection(some.get(), false);
    EXPECT_EQ(selected(), (Rows{4, 5, 99'998, 99'999})) << "those that there are";
    table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(7).get(), true);
    EXPECT_EQ(selected(), (Rows{4, 5, 7, 99'998, 99'999}));
    EXPECT_EQ(table->selectedRow(), 7) << "the last one";
    EXPECT_FALSE(table->isRowSelected(-1));
    EXPECT_EQ(table->selections, 4);

    owner->rows = 6;
    table->reloadData();
    EXPECT_EQ(selected(), (Rows{4, 5})) << "those that are left";
    EXPECT_EQ(table->selections, 5);
    EXPECT_EQ(table->selectedRow(), 4);
    EXPECT_EQ(table->bounds().size.height, 120.0);
    table->reloadData();
    EXPECT_EQ(table->selections, 5) << "nothing new";
    table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(5).get(), true);
    table->reloadData();
    EXPECT_EQ(table->selectedRow(), 5) << "still the last one";
    table->selectRowIndexes_byExtendingSelection(nullptr, false);
    EXPECT_EQ(table->selectedRow(), -1);
}

TEST_F(NSTableViewTest, TogglesTheCheckOfTheCurrentRowBySpace)
{
    key(Qt::Key_Space, " ");
    EXPECT_EQ(notes, Notes{}) << "there is none";
    click({10.0, 45.0});
    key(Qt::Key_Down, "");
    scrollView->imageOfBounds(1.0);
    notes.clear();
    key(Qt::Key_Space, " ");
    EXPECT_TRUE(table->needsDisplay());
    key(Qt::Key_Space, " ", true);
    EXPECT_EQ(notes, Notes{"r3: check 3"}) << "not over and over";
    EXPECT_EQ(selected(), Rows{3});
}

TEST_F(NSTableViewTest, FitsItsColumns)
{
    NSTableColumn& first = *table->tableColumns()[0];
    EXPECT_EQ(first.width(), 186.0) << "the last takes what the scroller leaves";
    const Ref<NSTableColumn> second = make<NSTableColumn>();
    table->addTableColumn(second);
    table->addTableColumn(second); // reported
    table->addTableColumn(nullptr);
    EXPECT_EQ(table->tableColumns().size(), 2U);
    first.setMinWidth(20.0);
    first.setMaxWidth(90.0);
    EXPECT_EQ(first.width(), 90.0);
    for (const auto& [asked, width] :
         {std::pair{5.0, 20.0}, {500.0, 90.0}, {49.6, 50.0}, {std::nan(""), 20.0}}) {
        first.setWidth(asked);
        EXPECT_EQ(first.width(), width);
    }
    EXPECT_EQ(table->rectOfColumn(1).origin.x, 20.0);
    scrollView->setFrame(NSMakeRect(0.0, 0.0, 300.0, 103.0));
    scrollView->imageOfBounds(1.0);
    EXPECT_EQ(second->width(), 266.0);
    second->setWidth(400.0);
    EXPECT_EQ(table->bounds().size.width, 420.0);
    scrollView->imageOfBounds(1.0);
    itemView().horizontalScrollBar()->setValue(30);
    EXPECT_EQ(table->headerView()->convertPoint_fromView({0.0, 0.0}, scrollView.get()), (NSPoint{30.0, 0.0}));
    EXPECT_EQ(table->headerView()->headerRectOfColumn(1), NSMakeRect(20.0, 0.0, 400.0, 23.0));
    EXPECT_EQ(table->headerView()->headerRectOfColumn(2), NSZeroRect);
}

TEST_F(NSTableViewTest, FitsItsColumnsWhenItIsShownAtLast)
{
    const Ref<NSView> content = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 300.0, 200.0));
    const Ref<NSView> page = make<NSView>()->initWithFrame(content->bounds());
    const auto shown = make<NSScrollView>();
    shown->setFrame(NSMakeRect(10.0, 10.0, 150.0, 100.0));
    const auto list = make<NSTableView>();
    list->setHeaderView(nullptr);
    list->addTableColumn(make<NSTableColumn>());
    list->setDataSource(owner.get());
    shown->setDocumentView(list);
    page->addSubview(shown);
    page->setHidden(true);
    content->addSubview(page);
    const Ref<NSWindow> window = make<NSWindow>()->initWithContentRect_styleMask(content->frame(), 0);
    window->setContentView(content);
    window->makeKeyAndOrderFront();
    list->reloadData();
    QCoreApplication::processEvents();
    page->setHidden(false);
    QCoreApplication::processEvents();
    EXPECT_EQ(list->tableColumns()[0]->width(), 136.0);
    EXPECT_EQ(list->visibleRect().size.width, 136.0);
}

TEST_F(NSTableViewTest, TakesAnotherHeaderOrNone)
{
    const Weak<NSTableHeaderView> first = table->headerView();
    table->setHeaderView(nullptr);
    EXPECT_EQ(first.get(), nullptr);
    scrollView->imageOfBounds(1.0);
    EXPECT_EQ(table->visibleRect().size.height, 103.0);
    table->setHeaderView(make<NSTableHeaderView>()->initWithFrame(NSMakeRect(0.0, 0.0, 0.0, 33.0)));
    scrollView->imageOfBounds(1.0);
    EXPECT_EQ(table->visibleRect().size.height, 70.0);
    EXPECT_EQ(table->frame().origin.y, 33.0);
    EXPECT_EQ(table->headerView()->superview(), scrollView.get());
    EXPECT_EQ(table->headerView()->tableView(), table.get());
    EXPECT_EQ(scrollView->subviews().size(), 2U);

    const Ref<NSTableView> other = tableOf(*owner, make<NSCell>());
    const Ref<NSTableHeaderView> shared = table->headerView();
    other->setHeaderView(shared);
    EXPECT_EQ(table->headerView(), nullptr) << "a header has one table";
    EXPECT_EQ(shared->superview(), nullptr);
    const Ref<NSScrollView> plain = make<NSScrollView>();
    plain->addSubview(shared); // a view like any other
    plain->imageOfBounds(1.0);
    shared->widget();
    table->setHeaderView(shared);
    scrollView->imageOfBounds(1.0);
    EXPECT_EQ(shared->superview(), scrollView.get());
    EXPECT_EQ(shared->widget()->parentWidget()->parentWidget(), &itemView());
}

TEST_F(NSTableViewTest, ShowsAPressedHeader)
{
    const std::string pressed = "fillColor white(0.85, 1)";
    QWidget& header = *table->headerView()->widget();
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, {30.0, 5.0}, header.mapToGlobal(QPointF(30.0, 5.0)), Qt::LeftButton, held,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&header, &event);
        EXPECT_EQ(operationsOf(*table->headerView())[0] == pressed, type == QEvent::MouseButtonPress);
    }
    EXPECT_EQ(owner->messages, Notes{"column"});
}

TEST_F(NSTableViewTest, LimitsWhatTheToolkitCannotCount)
{
    owner->rows = -5; // reported
    table->reloadData();
    EXPECT_EQ(table->numberOfRows(), 0);
    owner->rows = std::numeric_limits<std::int64_t>::max();
    table->reloadData();
    EXPECT_EQ(table->numberOfRows(), 10'000'000);
    table->setRowHeight(1e9);
    EXPECT_EQ(table->rowHeight(), 214.0);
    owner->rows = 3;
    table->reloadData();
    for (const auto& [asked, height] :
         {std::pair{17.6, 18.0}, {-1.0, 1.0}, {std::nan(""), 1.0}, {1e9, 10'000.0}}) {
        table->setRowHeight(asked);
        EXPECT_EQ(table->rowHeight(), height);
    }
}

TEST_F(NSTableViewTest, LosesItsWidgetsToAHost)
{
    table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(3).get(), false);
    EXPECT_EQ(table->selectedRow(), 3);
    delete &itemView();
    EXPECT_EQ(table->selectedRow(), -1);
    EXPECT_EQ(table->numberOfRows(), 0);
    table->reloadData();
    EXPECT_EQ(table->numberOfRows(), 100'000);
}

TEST_F(NSTableViewTest, StaysWholeWhateverItsDelegateDoes)
{
    EXPECT_EQ(table->preparedCellAtColumn_row(1, 0), nullptr); // reported
    EXPECT_EQ(table->preparedCellAtColumn_row(0, -1), nullptr);
    const auto display = owner->onDisplay;
    owner->onDisplay = [&](NSCell& shown, std::int64_t row) {
        display(shown, row);
        table->tableColumns()[0]->setDataCell(make<NotingCell>(notes));
    };
    cell = nullptr;
    notes.clear();
    scrollView->imageOfBounds(1.0);
    EXPECT_EQ(notes.size(), 4U);

    owner->onDisplay = [&](NSCell& shown, std::int64_t row) {
        display(shown, row);
        owner->rows = 2;
        table->reloadData();
    };
    notes.clear();
    scrollView->imageOfBounds(1.0);
    EXPECT_EQ(notes.size(), 2U) << "rows that are no more are not drawn";

    owner->onDisplay = display;
    QCoreApplication::processEvents(); // lays out
    QAccessibleTableInterface& rows = *accessible(*scrollView).child(0)->tableInterface();
    QAccessibleInterface* first = rows.cellAt(0, 0);
    const Weak<NSTableView> gone(table.get());
    owner->onDisplay = [&](NSCell& shown, std::int64_t row) {
        scrollView->setDocumentView(nullptr);
        table = nullptr;
        display(shown, row);
    };
    EXPECT_EQ(first->text(QAccessible::Name), "r0");
    EXPECT_EQ(gone.get(), nullptr);
}

TEST_F(NSTableViewTest, MovesToAnotherScrollView)
{
    const Ref<NSScrollView> other = make<NSScrollView>()->initWithFrame(NSMakeRect(0.0, 0.0, 300.0, 63.0));
    other->setDocumentView(table);
    EXPECT_EQ(scrollView->documentView(), nullptr);
    scrollView->setDocumentView(nullptr);
    EXPECT_EQ(table->superview(), other.get());
    EXPECT_EQ(table->headerView()->superview(), other.get());
    notes.clear();
    other->imageOfBounds(1.0);
    EXPECT_EQ(notes, (Notes{"r0: draw {{0, 0}, {286, 20}}", "r1: draw {{0, 20}, {286, 20}}"}));
}

TEST_F(NSTableViewTest, OutlivesWhatItAsks)
{
    owner = nullptr;
    EXPECT_EQ(table->numberOfRows(), 100'000) << "as when they were counted";
    EXPECT_EQ(operationsOf(*table, {{0.0, 0.0}, {50.0, 20.0}}).size(), 4U);
    table->reloadData();
    EXPECT_EQ(table->numberOfRows(), 0);

    struct Leaver : TableOwner {
        explicit Leaver(NSScrollView& view) : TableOwner(3), scrollView(view) {}
        std::int64_t numberOfRowsInTableView(NSTableView* view) override
        {
            if (!asked) {
                asked = true;
                view->reloadData(); // later
            }
            return rows;
        }
        void tableViewSelectionDidChange(NSTableView* /*view*/) override
        {
            scrollView.setDocumentView(nullptr);
        }
        bool asked = false;
        NSScrollView& scrollView;
    };
    const auto leaver = make<Leaver>(*scrollView);
    Ref<NSTableView> other = tableOf(*leaver, make<NSTextFieldCell>());
    scrollView->setDocumentView(other);
    scrollView->imageOfBounds(1.0);
    QWidget& widget = *other->widget();
    const Weak<NSTableColumn> column = other->tableColumns()[0];
    const Weak<NSTableView> gone = std::exchange(other, nullptr);
    QMouseEvent event(QEvent::MouseButtonPress, {5.0, 5.0}, widget.mapToGlobal(QPointF(5.0, 5.0)),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
    EXPECT_EQ(gone.get(), nullptr) << "taken away by its delegate, within the press";
    EXPECT_EQ(column.get(), nullptr);
}

TEST_F(NSTableViewTest, SaysWhatItsRowsSay)
{
    owner->rows = 30'000;
    table->reloadData();
    table->tableColumns()[0]->setTitle(text("Name"));
    table->setAccessibilityLabel(text("Contacts"));
    scrollView->imageOfBounds(1.0);
    QAccessibleInterface& rows = *accessible(*scrollView).child(0);
    EXPECT_EQ(rows.text(QAccessible::Name), "Contacts");
    EXPECT_EQ(rows.tableInterface()->columnDescription(0), "Name");
    QAccessibleInterface* few = rows.tableInterface()->cellAt(12, 0);
    EXPECT_EQ(few->text(QAccessible::Name), "r12");
    EXPECT_TRUE(few->state().checkable);
    EXPECT_FALSE(few->state().checked);
    QAccessibleInterface* many = rows.tableInterface()->cellAt(20'000, 0);
    EXPECT_EQ(many->text(QAccessible::Name), "r20000");
    EXPECT_TRUE(many->state().checked);
    EXPECT_FALSE(many->state().selected);
    table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(20'000).get(), false);
    EXPECT_TRUE(many->state().selected);
}

} // namespace
