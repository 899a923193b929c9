#pragma once

#include <platform/foundation/NSObject.h>
#include <platform/foundation/Weak.h>

#include <filesystem>
#include <string>
#include <vector>

/// Copies photos to a new folder, one with each turn of the event loop, so that the user can go on working
/// and cancel. It is used once, on the user-interface thread, and while it runs the loop keeps it alive: one
/// that nobody is interested in any more has to be cancelled.
class PhotoImport final : public NSObject
{
public:
    enum class State { Idle, Running, Done, Cancelled };

    /// The files are copied in their order. The folder is the one named, or where there is one already, that
    /// name with the first free number: "photos(1)".
    PhotoImport* initWithFiles_folder(std::vector<std::filesystem::path> files,
                                      const std::filesystem::path& folder);

    /// Makes the folder, with what is missing around it, and begins. If it cannot be made, the answer is no
    /// and the import stays idle.
    bool start();
    /// Ends an import that is running. Like its end it leaves what was copied, but no empty folder.
    void cancel();
    State state() const { return _state; }

    /// Sends `action` to `target` (not retained), with this object, after each file. Default none.
    void setTarget_action(NSObject* target, SEL action);

    /// The new folder; before the start, the one named.
    const std::filesystem::path& folder() const { return _folder; }
    const std::vector<std::filesystem::path>& files() const { return _files; }
    /// How many of them were copied or failed. The next one is what an import that is running copies next.
    std::size_t finished() const { return _finished; }
    std::size_t copied() const { return _finished - _failed.size(); }
    /// Names of the files that could not be copied, for instance since another one had that name.
    const std::vector<std::string>& failed() const { return _failed; }

    /// Sent by the event loop.
    void copyNext();

    const ClassTable& classTable() const override;
    static const ClassTable table;

private:
    void removeEmptyFolders() const;

    State _state = State::Idle;
    std::vector<std::filesystem::path> _files;
    std::filesystem::path _folder;
    std::filesystem::path _around; // what was there before the start
    std::size_t _finished = 0;
    std::vector<std::string> _failed;
    Weak<NSObject> _target;
    SEL _action;
};
