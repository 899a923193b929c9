#include "platform/qt/AccessibleView.h"

#include "platform/appkit/NSAccessibility.h"
#include "platform/appkit/NSView.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSString.h"
#include "platform/qt/AccessibleComboBox.h"
#include "platform/qt/ComboBoxEditor.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/ViewPeer.h"

#include <algorithm>
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
    if (auto* comboBox = dynamic_cast<ComboBoxEditor*>(object)) {
        return new AccessibleComboBox(*comboBox);
    }
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
    return {text(QAccessible::Name), text(QAccessible::Description), state().disabled != 0,
            state().checked != 0, currentValue()};
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
    if (_reported.disabled != before.disabled || _reported.checked != before.checked) {
        QAccessible::State changed;
        changed.disabled = _reported.disabled != before.disabled;
        changed.checked = _reported.checked != before.checked;
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

std::vector<QWidget*> AccessibleView::viewports() const
{
    std::vector<QWidget*> widgets;
    const NSView* const shown = view();
    for (const Ref<NSView>& subview : shown != nullptr ? shown->subviews() : std::vector<Ref<NSView>>{}) {
        QWidget* const peer = subview->widget();
        if (subview->accessibilityRole() != NSAccessibilityRole::Unknown &&
            peer->parentWidget() != widget()) {
            widgets.push_back(peer);
        }
    }
    return widgets;
}

QAccessibleInterface* AccessibleView::parent() const
{
    NSView* const superview = view() != nullptr ? view()->superview() : nullptr;
    return superview != nullptr ? QAccessible::queryAccessibleInterface(superview->widget())
                                : QAccessibleWidget::parent();
}

QAccessibleInterface* AccessibleView::child(int index) const
{
    const int inside = index - QAccessibleWidget::childCount();
    const std::vector<QWidget*> widgets = viewports();
    return inside >= 0 && inside < static_cast<int>(widgets.size())
               ? QAccessible::queryAccessibleInterface(widgets[static_cast<std::size_t>(inside)])
               : QAccessibleWidget::child(index);
}

int AccessibleView::childCount() const
{
    return QAccessibleWidget::childCount() + static_cast<int>(viewports().size());
}

int AccessibleView::indexOfChild(const QAccessibleInterface* child) const
{
    const std::vector<QWidget*> widgets = viewports();
    const auto found = std::ranges::find(widgets, child->object());
    return found != widgets.end()
               ? QAccessibleWidget::childCount() + static_cast<int>(found - widgets.begin())
               : QAccessibleWidget::indexOfChild(child);
}

QAccessible::Role AccessibleView::role() const
{
    const NSView* const shown = view();
    switch (shown != nullptr ? shown->accessibilityRole() : NSAccessibilityRole::Unknown) {
    case NSAccessibilityRole::Group:
        return QAccessible::Grouping;
    case NSAccessibilityRole::Button:
        return QAccessible::PushButton;
    case NSAccessibilityRole::CheckBox:
        return QAccessible::CheckBox;
    case NSAccessibilityRole::ProgressIndicator:
        return QAccessible::ProgressBar;
    case NSAccessibilityRole::StaticText:
        return QAccessible::StaticText;
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
        state.checkable = shown->accessibilityChecked().has_value();
        state.checked = shown->accessibilityChecked().value_or(false);
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

QString AccessibleView::pressName() const
{
    switch (view()->accessibilityRole()) {
    case NSAccessibilityRole::Button:
        return pressAction();
    case NSAccessibilityRole::CheckBox:
        return toggleAction();
    default:
        return {};
    }
}

QStringList AccessibleView::actionNames() const
{
    const NSView* const shown = view();
    if (shown == nullptr) {
        return {};
    }
    QStringList names = QAccessibleWidget::actionNames();
    if (!pressName().isEmpty() && canBePressed()) {
        names.prepend(pressName());
    }
    return names;
}

void AccessibleView::doAction(const QString& name)
{
    if (view() == nullptr) {
        return;
    }
    if (!name.isEmpty() && name == pressName()) {
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
