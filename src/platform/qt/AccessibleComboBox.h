#pragma once

// What assistive technology is told of a combo box. Private to the platform layer.

#include <QAccessibleWidget>

class ComboBoxEditor;

/// Answers for a combo box. The toolkit's own answer takes the text for its name on some systems, and leaves
/// out the label.
class AccessibleComboBox final : public QAccessibleWidget
{
public:
    explicit AccessibleComboBox(ComboBoxEditor& comboBox);

    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;

    /// To open the list and to close it.
    QStringList actionNames() const override;
    void doAction(const QString& name) override;

private:
    ~AccessibleComboBox() override = default;

    ComboBoxEditor& comboBox() const;
};
