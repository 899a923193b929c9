#include "platform/qt/AccessibleComboBox.h"

#include "platform/qt/ComboBoxEditor.h"

#include <QLineEdit>

AccessibleComboBox::AccessibleComboBox(ComboBoxEditor& comboBox)
    : QAccessibleWidget(&comboBox, QAccessible::ComboBox)
{
}

ComboBoxEditor& AccessibleComboBox::comboBox() const
{
    return static_cast<ComboBoxEditor&>(*widget());
}

QString AccessibleComboBox::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Value ? comboBox().lineEdit()->text() : QAccessibleWidget::text(kind);
}

QAccessible::State AccessibleComboBox::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.editable = !comboBox().lineEdit()->isReadOnly();
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = comboBox().listShows();
    return state;
}

QStringList AccessibleComboBox::actionNames() const
{
    QStringList names = QAccessibleWidget::actionNames();
    if (comboBox().isEnabled()) {
        names.prepend(showMenuAction());
    }
    return names;
}

void AccessibleComboBox::doAction(const QString& name)
{
    if (name != showMenuAction()) {
        QAccessibleWidget::doAction(name);
    } else if (comboBox().listShows()) {
        comboBox().hidePopup();
    } else {
        comboBox().showPopup();
    }
}
