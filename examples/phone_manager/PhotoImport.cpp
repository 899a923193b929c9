#include "PhotoImport.h"

#include "Texts.h"

#include <platform/foundation/ClassTable.h>
#include <util/FileUtil.h>

#include <array>
#include <utility>

namespace fs = std::filesystem;

namespace
{

constexpr SEL kCopyNext{"copyNext"};
constexpr std::array kSelectors{selector<&PhotoImport::copyNext>(kCopyNext.name)};

} // namespace

constinit const ClassTable PhotoImport::table{"PhotoImport", &NSObject::table, {}, kSelectors};

const ClassTable& PhotoImport::classTable() const
{
    return table;
}

PhotoImport* PhotoImport::initWithFiles_folder(std::vector<fs::path> files, const fs::path& folder)
{
    _files = std::move(files);
    _folder = folder.has_filename() ? folder : folder.parent_path(); // without a slash at the end
    return this;
}

void PhotoImport::setTarget_action(NSObject* target, SEL action)
{
    _target = target;
    _action = action;
}

bool PhotoImport::start()
{
    const Ref<NSString> free = FileUtil::getDirNewName(text(_folder.string()).get());
    if (_state != State::Idle || !free) {
        return false;
    }
    const fs::path folder = free->UTF8String();
    std::error_code error;
    _around = folder;
    while (!_around.empty() && !fs::exists(_around, error)) {
        _around = _around.parent_path();
    }
    if (!FileUtil::Mkdir(folder.c_str()) || !fs::is_directory(folder, error)) {
        return false;
    }
    _folder = folder;
    _state = State::Running;
    performSelector_withObject_afterDelay(kCopyNext, nullptr, 0.0);
    return true;
}

void PhotoImport::copyNext()
{
    if (_state != State::Running) {
        return; // cancelled since this was asked for
    }
    if (_finished < _files.size()) {
        const fs::path& file = _files[_finished++];
        if (!FileUtil::Cp_To(file.c_str(), (_folder / file.filename()).c_str())) {
            _failed.push_back(file.filename().string());
        }
    }
    if (_finished == _files.size()) {
        _state = State::Done;
        removeEmptyFolders();
    }
    if (const Ref<NSObject> target = _target.get()) {
        target->performSelector_withObject(_action, this);
    }
    if (_state == State::Running) {
        performSelector_withObject_afterDelay(kCopyNext, nullptr, 0.0);
    }
}

void PhotoImport::cancel()
{
    if (_state == State::Running) {
        _state = State::Cancelled;
        removeEmptyFolders();
    }
}

void PhotoImport::removeEmptyFolders() const
{
    std::error_code error; // one that holds something stays
    fs::path folder = _folder;
    while (folder != _around && fs::remove(folder, error)) {
        folder = folder.parent_path();
    }
}
