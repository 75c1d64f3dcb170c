#pragma once

#include <Zelmar01/core/Exceptions.h>

#include <string>

namespace Zelmar01 {

/// An operation that a dataset or a database refused. what() is in French; what the database itself said is
/// kept apart from it.
class EDatabaseError : public Exception
{
public:
    explicit EDatabaseError(const std::string &message, std::string cause = {})
        : Exception(message), m_cause(std::move(cause))
    {
    }

    /// The database's own words, UTF-8; empty when the dataset itself refused.
    const std::string &Cause() const { return m_cause; }

private:
    std::string m_cause;
};

} // namespace Zelmar01
