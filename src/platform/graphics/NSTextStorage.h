#pragma once

#include "platform/foundation/NSAttributedString.h"

class NSLayoutManager;

/// The text of a text system: owns the layout managers that lay it out, which follow its changes. The
/// text system is used on the user-interface thread only.
class TESSALINE_EXPORT NSTextStorage final : public NSMutableAttributedString
{
public:
    NSTextStorage();

    NSTextStorage* initWithString(NSString* string);

    /// Takes a layout manager, from the storage that it had if it is not this one.
    void addLayoutManager(Ref<NSLayoutManager> layoutManager);
    const std::vector<Ref<NSLayoutManager>>& layoutManagers() const { return _layoutManagers; }

private:
    ~NSTextStorage() override;

    std::vector<Ref<NSLayoutManager>> _layoutManagers;
};
