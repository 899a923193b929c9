#include "platform/appkit/NSDragging.h"

#include "platform/appkit/NSScrollView.h"
#include "platform/appkit/NSTableView.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/Weak.h"
#include "support/Drags.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <functional>

namespace
{

/// Writes down what it is told of drags.
template <class Base> class Destination : public Base
{
public:
    bool wantsAllDrags() const override { return wantsAll; }
    NSDragOperation draggingEntered(NSDraggingInfo* drag) override
    {
        note("entered", drag);
        return operation;
    }
    NSDragOperation draggingUpdated(NSDraggingInfo* drag) override
    {
        note("updated", drag);
        return keeps ? Base::draggingUpdated(drag) : operation;
    }
    void draggingExited(NSDraggingInfo* drag) override { note("exited", drag); }
    bool prepareForDragOperation(NSDraggingInfo* drag) override
    {
        note("prepare", drag);
        return prepares;
    }
    bool performDragOperation(NSDraggingInfo* drag) override
    {
        note("perform", drag);
        return performs;
    }

    bool wantsAll = false;
    NSDragOperation operation = NSDragOperationCopy;
    bool keeps = true; // the operation of the entry
    bool prepares = true;
    bool performs = true;
    std::vector<std::string> told;
    NSPoint location;
    Ref<NSPasteboard> pasteboard;
    std::string within; // the step in which `act` is called
    std::function<void()> act;

private:
    void note(const char* step, NSDraggingInfo* drag)
    {
        told.emplace_back(step);
        location = drag->draggingLocation();
        pasteboard = drag->draggingPasteboard();
        if (within == step) {
            act();
        }
    }
};

using DestinationView = Destination<NSView>;
using Steps = std::vector<std::string>;

template <class View> Ref<View> destination(NSRect frame)
{
    Ref<View> view = make<View>();
    view->initWithFrame(frame);
    view->registerForDraggedTypes({NSFilenamesPboardType});
    return view;
}

TEST(NSDraggingTest, GoesFromEntryToDropOrExit)
{
    const Ref<NSView> content = make<NSView>();
    const Ref<DestinationView> view = make<DestinationView>();
    view->initWithFrame(NSMakeRect(10.0, 20.0, 100.0, 50.0));
    content->addSubview(view);
    const Ref<NSWindow> window =
        make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(0.0, 0.0, 200.0, 100.0), 0);
    window->setContentView(content);
    Drag drag(*view);
    drag.data.setData("text/uri-list", "file:///a\n");
    drag.data.setText("a");
    EXPECT_FALSE(drag.enter()) << "not registered";
    view->registerForDraggedTypes({NSStringPboardType, NSFilenamesPboardType});

    EXPECT_TRUE(drag.enter({5, 5}));
    EXPECT_EQ(view->location, (NSPoint{15.0, 65.0}));
    EXPECT_EQ(view->pasteboard->types(),
              (std::vector{NSFilenamesPboardType, NSURLPboardType, NSStringPboardType}));
    EXPECT_EQ(utf8(view->pasteboard->stringForType(NSStringPboardType)), "a");
    EXPECT_EQ(utf8(view->pasteboard->stringForType(NSURLPboardType)), "file:///a");
    const Ref<NSPasteboard> entered = view->pasteboard;
    EXPECT_EQ(drag.moveTo({6, 5}), Qt::CopyAction);
    EXPECT_EQ(view->location, (NSPoint{16.0, 65.0}));
    EXPECT_EQ(drag.drop({7, 5}), Qt::CopyAction);
    EXPECT_EQ(view->location, (NSPoint{17.0, 65.0}));
    EXPECT_EQ(std::exchange(view->told, {}), (Steps{"entered", "updated", "prepare", "perform"}));
    EXPECT_EQ(view->pasteboard, entered);
    EXPECT_EQ(entered->types(), std::vector{NSFilenamesPboardType}) << "of what has ended";
    EXPECT_EQ(entered->stringForType(NSStringPboardType), nullptr);
    testing::internal::CaptureStderr();
    entered->declareTypes_owner({NSStringPboardType}, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "declareTypes_owner: what is dragged cannot be changed\n");

    drag.enter();
    drag.leave();
    drag.leave();
    EXPECT_EQ(std::exchange(view->told, {}), (Steps{"entered", "exited"}));

    view->operation = NSDragOperationNone;
    EXPECT_TRUE(drag.enter()) << "to learn the rest";
    view->operation = NSDragOperationCopy;
    EXPECT_EQ(drag.moveTo(), Qt::IgnoreAction) << "as at the entry";
    EXPECT_EQ(drag.drop(), Qt::IgnoreAction);
    EXPECT_EQ(std::exchange(view->told, {}), (Steps{"entered", "updated", "exited"}));
    view->keeps = false;
    drag.enter();
    EXPECT_EQ(drag.moveTo(), Qt::CopyAction);
    view->operation = NSDragOperationNone;
    EXPECT_EQ(drag.moveTo(), Qt::IgnoreAction);
    EXPECT_EQ(drag.drop(), Qt::IgnoreAction) << "the last answer counts";
    EXPECT_EQ(std::exchange(view->told, {}), (Steps{"entered", "updated", "updated", "exited"}));

