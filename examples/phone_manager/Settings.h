#pragma once

#include <Tessaline.h>

#include <filesystem>
#include <string>

/// The settings of the program, in a file that is written with each change. A file that is there but cannot
/// be read is put aside, under a name of its own, before anything is written in its place.
class Settings
{
public:
    /// The user's own file. Where there is none yet, what is shipped with the program counts.
    static std::filesystem::path userFile();

    explicit Settings(std::filesystem::path file);

    /// What the user has to know of the file, in their language: that it was put aside and where to, until
    /// something is saved, or that it cannot be. Empty for nothing.
    const std::string& trouble() const { return _trouble; }

    // What is of another kind is 0, empty or black.

    /// As given if it is not set.
    int number(const char* key, int otherwise) const;
    /// Empty if it is not set.
    std::string text(const char* key) const;
    /// Null if it is not set.
    Ref<NSColor> color(const char* key) const;

    // Set a value, and save all.
    void set(const char* key, int value);
    void set(const char* key, const std::string& value);

private:
    void putAside();
    void save();

    std::filesystem::path _file;
    BASUserDefaults* _store; // belongs to the registry
    bool _isWritable = true; // no: what is there could not be put aside
    std::string _trouble;
};
