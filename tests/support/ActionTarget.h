#pragma once

#include "platform/foundation/ClassTable.h"

#include <array>
#include <functional>
#include <vector>

/// Counts the actions that it is sent.
class ActionTarget : public NSObject
{
public:
    static constexpr SEL kAction{"pushed:"};

    void pushed(NSObject* sender)
    {
        senders.push_back(sender);
        if (onAction) {
            onAction();
        }
    }

    const ClassTable& classTable() const override
    {
        static constexpr std::array kSelectors{selector<&ActionTarget::pushed>(kAction.name)};
        static constexpr ClassTable kTable{"ActionTarget", &NSObject::table, {}, kSelectors};
        return kTable;
    }

    std::vector<NSObject*> senders; // not retained: only compared
    std::function<void()> onAction;
};