    view->operation = NSDragOperationCopy;
    view->performs = false;
    drag.enter();
    EXPECT_EQ(drag.drop(), Qt::IgnoreAction);
    EXPECT_EQ(std::exchange(view->told, {}), (Steps{"entered", "prepare", "perform"}));
    view->prepares = false;
    drag.enter();
    EXPECT_EQ(drag.drop(), Qt::IgnoreAction);
    EXPECT_EQ(std::exchange(view->told, {}), (Steps{"entered", "prepare"}));

    Drag moving(*view, Qt::MoveAction);
    moving.data.setText("a");
    EXPECT_TRUE(moving.enter());
    EXPECT_EQ(moving.moveTo(), Qt::IgnoreAction) << "it would be gone from its source";
    EXPECT_EQ(moving.drop(), Qt::IgnoreAction);
    EXPECT_EQ(std::exchange(view->told, {}), (Steps{"entered", "updated", "exited"}));

    view->registerForDraggedTypes({});
    EXPECT_FALSE(drag.enter());
    EXPECT_EQ(view->told, Steps{});
}

TEST(NSDraggingTest, ComesToTheInnermostViewThatTakesIt)
{
    const Ref<DestinationView> outer = destination<DestinationView>(NSMakeRect(0.0, 0.0, 100.0, 100.0));
    const Ref<DestinationView> inner = destination<DestinationView>(NSMakeRect(20.0, 20.0, 50.0, 50.0));
    outer->registerForDraggedTypes({NSStringPboardType});
    outer->addSubview(inner);
    outer->widget();
    Drag texts(*inner);
    texts.data.setText("a");
    EXPECT_TRUE(texts.enter());
    EXPECT_EQ(texts.moveTo({1, 1}), Qt::CopyAction);
    EXPECT_EQ(outer->location, (NSPoint{21.0, 69.0}));
    EXPECT_EQ(inner->told, Steps{});
    texts.leave();
    inner->wantsAll = true;
    EXPECT_TRUE(texts.enter());
    texts.leave();
    EXPECT_EQ(inner->told, (Steps{"entered", "exited"}));
    EXPECT_EQ(outer->told, (Steps{"entered", "updated", "exited"}));

    const Ref<NSView> plain = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 10.0, 10.0));
    plain->registerForDraggedTypes({NSStringPboardType});
    Drag overPlain(*plain);
    overPlain.data.setText("a");
    EXPECT_TRUE(overPlain.enter());
    EXPECT_EQ(overPlain.moveTo(), Qt::IgnoreAction);
    EXPECT_TRUE(plain->prepareForDragOperation(nullptr));
    EXPECT_FALSE(plain->performDragOperation(nullptr));
}

TEST(NSDraggingTest, ComesToTables)
{
    using DestinationTable = Destination<NSTableView>;
    const Ref<DestinationTable> table = destination<DestinationTable>(NSMakeRect(0.0, 0.0, 100.0, 100.0));
    const Ref<NSScrollView> scrollView =
        make<NSScrollView>()->initWithFrame(NSMakeRect(0.0, 0.0, 100.0, 100.0));
    scrollView->setDocumentView(table);
    scrollView->widget();
    Drag drag(*table);
    drag.data.setData("text/uri-list", "file:///a\n");
    EXPECT_TRUE(drag.enter());
    EXPECT_EQ(drag.moveTo(), Qt::CopyAction);
    EXPECT_EQ(drag.drop(), Qt::CopyAction);
    EXPECT_EQ(table->told, (Steps{"entered", "updated", "prepare", "perform"}));
}

TEST(NSDraggingTest, MayEndItsView)
{
    for (const char* step : {"entered", "updated", "exited", "prepare", "perform"}) {
        for (const bool withWindow : {false, true}) {
            Ref<NSWindow> window =
                make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(0.0, 0.0, 100.0, 100.0), 0);
            window->setContentView(make<NSView>());
            Ref<DestinationView> view = destination<DestinationView>(NSMakeRect(0.0, 0.0, 100.0, 100.0));
            window->contentView()->addSubview(view);
            Drag drag(*view);
            drag.data.setData("text/uri-list", "file:///a\n");
            view->within = step;
            bool ended = false;
            view->act = [&] {
                ended = true;
                view->removeFromSuperview();
                view = nullptr;
                if (withWindow) {
                    window = nullptr;
                }
            };
            drag.enter();
            drag.moveTo();
            if (std::string(step) == "exited") {
                drag.leave();
            } else {
                const bool dropped = std::string(step).starts_with('p');
                EXPECT_EQ(drag.drop(), dropped ? Qt::CopyAction : Qt::IgnoreAction) << step;
            }
            EXPECT_TRUE(ended) << step;
        }
    }
}

} // namespace
