#pragma once

// What edits the text of a field. Private to the platform layer.

#include "platform/foundation/NSAttributes.h"

#include <QTextEdit>

#include <vector>

class NSAttributedString;
class NSFont;
class NSTextField;

/// The toolkit's font; for null, the one of texts that have none.
QFont fontOf(const NSFont* font);

/// The side of one of the toolkit's widgets that a field sees: it edits the field's text. Belongs to the
/// field's peer.
class FieldEditor
{
public:
    explicit FieldEditor(NSTextField& field) : _field(&field) {}
    virtual ~FieldEditor();
    FieldEditor(const FieldEditor&) = delete;
    FieldEditor& operator=(const FieldEditor&) = delete;

    /// Called when the field is gone or wants another.
    void abandon() { _field = nullptr; }

    virtual QWidget& widget() = 0;
    /// Takes over what the field allows, its text and how it is set.
    virtual void takeField() = 0;
    virtual void selectAllText() = 0;
    /// Whether there is a link at a point of the widget that can be followed.
    virtual bool isLinkAt(QPoint /*place*/) const { return false; }
    /// Has the toolkit do what it does by itself with the key that is being handled, if one is. Whether it
    /// did something.
    bool handOnKey();

protected:
    /// Has the field handle a key, which may hand it on.
    void handle(QKeyEvent& event);
    /// What the toolkit does with a key.
    virtual void performKey(QKeyEvent& event) = 0;
    /// Tells the field what the user has made of its text.
    void userDidChange(const Ref<NSAttributedString>& text);
    void focusDidCome();
    void focusDidGo(const QFocusEvent& event);

    NSTextField* _field; // null once it is gone

private:
    QKeyEvent* _key = nullptr; // that is being handled
};

/// Edits a text, or lets it be selected, over the field's own, which it hides for that time.
class TextFieldEditor final : public QTextEdit, public FieldEditor
{
public:
    explicit TextFieldEditor(NSTextField& field);

    QWidget& widget() override { return *this; }
    void takeField() override;
    void selectAllText() override { selectAll(); }
    bool isLinkAt(QPoint place) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override { handle(*event); }
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void performKey(QKeyEvent& event) override;
    void takeText(const NSAttributedString& text);
    Ref<NSAttributedString> text() const;
    /// Has the workspace open what the text links to there.
    void follow(const QString& link);

    std::vector<NSAttributes> _attributes; // of the text's stretches, by the number that their formats have
    QColor _color;                         // of what has none of its own
    QString _pressedLink;
    bool _taking = false; // the field's text, so that a change is not the user's
};
