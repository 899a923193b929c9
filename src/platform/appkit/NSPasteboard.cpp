#include "platform/appkit/NSPasteboard.h"

#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSString.h"
#include "platform/foundation/NSURL.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/Native.h"
#include "platform/qt/OfApplication.h"
#include "platform/qt/UriList.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSysInfo>
#include <QUrl>

#include <algorithm>

namespace
{

const QString& plainText()
{
    static const QString format = QStringLiteral("text/plain");
    return format;
}

const QString& uriList()
{
    static const QString format = QStringLiteral("text/uri-list");
    return format;
}

Ref<NSArray<NSString>> fileNamesOf(const QMimeData& data)
{
    std::vector<Ref<NSString>> names;
    for (const QString& name : fileNamesIn(data.data(uriList()), QSysInfo::machineHostName())) {
        names.push_back(fromQt(name));
    }
    return names.empty() ? nullptr : NSArray<NSString>::arrayWithObjects(std::move(names));
}

/// The clipboard's contents; null if there is none.
const QMimeData* onClipboard()
{
    const QClipboard* clipboard = QGuiApplication::clipboard();
    return clipboard != nullptr ? clipboard->mimeData() : nullptr;
}

} // namespace

Ref<NSPasteboard> NSPasteboard::Native::ofDrag(const QMimeData& data)
{
    auto native = std::make_unique<Native>();
    native->isDrag = true;
    native->data = &data;
    native->fileNames = fileNamesOf(data);
    return make<NSPasteboard>(std::move(native));
}

void NSPasteboard::Native::dragDidEnd(NSPasteboard& pasteboard)
{
    pasteboard._native->data = nullptr;
}

NSPasteboard::NSPasteboard(std::unique_ptr<Native> native) : _native(std::move(native)) {}

NSPasteboard::~NSPasteboard() = default;

Ref<NSPasteboard> NSPasteboard::pasteboardWithName(NSPasteboardName /*name*/)
{
    auto& general = ofApplication<Ref<NSPasteboard>>();
    if (!general) {
        general = make<NSPasteboard>(std::make_unique<Native>());
    }
    return general;
}

void NSPasteboard::declareTypes_owner(std::vector<NSPasteboardType> types, std::nullptr_t /*owner*/)
{
    if (_native->isDrag) {
        diagnose("declareTypes_owner", "what is dragged cannot be changed");
        return;
    }
    _native->declared = std::move(types);
    _native->put.clear();
    if (QClipboard* clipboard = QGuiApplication::clipboard()) {
        clipboard->clear();
    }
}

bool NSPasteboard::setString_forType(NSString* string, NSPasteboardType type)
{
    const bool isDeclared = std::ranges::find(_native->declared, type) != _native->declared.end();
    const QString text = string != nullptr ? toQt(*string) : QString();
    const bool fits = type == NSStringPboardType ||
                      (type == NSURLPboardType && !text.isEmpty() && QUrl(text, QUrl::StrictMode).isValid());
    QClipboard* const clipboard = QGuiApplication::clipboard();
    if (string == nullptr || !isDeclared || !fits || clipboard == nullptr) {
        diagnose("setString_forType", "there is no text of a type that has been declared");
        return false;
    }
    _native->put[type] = text;
    // All of it anew: some desktops look at new contents once.
    auto contents = std::make_unique<QMimeData>();
    for (const auto& [format, value] : _native->put) {
        if (format == NSURLPboardType) {
            contents->setUrls({QUrl(value, QUrl::StrictMode)});
        } else {
            contents->setText(value);
        }
    }
    clipboard->setMimeData(contents.release());
    return true;
}

std::vector<NSPasteboardType> NSPasteboard::types() const
{
    std::vector<NSPasteboardType> types;
    if (propertyListForType(NSFilenamesPboardType)) {
        types.push_back(NSFilenamesPboardType);
    }
    if (const QMimeData* data = _native->isDrag ? _native->data.get() : onClipboard()) {
        if (data->hasFormat(uriList())) {
            types.push_back(NSURLPboardType);
        }
        if (data->hasFormat(plainText())) {
            types.push_back(NSStringPboardType);
        }
    }
    return types;
}

Ref<NSString> NSPasteboard::stringForType(NSPasteboardType type) const
{
    const QMimeData* data = _native->isDrag ? _native->data.get() : onClipboard();
    if (data == nullptr) {
        return nullptr;
    }
    if (type == NSURLPboardType) {
        const QString url = firstUrlIn(data->data(uriList()));
        return url.isEmpty() ? nullptr : fromQt(url);
    }
    return type == NSStringPboardType && data->hasFormat(plainText()) ? fromQt(data->text()) : nullptr;
}

Ref<NSArray<NSString>> NSPasteboard::propertyListForType(NSPasteboardType type) const
{
    if (type != NSFilenamesPboardType) {
        return nullptr;
    }
    if (_native->isDrag) {
        return _native->fileNames;
    }
    const QMimeData* data = onClipboard();
    return data != nullptr ? fileNamesOf(*data) : nullptr;
}

void NSURL::writeToPasteboard(NSPasteboard* pasteboard) const
{
    if (pasteboard == nullptr) {
        diagnose("writeToPasteboard", "there is no pasteboard");
        return;
    }
    pasteboard->setString_forType(_text.get(), NSURLPboardType);
}
