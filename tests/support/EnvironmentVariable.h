#pragma once

#include <cstdlib>
#include <optional>
#include <string>

/// Gives a variable of the environment another value, and its own one back in the end.
class EnvironmentVariable
{
public:
    EnvironmentVariable(const char* name, const char* value) : _name(name)
    {
        if (const char* before = std::getenv(name)) {
            _before = before;
        }
        setenv(name, value, 1);
    }
    ~EnvironmentVariable() { _before ? setenv(_name, _before->c_str(), 1) : unsetenv(_name); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    const char* _name;
    std::optional<std::string> _before;
};
