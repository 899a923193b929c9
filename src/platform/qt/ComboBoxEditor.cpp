#include "platform/qt/ComboBoxEditor.h"

#include "platform/appkit/NSComboBox.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/ViewPeer.h"

#include <QAbstractListModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QStyleOptionComboBox>

#include <algorithm>
#include <limits>

/// As many items as there were when they were last asked for; each is asked for when it shows.
class ComboBoxItems final : public QAbstractListModel
{
public:
    explicit ComboBoxItems(ComboBoxEditor& editor) : QAbstractListModel(&editor), _editor(editor) {}

    void setCount(std::int64_t count)
    {
        beginResetModel();
        _count = static_cast<int>(std::clamp<std::int64_t>(count, 0, std::numeric_limits<int>::max()));
        endResetModel();
    }

    int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : _count; }

    QVariant data(const QModelIndex& index, int role) const override
    {
        return role == Qt::DisplayRole || role == Qt::EditRole ? _editor.textOfItem(index.row()) : QVariant();
    }

private:
    const ComboBoxEditor& _editor;
    int _count = 0;
};

ComboBoxEditor::ComboBoxEditor(NSComboBox& comboBox) : FieldEditor(comboBox), _items(new ComboBoxItems(*this))
{
    // Many items must not be looked at one by one to find out how large anything is.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    static_cast<QListView*>(view())->setUniformItemSizes(true);
    setModel(_items);

    QComboBox::setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    // To leave the text, which can be that of an item, is not to choose that item.
    disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
    lineEdit()->installEventFilter(this);
    lineEdit()->setMaxLength(std::numeric_limits<int>::max());
    connect(lineEdit(), &QLineEdit::textEdited, this, &ComboBoxEditor::userDidType);
    connect(this, &QComboBox::activated, this, &ComboBoxEditor::userDidChoose);
    takeField();
    takeItems();
}

NSComboBox* ComboBoxEditor::comboBox() const
{
    return static_cast<NSComboBox*>(_field);
}

bool ComboBoxEditor::isReadOnly() const
{
    return lineEdit()->isReadOnly();
}

// What the combo box has

void ComboBoxEditor::takeField()
{
    setEnabled(_field->isEnabled());
    setFont(fontOf(_field->font().get()));
    QPalette colors;
    if (const Ref<NSColor> color = _field->textColor()) {
        colors.setColor(QPalette::Active, QPalette::Text, toQt(*color));
        colors.setColor(QPalette::Inactive, QPalette::Text, toQt(*color));
    }
    setPalette(colors);
    lineEdit()->setReadOnly(!_field->isEditable());
    showText();
}

void ComboBoxEditor::showText()
{
    if (_field == nullptr) {
        return;
    }
    const QString text = toQt(*_field->stringValue());
    if (lineEdit()->text() != text) {
        lineEdit()->setText(text);
        lineEdit()->setCursorPosition(0); // where a text that is too long begins
        _typed = text;
    }
}

void ComboBoxEditor::keepingText(const std::function<void()>& change)
{
    const int caret = lineEdit()->cursorPosition();
    const int selected = lineEdit()->selectionStart();
    const int length = lineEdit()->selectionLength();
    const QString typed = _typed;
    const Ref<NSString> before = _field->stringValue();
    const QString shown = lineEdit()->text(); // which the combo box need not know of yet
    change();
    if (_field == nullptr || !_field->stringValue()->isEqual(before.get())) {
        showText();
        return;
    }
    lineEdit()->setText(shown);
    if (selected >= 0) {
        lineEdit()->setSelection(selected, length);
    } else {
        lineEdit()->setCursorPosition(caret);
    }
    _typed = typed;
}

void ComboBoxEditor::selectAllText()
{
    lineEdit()->selectAll();
}

void ComboBoxEditor::takeItems()
{
    const EventInProgress progress;
    const Ref<NSComboBox> asked(comboBox());
    const std::int64_t count = asked->numberOfItems();
    if (_field != nullptr) {
        keepingText([&] { _items->setCount(count); });
    }
}

QString ComboBoxEditor::textOfItem(int item) const
{
    if (_field == nullptr) {
        return {};
    }
    const EventInProgress progress;
    const Ref<NSComboBox> asked(comboBox());
    const Ref<NSString> text = asked->textOfItem(item);
    return text ? toQt(*text) : QString();
}

