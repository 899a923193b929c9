#pragma once

// What an interface file says. Private to the platform layer.

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <variant>
#include <vector>

/// A text of the file, and what is shown for it.
struct FormText {
    QString written;
    QString shown;
};

struct FormColor {
    double red, green, blue, alpha; // 0..1
};

struct FormFont {
    QString name;     // family and style
    double pointSize; // 0 for none
};

/// The path of a picture's file, as it is written.
struct FormPicture {
    QString path;
};

/// The value of a property; none if it cannot be read, or is of a kind that is not provided for.
using FormValue = std::variant<std::monostate, qint64, double, FormText, FormColor, FormFont, FormPicture>;

struct FormProperty {
    QString name;
    qint64 line;
    FormValue value;
};

/// An object that the toolkit's form loader does not make.
struct FormObject {
    QString className;
    QString name;
    qint64 line;
    std::vector<FormProperty> properties;
};

/// A form as Qt Designer writes it, divided in two: what is for the toolkit's form loader, and what is not.
struct FormFile {
    static constexpr qsizetype kMaxSize = qsizetype{4} * 1024 * 1024; // bytes
    static constexpr std::size_t kMaxDepth = 200;                     // of elements in each other
    static constexpr int kMaxLayouts = 16; // in each other: what the toolkit takes for them doubles with each
    static constexpr std::size_t kMaxWidgets = 4096;
    static constexpr int kMaxRows = 256;          // of a layout or table, and columns
    static constexpr double kMaxLength = 1 << 24; // points, of places, too

    /// For the loader: the form with the place of an object in `objects`, after a "#", for its class, and
    /// without the properties that only the object understands. Its lines are those of the file.
    QByteArray document;
    std::vector<FormObject> objects; // in the order of the file
    QString windowTitle;
    QStringList tabStops; // names of widgets, in the order in which they get the keyboard
    QString problem;      // with its line; empty if all is well, or else nothing but this counts
};

/// Reads a form, whatever the bytes are. Classes of widgets that `isOfToolkit` are left to the form loader,
/// but for a plain widget at the top, which is an object that leaves to the toolkit what a view has not.
/// `translate` answers what is shown for a text, unless the form says that it is not to be translated.
FormFile readForm(const QByteArray& bytes, const std::function<bool(const QString& className)>& isOfToolkit,
                  const std::function<QString(const QString& text)>& translate);
