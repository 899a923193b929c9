#include "platform/qt/AccessibleView.h"

#include "platform/appkit/NSAccessibility.h"
#include "platform/appkit/NSView.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSString.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/ViewPeer.h"

#include <utility>

namespace
{

QVariant toVariant(const Ref<NSNumber>& number)
{
    return number ? QVariant(number->doubleValue()) : QVariant();
}

} // namespace

void AccessibleView::install()
{
    QAccessible::installFactory(&makeInterface);
}

QAccessibleInterface* AccessibleView::makeInterface(const QString& /*className*/, QObject* object)
{
    auto* peer = dynamic_cast<ViewPeer*>(object);
    return peer != nullptr ? new AccessibleView(*peer) : nullptr;
}

AccessibleView::AccessibleView(ViewPeer& peer) : QAccessibleWidget(&peer), _reported(report()) {}

NSView* AccessibleView::view() const
{
    return QAccessibleWidget::isValid() ? static_cast<ViewPeer*>(widget())->view() : nullptr;
}

bool AccessibleView::canBePressed() const
{
    const NSView* const shown = view();
    return shown != nullptr && !shown->isHidden() && state().disabled == 0;
}

AccessibleView::Report AccessibleView::report() const
{
    return {text(QAccessible::Name), text(QAccessible::Description), state().disabled != 0, currentValue()};
}

void AccessibleView::announceChanges()
{
    const Report before = std::exchange(_reported, report());
    if (_reported.name != before.name) {
        QAccessibleEvent event(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
    if (_reported.description != before.description) {
        QAccessibleEvent event(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&event);
    }
    if (_reported.disabled != before.disabled) {
        QAccessible::State changed;
        changed.disabled = true;
        QAccessibleStateChangeEvent event(this, changed);
        QAccessible::updateAccessibility(&event);
    }
    if (_reported.value != before.value) {
        QAccessibleValueChangeEvent event(this, _reported.value);
        QAccessible::updateAccessibility(&event);
    }
}

bool AccessibleView::isValid() const
{
    return view() != nullptr;
}

QAccessible::Role AccessibleView::role() const
{
    const NSView* const shown = view();
    switch (shown != nullptr ? shown->accessibilityRole() : NSAccessibilityRole::Unknown) {
    case NSAccessibilityRole::Group:
        return QAccessible::Grouping;
    case NSAccessibilityRole::Button:
        return QAccessible::PushButton;
    case NSAccessibilityRole::ProgressIndicator:
        return QAccessible::ProgressBar;
    case NSAccessibilityRole::Unknown:
        break;
    }
    return QAccessibleWidget::role();
}

QString AccessibleView::text(QAccessible::Text kind) const
{
    const NSView* const shown = view();
    if (shown == nullptr) {
        return {};
    }
    const Ref<NSString> text = kind == QAccessible::Name          ? shown->accessibilityLabel()
                               : kind == QAccessible::Description ? shown->accessibilityHelp()
                                                                  : nullptr;
    return text ? toQt(*text) : QAccessibleWidget::text(kind); // what a host has said of the widget
}

QAccessible::State AccessibleView::state() const
{
    QAccessible::State state;
    if (const NSView* const shown = view()) {
        state = QAccessibleWidget::state();
        state.disabled = state.disabled != 0 || !shown->isAccessibilityEnabled();
    } else {
        state.invalid = true;
    }
    return state;
}

void* AccessibleView::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ValueInterface) {
        return currentValue().isValid() ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
    }
    return QAccessibleWidget::interface_cast(type);
}

QStringList AccessibleView::actionNames() const
{
    const NSView* const shown = view();
    if (shown == nullptr) {
        return {};
    }
    QStringList names = QAccessibleWidget::actionNames();
    if (shown->accessibilityRole() == NSAccessibilityRole::Button && canBePressed()) {
        names.prepend(pressAction());
    }
    return names;
}

void AccessibleView::doAction(const QString& name)
{
    if (view() == nullptr) {
        return;
    }
    if (name == pressAction()) {
        if (canBePressed()) {
            static_cast<ViewPeer*>(widget())->performPress();
        }
    } else {
        QAccessibleWidget::doAction(name);
    }
}

QVariant AccessibleView::currentValue() const
{
    const NSView* const shown = view();
    return shown != nullptr ? toVariant(shown->accessibilityValue()) : QVariant();
}

QVariant AccessibleView::minimumValue() const
{
    const NSView* const shown = view();
    return shown != nullptr ? toVariant(shown->accessibilityMinValue()) : QVariant();
}

QVariant AccessibleView::maximumValue() const
{
    const NSView* const shown = view();
    return shown != nullptr ? toVariant(shown->accessibilityMaxValue()) : QVariant();
}
