#pragma once

#include <cstdlib>
#include <optional>
#include <string>

/// A variable of the environment, set (or taken away, without a value) as long as this lives.
class EnvironmentSetting
{
public:
    EnvironmentSetting(std::string name, const std::optional<std::string> &value) : m_name(std::move(name))
    {
        if (const char *before = std::getenv(m_name.c_str()))
            m_before = before;
        set(value);
    }
    ~EnvironmentSetting() { set(m_before); }
    EnvironmentSetting(const EnvironmentSetting &) = delete;
    EnvironmentSetting &operator=(const EnvironmentSetting &) = delete;

private:
    void set(const std::optional<std::string> &value) const
    {
        if (value)
            setenv(m_name.c_str(), value->c_str(), 1);
        else
            unsetenv(m_name.c_str());
    }

    std::string m_name;
    std::optional<std::string> m_before;
};
