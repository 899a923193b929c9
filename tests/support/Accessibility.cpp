#include "support/Accessibility.h"

#include "platform/appkit/NSView.h"

#include <QAccessible>
#include <QStringList>
#include <QWidget>

QAccessibleInterface& accessible(NSView& view)
{
    return *QAccessible::queryAccessibleInterface(view.widget());
}

std::string said(QAccessibleInterface& view)
{
    const QAccessible::Role role = view.role();
    QStringList words{role == QAccessible::PushButton    ? "button"
                      : role == QAccessible::ProgressBar ? "progress"
                      : role == QAccessible::CheckBox    ? "check box"
                      : role == QAccessible::Grouping    ? "group"
                      : role == QAccessible::Client      ? "widget"
                                                         : "?"};
    words << view.text(QAccessible::Name) << view.text(QAccessible::Description);
    words << view.actionInterface()->actionNames();
    words << (!view.state().checkable ? "" : view.state().checked ? "checked" : "unchecked");
    words << (view.state().disabled ? "disabled" : "") << (view.state().focusable ? "focusable" : "");
    words << (view.state().invalid ? "invalid" : "");
    if (QAccessibleValueInterface* value = view.valueInterface()) {
        value->setCurrentValue(0.25); // nothing happens
        words << value->minimumValue().toString() << value->currentValue().toString()
              << value->maximumValue().toString();
    }
    words.removeAll("");
    return words.join(' ').toStdString();
}
