#include "platform/graphics/NSTextStorage.h"

#include "platform/graphics/NSLayoutManager.h"

NSTextStorage::NSTextStorage() = default;

NSTextStorage::~NSTextStorage()
{
    for (const Ref<NSLayoutManager>& layoutManager : _layoutManagers) {
        layoutManager->_textStorage = nullptr;
        layoutManager->_layout = nullptr;
    }
}

NSTextStorage* NSTextStorage::initWithString(NSString* string)
{
    NSMutableAttributedString::initWithString(string);
    return this;
}

void NSTextStorage::addLayoutManager(Ref<NSLayoutManager> layoutManager)
{
    if (!layoutManager || layoutManager->_textStorage == this) {
        return;
    }
    if (layoutManager->_textStorage != nullptr) {
        std::erase(layoutManager->_textStorage->_layoutManagers, layoutManager);
    }
    layoutManager->_textStorage = this;
    layoutManager->_layout = nullptr;
    _layoutManagers.push_back(std::move(layoutManager));
}
