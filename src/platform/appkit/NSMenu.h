#pragma once

#include "platform/foundation/NSObject.h"

#include <vector>

class NSMenuItem;
class NSString;

/// A list of items, one of which can be chosen: what a view answers to `menuForEvent`.
class TESSALINE_EXPORT NSMenu final : public NSObject
{
public:
    NSMenu();

    /// `title`, which does not show, is copied; null counts as empty. Returns this menu.
    NSMenu* initWithTitle(NSString* title);

    Ref<NSString> title() const;

    /// Adds an item at the end, from where the menu keeps it alive; null is not added.
    void addItem(Ref<NSMenuItem> item);
    const std::vector<Ref<NSMenuItem>>& itemArray() const { return _items; }

private:
    ~NSMenu() override;

    Ref<NSString> _title;
    std::vector<Ref<NSMenuItem>> _items;
};
