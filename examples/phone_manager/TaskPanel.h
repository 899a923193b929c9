#pragma once

#include <platform/appkit/NSTextField.h>
#include <window/ZuBox.h>
#include <window/ZuProgressView.h>
#include <window/ZuSimpleButton.h>

#include <string>

class Task;

/// Shows how far a task has come, or how it ended and what went wrong, with a button that cancels it.
class TaskPanel final : public ZuBox
{
public:
    TaskPanel();

    /// Shows the present state of a task.
    void show(const Task& task);
    /// Shows a sentence instead (UTF-8).
    void show(const std::string& sentence);

    // Outlets
    Ref<NSTextField> status() const { return _status; }
    void setStatus(Ref<NSTextField> field) { _status = std::move(field); }
    Ref<ZuProgressView> progress() const { return _progress; }
    void setProgress(Ref<ZuProgressView> view) { _progress = std::move(view); }
    Ref<ZuSimpleButton> cancelButton() const { return _cancelButton; }
    void setCancelButton(Ref<ZuSimpleButton> button) { _cancelButton = std::move(button); }

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~TaskPanel() override;

private:
    Ref<NSTextField> _status;
    Ref<ZuProgressView> _progress;
    Ref<ZuSimpleButton> _cancelButton;
};
