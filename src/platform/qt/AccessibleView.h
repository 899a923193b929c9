#pragma once

// What assistive technology is told of a view. Private to the platform layer.

#include <QAccessibleValueInterface>
#include <QAccessibleWidget>
#include <QVariant>

#include <vector>

class NSView;
class ViewPeer;

/// Answers for a view what the view says of itself, and what its widget knows: place, relations, focus. Made
/// by Qt when it is first asked for, and destroyed by Qt with the widget; once the view is gone, it is no
/// longer valid and answers nothing. A view's value can be read only.
class AccessibleView final : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    /// Has Qt make such interfaces for the widgets of views from now on; any call but the first does nothing.
    static void install();

    /// Reports what has changed since the last report, or since this was made.
    void announceChanges();

    bool isValid() const override;

    // In the widget's relations a view that shows by a viewport counts as one of its superview's; what the
    // viewport stands in answers for itself.
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int index) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

    QAccessible::Role role() const override;
    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    /// A press, for an enabled button or check box, and what the widget offers.
    QStringList actionNames() const override;
    void doAction(const QString& name) override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant& /*value*/) override {}
    QVariant minimumValue() const override;
    QVariant maximumValue() const override;
    QVariant minimumStepSize() const override { return {}; }

private:
    struct Report {
        QString name;
        QString description;
        bool disabled;
        bool checked;
        QVariant value;
    };

    explicit AccessibleView(ViewPeer& peer);
    ~AccessibleView() override = default;

    static QAccessibleInterface* makeInterface(const QString& className, QObject* object);

    /// Null once the view is gone.
    NSView* view() const;
    /// Whether the view is there and not hidden, and neither it nor a widget around it is disabled.
    bool canBePressed() const;
    /// What the press is called; empty for views that are not pressed.
    QString pressName() const;
    Report report() const;
    /// The views inside that say something of themselves and have a viewport for a widget, which Qt does not
    /// count.
    std::vector<QWidget*> viewports() const;

    Report _reported;
};