void ComboBoxEditor::findItem()
{
    if (_field == nullptr) {
        return;
    }
    const EventInProgress progress;
    const Ref<NSComboBox> asked(comboBox());
    const std::int64_t found = asked->currentItem();
    if (_field != nullptr && found != currentIndex()) {
        keepingText([&] { setCurrentIndex(found < count() ? static_cast<int>(found) : -1); });
    }
}

// What the user does

void ComboBoxEditor::showPopup()
{
    if (_field != nullptr) {
        const EventInProgress progress;
        const Ref<NSComboBox> opening(comboBox());
        opening->accessibilityPerformShowMenu();
    }
}

void ComboBoxEditor::openList()
{
    takeItems();
    findItem();
    if (isVisible()) {
        QComboBox::showPopup();
    }
    if (!isVisible()) { // a data source can take the combo box away
        hidePopup();
    }
}

bool ComboBoxEditor::listShows() const
{
    return view()->isVisible();
}

void ComboBoxEditor::pressArrow()
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QPointF arrow =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this).center();
    QMouseEvent press(QEvent::MouseButtonPress, arrow, mapToGlobal(arrow), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QComboBox::mousePressEvent(&press);
}

bool ComboBoxEditor::eventFilter(QObject* watched, QEvent* event)
{
    const bool isPress =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (isPress && watched == lineEdit() && isReadOnly() &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        pressArrow();
        return true;
    }
    return QComboBox::eventFilter(watched, event);
}

void ComboBoxEditor::focusInEvent(QFocusEvent* event)
{
    QComboBox::focusInEvent(event);
    focusDidCome();
}

void ComboBoxEditor::focusOutEvent(QFocusEvent* event)
{
    QComboBox::focusOutEvent(event);
    if (!listShows()) { // from the list, it will come back
        focusDidGo(*event);
    }
}

void ComboBoxEditor::wheelEvent(QWheelEvent* event)
{
    findItem();
    QComboBox::wheelEvent(event);
}

void ComboBoxEditor::performKey(QKeyEvent& event)
{
    event.accept(); // unless the toolkit ignores it
    switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        findItem();
        break;
    default:
        break;
    }
    const bool isPlain = (event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) == 0;
    if (isPlain &&
        (event.key() == Qt::Key_Down ? count() == 0 : isReadOnly() && event.key() == Qt::Key_Space)) {
        showPopup();
    } else if (isPlain && isReadOnly() && !event.text().isEmpty() && event.text().front().isPrint()) {
        chooseByTyping(event.text());
    } else {
        QComboBox::keyPressEvent(&event);
    }
}

void ComboBoxEditor::chooseByTyping(const QString& typed)
{
    findItem();
    view()->setCurrentIndex(_items->index(currentIndex()));
    view()->keyboardSearch(typed);
    const int found = view()->currentIndex().row();
    if (_field != nullptr && found >= 0 && found != currentIndex()) {
        setCurrentIndex(found);
        userDidChoose(found);
    }
}

void ComboBoxEditor::userDidChoose(int item)
{
    if (_field != nullptr) {
        const EventInProgress progress;
        const Ref<NSComboBox> chosen(comboBox());
        chosen->userDidChoose(item);
    }
}

void ComboBoxEditor::userDidType(const QString& text)
{
    if (_field == nullptr) {
        return;
    }
    // What was taken away is not put back.
    const bool more = text.size() > _typed.size() && lineEdit()->cursorPosition() == text.size();
    _typed = text;
    QString shown = text;
    if (more) {
        const EventInProgress progress;
        const Ref<NSComboBox> asked(comboBox());
        const Ref<NSString> completed = asked->completed(fromQt(text));
        if (_field == nullptr) {
            return;
        }
        if (completed && toQt(*completed).startsWith(text) && toQt(*completed) != text) {
            shown = toQt(*completed);
            lineEdit()->setText(shown);
            lineEdit()->setSelection(static_cast<int>(text.size()),
                                     static_cast<int>(shown.size() - text.size()));
        }
    }
    userDidChange(make<NSAttributedString>()->initWithString(fromQt(shown).get()));
}
