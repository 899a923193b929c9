#pragma once

// What edits and chooses the text of a combo box. Private to the platform layer.

#include "platform/qt/FieldEditor.h"

#include <QComboBox>

#include <functional>

class ComboBoxItems;
class NSComboBox;

/// Shows a combo box at all times, edits its text, and lists its items, which it takes from it. A text that
/// cannot be edited can still be any, not only that of an item.
class ComboBoxEditor final : public QComboBox, public FieldEditor
{
public:
    explicit ComboBoxEditor(NSComboBox& comboBox);

    QWidget& widget() override { return *this; }
    void takeField() override;
    void selectAllText() override;

    /// Asks how many items there are.
    void takeItems();
    void openList();
    bool listShows() const;
    QString textOfItem(int item) const;

    /// Has the combo box open its list.
    void showPopup() override;

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override { handle(*event); }
    void wheelEvent(QWheelEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    NSComboBox* comboBox() const;
    void performKey(QKeyEvent& event) override;
    bool isReadOnly() const;
    /// Goes on from the item that the combo box is at.
    void findItem();
    void showText();
    /// Makes a change that puts another text into the line, and puts the present one back as it was.
    void keepingText(const std::function<void()>& change);
    void pressArrow();
    void chooseByTyping(const QString& typed);
    void userDidType(const QString& text);
    void userDidChoose(int item);

    ComboBoxItems* _items; // owned
    QString _typed;        // last, without what was put behind it
};
